#include "maps/map_row_writer.h"

#include "link/frames.h"
#include "link/map_rows.h"

namespace nerit {

void MapRowWriter::send_block(int address, const FrameData& data) {
  const std::string frame = address_frame(kCmdSramWrite, address, data);
  link_.write_addr = address;
  session_.send_frame(frame);
  // The guard timer ends a wait the controller never answers.
  c_.Timer3.set_enabled(true);
  session_.wait_for_reply();
}

void MapRowWriter::send_rows(MapId map, int first_row, int last_row) {
  for (int r = first_row; r <= last_row; ++r) {
    if (map == MapId::Correction) {
      send_block(correction_row_address(r), correction_row_data(c_.MSFlexGrid2, r));
    } else {
      for (int half = 0; half < 2; ++half)
        send_block(airflow_row_address(r) + 16 * half,
                   airflow_half_row_data(c_.MSFlexGrid3, r, half, vars_.airflowtype));
    }
  }
}

}  // namespace nerit
