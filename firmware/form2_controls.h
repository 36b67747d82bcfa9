#pragma once
// The firmware window's controls.
#include <string>

#include "firmware/firmware_image.h"
#include "shell/controls.h"

namespace nerit {

struct Form2Controls {
  Form2Controls() {
    Command2.enabled = Command5.enabled = false;  // until an image or a waiting loader
    ProgressBar1.max = kTransferBytes;
  }

  std::string caption = "Firmwareupdate";
  CommandButton Command1{"Load File"};
  CommandButton Command2{"Update - Normal"};
  CommandButton Command5{"Update - Recovery"};
  CommandButton Command4{"Port Open"};
  CommandButton Command3{"Close"};
  ProgressBar ProgressBar1;
  Label Label1;      // status
  Label Label2;      // percentage
  Label Label3;      // time elapsed and left
  Label file_label;  // the image chosen and its size
};

}  // namespace nerit
