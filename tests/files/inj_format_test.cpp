// The settings file's layout: every field at its offset, the bytes a save keeps, and the files
// a load refuses.
#include "files/inj_format.h"

#include <gtest/gtest.h>

#include "tests/files/inj_golden.h"

namespace nerit::testing {
namespace {

Tune golden_tune() {
  return decode_inj(InjGolden().bytes);
}

TEST(InjFormat, DecodesEveryFieldOfAPositionedFile) {
  const Tune t = golden_tune();
  EXPECT_EQ(t.rpmfaktor, 7500000);
  EXPECT_EQ(t.load_type, 0);
  EXPECT_EQ(t.drucksensor, 1);
  EXPECT_EQ(t.tps_min, 25);
  EXPECT_EQ(t.tps_max, 230);
  EXPECT_EQ(t.injoffset_in, 1000);
  EXPECT_EQ(t.injoffset_out, 750);
  EXPECT_EQ(t.injalt, 440);
  EXPECT_EQ(t.injneu, 550);
  EXPECT_EQ(t.injsizecorr, 102);
  EXPECT_EQ(t.airflowtype, 2);
  EXPECT_EQ(t.aoutmax, 204);
  EXPECT_EQ(t.boost_enable, 1);
  EXPECT_EQ(t.boost_start, 100);
  EXPECT_EQ(t.boost_set, 128);
  EXPECT_EQ(t.zylinder, 4);
  EXPECT_EQ(t.injchannels, 15);
  EXPECT_EQ(t.map_flags, 3);
  EXPECT_EQ(t.accel_param, (std::array<std::uint8_t, 6>{3, 120, 40, 5, 90, 17}));
  EXPECT_EQ(t.seq_faktor, 8);
  EXPECT_EQ(t.rpm_headings[0], 500);
  EXPECT_EQ(t.rpm_headings[15], 8000);
  EXPECT_EQ(t.load_headings[1], 6);
  EXPECT_EQ(t.correction[3][5], InjGolden::correction(3, 5));
  EXPECT_EQ(t.airflow[15][15], InjGolden::airflow(15, 15));
}

TEST(InjFormat, EncodingADecodedFileGivesItsBytesBack) {
  const InjGolden g;
  EXPECT_EQ(encode_inj(decode_inj(g.bytes)), g.bytes);
}

TEST(InjFormat, SavingOverALongerFileKeepsItsUnwrittenBytesAndItsTail) {
  std::vector<std::uint8_t> old(1000);
  for (std::size_t i = 0; i < old.size(); ++i) old[i] = static_cast<std::uint8_t>(i * 7 + 1);
  const auto b = encode_inj(golden_tune(), old);
  ASSERT_EQ(b.size(), 1000u);
  for (std::size_t i = 4; i <= 15; ++i) EXPECT_EQ(b[i], old[i]) << i;
  for (std::size_t i = 44; i <= 47; ++i) EXPECT_EQ(b[i], old[i]) << i;
  for (std::size_t i = 880; i < 1000; ++i) EXPECT_EQ(b[i], old[i]) << i;
  EXPECT_EQ(b[17], 1);  // and the fields are the tune's
}

TEST(InjFormat, ACorrectionCellAbove155IsRefusedNamingTheCell) {
  Tune t = golden_tune();
  t.correction[2][6] = 156;
  try {
    encode_inj(t);
    FAIL() << "no error";
  } catch (const InjFormatError& e) {
    EXPECT_STREQ(
        e.what(),
        "Correction map row 3, column 7: 156 cannot be stored (the file takes -100 to 155).");
  }
}

TEST(InjFormat, AFileShorterThan880BytesIsRefused) {
  std::vector<std::uint8_t> b = InjGolden().bytes;
  b.resize(879);
  try {
    decode_inj(b);
    FAIL() << "no error";
  } catch (const InjFormatError& e) {
    EXPECT_STREQ(e.what(), "The file holds 879 bytes; a settings file has 880.");
  }
}

TEST(InjFormat, AColumnHeadingOf0IsRefused) {
  InjGolden g;
  g.put(48 + 2 * 4, 2, 0);
  try {
    decode_inj(g.bytes);
    FAIL() << "no error";
  } catch (const InjFormatError& e) {
    EXPECT_STREQ(e.what(), "RPM column 5 has the heading 0; the speed points divide by it.");
  }
}

TEST(InjFormat, ALoadTypeAbove3IsRefused) {
  InjGolden g;
  g.put(16, 1, 4);
  EXPECT_THROW(decode_inj(g.bytes), InjFormatError);
  g.put(16, 1, 3);
  EXPECT_EQ(decode_inj(g.bytes).load_type, 3);
}

}  // namespace
}  // namespace nerit::testing
