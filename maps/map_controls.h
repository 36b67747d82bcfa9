#pragma once
// The map editor's own controls. The grids, the load type and the map enable boxes are shared
// with the transfers and files (Form1Controls).
#include "shell/controls.h"

namespace nerit {

struct MapControls {
  MapControls();

  Frame correction_frame{"Injektorcorrection (RPM x Load)"};
  Frame airflow_map_frame{"Airflow Output"};
  CheckBox Check5{"Automap"};
  CheckBox Check2{"Highlight"};
  Label load_type_label{"Loadtype"};
  TextBox Text2;  // floating cell editor of MSFlexGrid2
  TextBox Text5;  // floating cell editor of MSFlexGrid3
  // Map command frame, shown at a grid on a right-button press.
  Frame Frame6;
  CommandButton Command13{"interpolate rows"};
  CommandButton Command14{"Interpolate cols"};
  CommandButton Command16{"clear"};
  CommandButton Command8{"Command8"};
  CommandButton Command10{"Command10"};
  CommandButton GraphButton{"Graph"};  // opens the 3-D graph of the correction map
};

}  // namespace nerit
