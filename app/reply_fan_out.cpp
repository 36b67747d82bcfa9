#include "app/reply_fan_out.h"

#include "link/memory_map.h"
#include "link/settings_blocks.h"
#include "maps/load_axis.h"
#include "shell/quietly.h"

namespace nerit {

double ReplyFanOut::automap_load(int load_type, const LiveValues& v) {
  switch (load_type) {
    case kLoadTps:
      return v.row.tps_in;
    case kLoadMap:
      return v.row.boost_kpa + 100;  // absolute pressure
    case kLoadAnalog:
      return v.analog_mv;  // as the load axis counts
    case kLoadAirflow:
      return v.airflow_in_hz;
    default:
      return 0;
  }
}

void ReplyFanOut::status(const StatusReply& frame) {
  const LiveValues v = live_.status(frame);
  if (mc_.Check5.value == 1)
    quietly([&] {
      automap_.automap(v.row.drehzahl, automap_load(c_.Combo1.list_index, v), v.airflow_in_hz);
    });
  quietly([&] { live_.show(v); });
  quietly([&] { automap_.operating_cell(v.cell_index); });
  if (live_row) quietly([&] { live_row(v.row); });
}

void ReplyFanOut::memory_block(const MemoryBlockReply& block) {
  switch (block.address) {
    case kSettingsBlockA: {
      const SettingsBlockA a = read_settings_block_a(block.data);
      // A load type the list does not have ends the block here, before the panels change.
      c_.Combo1.select(a.load_type);
      axes_.Combo1_Click();
      panels_.show_block_a(a);
      break;
    }
    case kSettingsBlockB:
      panels_.show_block_b(read_settings_block_b(block.data));
      break;
    default:
      map_blocks_.show(block);
      break;
  }
}

}  // namespace nerit
