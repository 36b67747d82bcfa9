#pragma once
// One map row as the controller stores it: the data bytes of its write frames. Pure: reads
// the grid's cell texts, sends nothing.
#include "link/frames.h"
#include "link/memory_map.h"
#include "shell/controls.h"

namespace nerit {

// Columns 1-16 of a correction map row, one byte a cell.
FrameData correction_row_data(const Grid& g, int row);
// Columns 1-8 (half 0) or 9-16 (half 1) of an airflow map row, two bytes a cell.
FrameData airflow_half_row_data(const Grid& g, int row, int half, double airflowtype);

}  // namespace nerit
