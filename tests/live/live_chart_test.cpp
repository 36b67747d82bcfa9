// The live chart's samples: the 30-second window, and the spans it is drawn from.
#include "live/live_chart.h"

#include <gtest/gtest.h>

namespace nerit {
namespace {

std::deque<ChartSample> speeds(std::initializer_list<std::pair<long long, double>> points) {
  std::deque<ChartSample> out;
  for (auto [t, rpm] : points) out.push_back({t, {rpm, 0, 0, 0}});
  return out;
}

TEST(LiveChart, KeepsTheLastThirtySeconds) {
  LiveChart chart;
  chart.set_running(true);
  for (long long t = 0; t <= 40000; t += 1000) chart.add(t, {double(t), 0, 0, 0});
  EXPECT_EQ(chart.samples().front().t_ms, 10000);
  EXPECT_EQ(chart.samples().size(), 31u);
  EXPECT_EQ(chart.end_ms(), 40000);
}

TEST(LiveChart, NothingIsSampledWhileStoppedOrFrozen) {
  LiveChart chart;
  chart.add(1, {1, 1, 1, 1});
  chart.set_running(true);
  chart.set_frozen(true);
  chart.add(2, {1, 1, 1, 1});
  const unsigned revision = chart.revision();
  chart.set_frozen(false);
  chart.add(3, {1, 1, 1, 1});
  ASSERT_EQ(chart.samples().size(), 1u);
  EXPECT_EQ(chart.samples()[0].t_ms, 3);
  EXPECT_GT(chart.revision(), revision);
}

TEST(LiveChart, EachSliceGivesItsLowAndHighSoASpikeStaysVisible) {
  // Ten slices of 100 ms over 0..1000; a one-frame spike in the third slice.
  const auto samples = speeds({{-50, 9},
                               {0, 800},
                               {40, 820},
                               {210, 810},
                               {230, 6000},
                               {260, 805},
                               {990, 900},
                               {1000, 950},
                               {1010, 7}});
  const auto spans = decimate(samples, kChartSpeed, 1000, 1000, 10);
  ASSERT_EQ(spans.size(), 3u);
  EXPECT_EQ(spans[0].t_ms, 0);
  EXPECT_EQ(spans[0].low, 800);
  EXPECT_EQ(spans[0].high, 820);
  EXPECT_EQ(spans[1].t_ms, 200);
  EXPECT_EQ(spans[1].low, 805);
  EXPECT_EQ(spans[1].high, 6000);
  EXPECT_EQ(spans[2].t_ms, 900);  // the sample at the very end falls into the last slice
  EXPECT_EQ(spans[2].high, 950);
}

}  // namespace
}  // namespace nerit
