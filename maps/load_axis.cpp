#include "maps/load_axis.h"

#include <algorithm>

#include "shell/numbers.h"

namespace nerit {

double default_load_heading(int load_type, int k, const LoadAxisInputs& in) {
  switch (load_type) {
    case kLoadTps:
      return whole_part(k * 100.0 / 15);
    case kLoadMap: {
      const auto length = static_cast<double>(in.pressure.size());
      const double step = whole_part(length / 12);
      return std::max(0.0, std::min(k * step, length - 1));
    }
    case kLoadAnalog:
      return whole_part(k * 5000.0 / 15);
    case kLoadAirflow:
      return 50 + whole_part(k * 2950.0 / 15);
    default:
      return 0;
  }
}

std::int16_t load_point(int load_type, int k, std::string_view heading, const LoadAxisInputs& in) {
  switch (load_type) {
    case kLoadTps:
      return to_int16(in.tps_min + whole_part(k * ((in.tps_max - in.tps_min) / 15)));
    case kLoadMap: {
      if (in.pressure.empty()) return 0;
      const double kpa = std::max(0.0, round_half_even(val(heading)));
      const double last = static_cast<double>(in.pressure.size() - 1);
      return in.pressure[static_cast<std::size_t>(std::min(kpa, last))];
    }
    case kLoadAnalog:
      return to_int16(whole_part(k * 255.0 / 15));
    case kLoadAirflow:
      return to_int16(32762 - whole_part(divide(250000, val(heading))));
    default:
      return 0;
  }
}

}  // namespace nerit
