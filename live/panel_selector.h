#pragma once
// The tuning-panel list: choosing an entry shows that panel and hides the others.
#include "shell/form1_controls.h"

namespace nerit {

class PanelSelector {
 public:
  explicit PanelSelector(Form1Controls& c) : c_(c) {}
  void List2_Click();

 private:
  Form1Controls& c_;
};

}  // namespace nerit
