// The airflow output clamp between the "Clamp / mV:" field and its byte.
#include "live/airflow_clamp.h"

#include <gtest/gtest.h>

#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {
namespace {

TEST(AirflowClamp, EveryByteShownConvertsBackToItself) {
  for (int b = 0; b <= 255; ++b) EXPECT_EQ(aoutmax_from_clamp(val(clamp_text(b))), b) << b;
  EXPECT_EQ(clamp_text(200), "3922");
  EXPECT_EQ(clamp_text(255), "5000");
  EXPECT_EQ(clamp_text(0), "0");
}

TEST(AirflowClamp, MillivoltsBecomeTheByteRoundingDown) {
  EXPECT_EQ(aoutmax_from_clamp(5000), 255);
  EXPECT_EQ(aoutmax_from_clamp(2500), 127);
  EXPECT_EQ(aoutmax_from_clamp(3921), 199);
  EXPECT_THROW(aoutmax_from_clamp(6000), OverflowError);
}

}  // namespace
}  // namespace nerit
