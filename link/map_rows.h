#pragma once
// One map row as the controller stores it: the data bytes of its write frames and their
// addresses. Pure: reads the grid's cell texts, sends nothing.
#include "link/frames.h"
#include "shell/controls.h"

namespace nerit {

inline constexpr int kCorrectionMapAddress = 0x2A0;  // 16 bytes a row
inline constexpr int kAirflowMapAddress = 0x3A0;     // 32 bytes a row, two frames

inline int correction_row_address(int row) { return kCorrectionMapAddress + 16 * (row - 1); }
inline int airflow_row_address(int row) { return kAirflowMapAddress + 32 * (row - 1); }

// Columns 1-16 of a correction map row, one byte a cell.
FrameData correction_row_data(const Grid& g, int row);
// Columns 1-8 (half 0) or 9-16 (half 1) of an airflow map row, two bytes a cell.
FrameData airflow_half_row_data(const Grid& g, int row, int half, double airflowtype);

}  // namespace nerit
