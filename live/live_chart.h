#pragma once
// The live chart under the live table: engine speed, injector out time, boost and throttle over
// the last 30 seconds. It takes a sample from every status frame while the stream runs and the
// chart is not frozen; the window draws it at its own pace from decimate().
#include <array>
#include <deque>
#include <string>
#include <vector>

#include "shell/controls.h"

namespace nerit {

enum ChartChannel : int {
  kChartSpeed,
  kChartInjectorOut,
  kChartBoost,
  kChartThrottle,
  kChartCount
};

// What a channel is called and the range its axis shows.
struct ChartScale {
  const char* name;
  double min, max;
};
inline constexpr std::array<ChartScale, kChartCount> kChartScales = {{
    {"Drehzahl", 0, 8000},
    {"INJ Out / µs", 0, 20000},
    {"Boost / kPa", -100, 150},
    {"TPS / %", 0, 100},
}};

inline constexpr long long kChartWindowMs = 30000;

struct ChartSample {
  long long t_ms = 0;
  std::array<double, kChartCount> v{};
};

// One drawn point: the low and the high value of the samples that fall on it, so a short
// spike stays visible however narrow the chart is drawn.
struct ChartSpan {
  long long t_ms = 0;  // start of the span's time slice
  double low = 0, high = 0;
};

struct ChartControls {
  ChartControls();
  std::array<CheckBox, kChartCount> channels;  // which channels are drawn
};

class LiveChart {
 public:
  // The status stream runs or stops; a stopped stream leaves the chart as it was.
  void set_running(bool on) { running_ = on; }
  bool running() const { return running_; }
  // Frozen, the chart keeps what it shows while the stream (and a data log) goes on.
  void set_frozen(bool on) { frozen_ = on; }
  bool frozen() const { return frozen_; }

  // A status frame's values; samples older than the window fall off.
  void add(long long t_ms, const std::array<double, kChartCount>& values);

  const std::deque<ChartSample>& samples() const { return samples_; }
  // The latest sample's time: the chart's right edge.
  long long end_ms() const { return samples_.empty() ? 0 : samples_.back().t_ms; }
  // Grows with every change, so the window redraws only a changed chart.
  unsigned revision() const { return revision_; }

 private:
  std::deque<ChartSample> samples_;
  bool running_ = false;
  bool frozen_ = false;
  unsigned revision_ = 0;
};

// The samples of one channel in [end - window, end], cut into `slices` equal time slices; each
// slice with samples gives its low and high value. Slices without samples give nothing.
std::vector<ChartSpan> decimate(const std::deque<ChartSample>& samples, ChartChannel channel,
                                long long end_ms, long long window_ms, int slices);

// A value as a share of its channel's range, 0 at the bottom, 1 at the top (outside: beyond).
double chart_share(ChartChannel channel, double value);

}  // namespace nerit
