#pragma once
// Data of the single-setting commands the tuning panels send: 0x03 injector adjust, 0x09
// airflow output and 0x0A boost control. Pure: a value that is no byte fails before any frame
// exists.
#include "link/frames.h"

namespace nerit {

struct InjectorData {
  double slider = 128;  // manual adjust, 128 = 0 %
  double offset_in = 0, offset_out = 0;
  double injsizecorr = 0;
  double injchannels = 0;
};

// Slider; offset in high, low; offset out high, low; injsizecorr; injchannels. Unlike the
// settings blocks this command carries its offsets high byte first.
FrameData injector_data(const InjectorData& v);
// airflowtype, aoutmax.
FrameData airflow_output_data(double airflowtype, double aoutmax);
// boost_enable, boost_start, boost_set (rounded, ties to even).
FrameData boost_control_data(double enable, double start, double set);

}  // namespace nerit
