#include "live/live_chart.h"

#include <algorithm>

namespace nerit {

ChartControls::ChartControls() {
  for (int i = 0; i < kChartCount; ++i) {
    channels[static_cast<std::size_t>(i)].caption = kChartScales[static_cast<std::size_t>(i)].name;
    channels[static_cast<std::size_t>(i)].value = 1;
  }
}

void LiveChart::add(long long t_ms, const std::array<double, kChartCount>& values) {
  if (!running_ || frozen_) return;
  samples_.push_back({t_ms, values});
  while (!samples_.empty() && samples_.front().t_ms < t_ms - kChartWindowMs) samples_.pop_front();
  ++revision_;
}

std::vector<ChartSpan> decimate(const std::deque<ChartSample>& samples, ChartChannel channel,
                                long long end_ms, long long window_ms, int slices) {
  std::vector<ChartSpan> out;
  if (slices <= 0 || window_ms <= 0) return out;
  const long long start_ms = end_ms - window_ms;
  const auto first = std::lower_bound(samples.begin(), samples.end(), start_ms,
                                      [](const ChartSample& s, long long t) { return s.t_ms < t; });
  const auto k = static_cast<std::size_t>(channel);
  int current = -1;
  for (auto it = first; it != samples.end() && it->t_ms <= end_ms; ++it) {
    // The last slice also takes the sample at the very end.
    const int slice = static_cast<int>(
        std::min<long long>(slices - 1, (it->t_ms - start_ms) * slices / window_ms));
    const double v = it->v[k];
    if (slice != current) {
      current = slice;
      out.push_back({start_ms + window_ms * slice / slices, v, v});
    } else {
      out.back().low = std::min(out.back().low, v);
      out.back().high = std::max(out.back().high, v);
    }
  }
  return out;
}

double chart_share(ChartChannel channel, double value) {
  const ChartScale& s = kChartScales[static_cast<std::size_t>(channel)];
  return (value - s.min) / (s.max - s.min);
}

}  // namespace nerit
