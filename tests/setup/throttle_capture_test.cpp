// The "Drosselklappe" frame: the end points shown and captured, the live labels on Timer1's
// ticks, and the frame locked offline.
#include <tuple>

#include "tests/setup/form3_fixture.h"

namespace nerit::testing {
namespace {

class ThrottleCaptureTest : public Form3Fixture {
 protected:
  ThrottleCaptureTest() {
    go_online();
    vars.tps_min = 20;
    vars.tps_max = 230;
    vars.tps_raw = 128;
  }
  auto live() const {
    return std::tuple(c3.live_value.caption, c3.live_volt.caption, c3.live_percent.caption);
  }
  auto end(int i) const { return std::tuple(c3.end_value[i].caption, c3.end_volt[i].caption); }
};

TEST_F(ThrottleCaptureTest, LiveLabelsShowDashesUntilTheFirstTickAfter250ms) {
  open();
  EXPECT_EQ(live(), std::tuple("--", "--", "--"));
  fp.clock.advance(249);
  EXPECT_EQ(live(), std::tuple("--", "--", "--"));
  fp.clock.advance(1);
  EXPECT_EQ(live(), std::tuple("128", "2.51", "51 %"));  // 108 x 100 / 210 = 51.4
}

TEST_F(ThrottleCaptureTest, EachTickShowsTheWholePercentBetweenTheEndPoints) {
  open();
  const std::tuple<double, const char*> cases[] = {
      {20, "0 %"}, {230, "100 %"}, {125, "50 %"}, {10, "-4 %"}, {255, "111 %"}};
  for (const auto& [raw, percent] : cases) {
    vars.tps_raw = raw;
    fp.clock.advance(250);
    EXPECT_EQ(c3.live_percent.caption, percent) << raw;
  }
}

TEST_F(ThrottleCaptureTest, EqualEndPointsShowDashesForThePercentage) {
  vars.tps_min = vars.tps_max = 100;
  open();
  fp.clock.advance(250);
  EXPECT_EQ(live(), std::tuple("128", "2.51", "-- %"));
}

TEST_F(ThrottleCaptureTest, TheFrameIsLockedWhileTheControllerIsNotConnected) {
  vars.connected = 0;
  open();
  EXPECT_FALSE(c3.throttle_frame.enabled);
  vars.connected = 1;
  open();
  EXPECT_TRUE(c3.throttle_frame.enabled);
}

TEST_F(ThrottleCaptureTest, LoadShowsTheStoredEndPointsAndTheirVoltages) {
  open();
  EXPECT_EQ(end(kOpen), std::tuple("230", "4.51"));
  EXPECT_EQ(end(kClosed), std::tuple("20", "0.39"));
}

TEST_F(ThrottleCaptureTest, SetButtonsTakeTheLiveValueAsTheEndPoint) {
  fp.locale.decimal = ',';
  open();
  vars.tps_raw = 240;
  form3.throttle.Command6_Click(kOpen);  // "Set 100%"
  EXPECT_EQ(vars.tps_max, 240);
  EXPECT_EQ(end(kOpen), std::tuple("240", "4,71"));
  vars.tps_raw = 17;
  form3.throttle.Command6_Click(kClosed);  // "Set 0%"
  EXPECT_EQ(vars.tps_min, 17);
  EXPECT_EQ(end(kClosed), std::tuple("17", "0,33"));
  EXPECT_EQ(vars.tps_max, 240);
}

}  // namespace
}  // namespace nerit::testing
