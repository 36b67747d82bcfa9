#pragma once
// The main window's parts each take their share of a decoded reply: status frames go to the
// live data and the maps (and, while one records, the data log); settings blocks to the
// maps' load type and the panels; axis and map blocks to the maps.
#include <functional>

#include "link/reply_sink.h"
#include "live/live_data.h"
#include "live/settings_panels.h"
#include "maps/automap.h"
#include "maps/map_axes.h"
#include "maps/map_blocks.h"
#include "maps/map_controls.h"
#include "shell/form1_controls.h"

namespace nerit {

class ReplyFanOut : public ReplySink {
 public:
  ReplyFanOut(Form1Controls& c, MapControls& mc, LiveData& live, SettingsPanels& panels,
              MapAxes& axes, MapBlocks& map_blocks, Automap& automap)
      : c_(c),
        mc_(mc),
        live_(live),
        panels_(panels),
        axes_(axes),
        map_blocks_(map_blocks),
        automap_(automap) {}

  void status(const StatusReply& frame) override;
  void memory_block(const MemoryBlockReply& block) override;

  // Every status frame's row, for the data log and the chart.
  std::function<void(const LiveRow& row)> live_row;

  // The live value Automap files under the load axis: what the load type measures.
  static double automap_load(int load_type, const LiveValues& v);

 private:
  Form1Controls& c_;
  MapControls& mc_;
  LiveData& live_;
  SettingsPanels& panels_;
  MapAxes& axes_;
  MapBlocks& map_blocks_;
  Automap& automap_;
};

}  // namespace nerit
