#include "link/panel_frames.h"

#include "shell/numbers.h"

namespace nerit {

FrameData injector_data(const InjectorData& v) {
  const auto in = word_bytes(v.offset_in);
  const auto out = word_bytes(v.offset_out);
  FrameData d{};
  d[0] = to_byte(v.slider);
  d[1] = in[1];
  d[2] = in[0];
  d[3] = out[1];
  d[4] = out[0];
  d[5] = to_byte(v.injsizecorr);
  d[6] = to_byte(v.injchannels);
  return d;
}

FrameData airflow_output_data(double airflowtype, double aoutmax) {
  FrameData d{};
  d[0] = to_byte(airflowtype);
  d[1] = to_byte(aoutmax);
  return d;
}

FrameData boost_control_data(double enable, double start, double set) {
  FrameData d{};
  d[0] = to_byte(enable);
  d[1] = to_byte(start);
  d[2] = to_byte(set);
  return d;
}

}  // namespace nerit
