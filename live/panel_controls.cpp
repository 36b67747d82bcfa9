#include "live/panel_controls.h"

namespace nerit {

PanelControls::PanelControls() {
  for (auto& frame : Frame1) frame.visible = false;
  Frame1[kPanelInjektoradjust].caption = "Manual Injectoradjust";
  Frame1[kPanelAirflowFuelcut].caption = "Airflow Fuelcut";
  Frame1[kPanelBoostcontrol].caption = "Boostcontroll Pin #22";
  Frame1[kPanelAirflowOutput].caption = kFrequencyOutputCaption;
  Frame1[kPanelAccelerationFuel].caption = "Acceleration Fuel";

  Slider1.min = 0;
  Slider1.max = 255;
  Slider1.value = 128;
  fuelcut_note.caption = "This controller has no airflow fuel cut to set.";

  const char* captions[6] = {"Filter", "Menge", "Dauer", "Filter", "Menge", "Reduzierung"};
  for (std::size_t i = 0; i < 6; ++i) accel_captions[i].caption = captions[i];
  for (std::size_t i : {0u, 3u}) HScroll1[i].max = 8;
  for (std::size_t i : {1u, 2u, 4u, 5u}) HScroll1[i].max = 255;
}

}  // namespace nerit
