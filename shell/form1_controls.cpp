#include "shell/form1_controls.h"

namespace nerit {

Form1Controls::Form1Controls() {
  // Design-time state: only a connection enables the realtime data.
  Check1.enabled = false;
  // The status stream logs up to 87 lines a second; the log keeps the last 100,000 (about 20
  // minutes of it), so a day's session does not fill the memory.
  List1.max_items = 100000;
  // Each map grid inside its frame (twips).
  for (Grid* g : {&MSFlexGrid2, &MSFlexGrid3}) {
    g->left = 120;
    g->top = 240;
  }
}

}  // namespace nerit
