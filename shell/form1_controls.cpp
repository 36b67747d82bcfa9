#include "shell/form1_controls.h"

namespace nerit {

Form1Controls::Form1Controls() {
  // Design-time state: only a connection enables the realtime data.
  Check1.enabled = false;
  // Each map grid inside its frame (twips).
  for (Grid* g : {&MSFlexGrid2, &MSFlexGrid3}) {
    g->left = 120;
    g->top = 240;
  }
}

}  // namespace nerit
