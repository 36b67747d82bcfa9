#pragma once
// The graph window: the injector-correction map as a surface over RPM and load.
#include "maps/surface_data.h"
#include "shell/controls.h"

namespace nerit {

class Form5 {
 public:
  explicit Form5(const Grid& correction_map) : map_(correction_map) {}

  void Form_Load();
  void Command1_Click();  // "Graph": fresh read, default view
  void Command2_Click();  // "update": fresh read, the view stays where the user turned it

  CommandButton Command1{"Graph"};
  CommandButton Command2{"update"};
  SurfaceData surface;

  // Grow with every read of the map and with every request to reset the camera.
  unsigned revision() const { return revision_; }
  unsigned camera_resets() const { return camera_resets_; }

 private:
  void read_map();
  const Grid& map_;
  unsigned revision_ = 0;
  unsigned camera_resets_ = 0;
};

}  // namespace nerit
