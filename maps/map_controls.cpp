#include "maps/map_controls.h"

namespace nerit {

MapControls::MapControls() {
  // Both maps side by side, each grid inside its frame (twips).
  correction_frame.left = 120;
  correction_frame.top = 960;
  airflow_map_frame.left = 9840;
  airflow_map_frame.top = 960;
  Text2.visible = false;
  Text5.visible = false;
  Frame6.visible = false;
}

}  // namespace nerit
