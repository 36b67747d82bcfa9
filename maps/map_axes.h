#pragma once
// The map axes: the load type and its load axis, the RPM-points and load-points edits, and
// the map enable boxes. Both grids always show the correction map's axes.
#include <functional>

#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class MapAxes {
 public:
  MapAxes(Form1Controls& c, ProgramState& vars) : c_(c), vars_(vars) {}

  void Combo1_Click();          // load type chosen
  void Drehzahlpunkte_Click();  // menu "RPM Points": heading row editable, then back
  void Lastpunke_Click();       // menu "Load Points": heading column editable, then back
  void Check6_MouseUp();        // "Map Aktiv": correction map open for input
  void Check4_MouseUp();        // "Aktiv": airflow map open for input

  // load_points from the load headings for the current load type.
  void fill_load_points();

  // Shows or hides every tuning panel: they make way while an axis is edited.
  std::function<void(bool visible)> show_panels;

 private:
  // Flips a heading row or column between editable (0) and fixed (1); the tuning panels hide
  // while it is open. True when the edit closed.
  bool toggle_heading_edit(int& fixed);
  void copy_load_axis();
  void copy_rpm_axis();

  Form1Controls& c_;
  ProgramState& vars_;
};

}  // namespace nerit
