#include "shell/form1_controls.h"

namespace nerit {

Form1Controls::Form1Controls() {
  // Design-time state: the controls that only a connection or a choice enables.
  Check1.enabled = false;
  for (auto& frame : Frame1) frame.visible = false;
  Frame1[kPanelInjektoradjust].caption = "Manual Injectoradjust";
  Frame1[kPanelAirflowFuelcut].caption = "Airflow Fuelcut";
  Frame1[kPanelBoostcontrol].caption = "Boostcontroll Pin #22";
  Frame1[kPanelAirflowOutput].caption = "Airflow Out: Karman Vortex 20-3000 Hz";
  Frame1[kPanelAccelerationFuel].caption = "Acceleration Fuel";
  HScroll1[0].max = 8;
  HScroll1[1].max = 255;
  HScroll1[2].max = 255;
  HScroll1[3].max = 8;
  HScroll1[4].max = 255;
  HScroll1[5].max = 255;

  // Both maps side by side, each grid inside its frame (twips).
  correction_frame.left = 120;
  correction_frame.top = 960;
  airflow_map_frame.left = 9840;
  airflow_map_frame.top = 960;
  for (Grid* g : {&MSFlexGrid2, &MSFlexGrid3}) {
    g->left = 120;
    g->top = 240;
  }
  Text2.visible = false;
  Text5.visible = false;
  Frame6.visible = false;
}

}  // namespace nerit
