#include "maps/map_row_writer.h"

#include "link/map_rows.h"

namespace nerit {

void MapRowWriter::send_rows(MapId map, int first_row, int last_row) {
  // Timer3 ends a wait the controller never answers.
  for (int r = first_row; r <= last_row; ++r) {
    if (map == MapId::Correction) {
      wire_.write_block(kCmdSramWrite, correction_row_address(r),
                        correction_row_data(c_.MSFlexGrid2, r), &c_.Timer3);
    } else {
      for (int half = 0; half < 2; ++half)
        wire_.write_block(kCmdSramWrite, airflow_row_address(r) + 16 * half,
                          airflow_half_row_data(c_.MSFlexGrid3, r, half, vars_.airflowtype),
                          &c_.Timer3);
    }
  }
}

}  // namespace nerit
