#include "files/tune_memory.h"

#include <gtest/gtest.h>

#include "files/inj_format.h"
#include "files/tune_window.h"
#include "link/cell_codec.h"
#include "shell/data_files.h"
#include "shell/errors.h"
#include "sim/default_tune.h"
#include "tests/files/inj_golden.h"
#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

Tune golden_tune() {
  Tune t = decode_inj(InjGolden().bytes);
  t.axes = axes_from_headings(t, {});
  return t;
}

MemoryImage image_of(const sim::ControllerMemory& memory) {
  MemoryImage m{};
  for (int i = 0; i < kMemoryBlocks; ++i)
    m[static_cast<std::size_t>(i)] =
        memory.ram.block(static_cast<std::uint32_t>(memory_block_address(i)));
  return m;
}

MemoryImage round_trip(const MemoryImage& m) {
  return memory_from_tune(tune_from_memory(m, 7500000, {}));
}

// The golden tune with every correction cell and airflow cell replaced by `cell(k)`, k = 0..255.
template <class Cell>
MemoryImage with_cells(std::uint8_t airflowtype, Cell cell) {
  Tune t = golden_tune();
  t.airflowtype = airflowtype;
  for (int k = 0; k < 256; ++k) {
    const auto [correction, airflow] = cell(k);
    t.correction[static_cast<std::size_t>(k / 16)][static_cast<std::size_t>(k % 16)] = correction;
    t.airflow[static_cast<std::size_t>(k / 16)][static_cast<std::size_t>(k % 16)] = airflow;
  }
  return memory_from_tune(t);
}

std::pair<std::int16_t, std::int16_t> cells(int correction, int airflow) {
  return {static_cast<std::int16_t>(correction), static_cast<std::int16_t>(airflow)};
}

TEST(TuneMemory, TheVirtualControllersWorkingMemoryWritesBackByteForByte) {
  const MemoryImage m = image_of(sim::default_tune());
  EXPECT_EQ(round_trip(m), m);
}

TEST(TuneMemory, ACorrectionByteTheProgramNeverWritesReadsAsTheNearestPercent) {
  MemoryImage m = memory_from_tune(golden_tune());
  m[6][0] = 130;  // 1.57 %: 2 % writes 131
  const Tune t = tune_from_memory(m, 7500000, {});
  EXPECT_EQ(t.correction[0][0], 2);
  EXPECT_EQ(memory_from_tune(t)[6][0], 131);
}

TEST(TuneMemory, EveryCorrectionByteTheProgramWritesWritesBackTheSame) {
  // -100 .. 100 %: every percent, bytes 1 .. 255.
  const MemoryImage m = with_cells(2, [](int k) { return cells(k % 201 - 100, 20); });
  for (int p = -100; p <= 100; ++p) ASSERT_EQ(correction_percent(correction_byte(p)), p);
  EXPECT_EQ(round_trip(m), m);
}

// The golden tune's image with airflow cell k (k = 0..255) holding `cell_bytes(k)`.
template <class Bytes>
MemoryImage with_airflow_bytes(std::uint8_t airflowtype, Bytes cell_bytes) {
  Tune t = golden_tune();
  t.airflowtype = airflowtype;
  for (auto& row : t.airflow) row.fill(1000);
  MemoryImage m = memory_from_tune(t);
  for (std::size_t k = 0; k < 256; ++k) {
    const std::array<std::uint8_t, 2> bytes = cell_bytes(static_cast<int>(k));
    FrameData& half = m[22 + 2 * (k / 16) + (k % 16) / 8];
    half[2 * (k % 8)] = bytes[0];
    half[2 * (k % 8) + 1] = bytes[1];
  }
  return m;
}

TEST(TuneMemory, EveryVoltageStepWritesBackTheSame) {
  const MemoryImage m = with_airflow_bytes(2, [](int k) {
    return std::array<std::uint8_t, 2>{static_cast<std::uint8_t>(k), 0};
  });
  EXPECT_EQ(round_trip(m), m);
}

TEST(TuneMemory, EveryVortexPeriodOfAWholeHzWritesBackTheSame) {
  for (int first = 20; first <= 5000; first += 256) {
    const MemoryImage m = with_airflow_bytes(
        0, [first](int k) { return airflow_bytes(std::min(first + k, 5000), 0); });
    ASSERT_EQ(round_trip(m), m) << "from " << first << " Hz";
  }
}

TEST(TuneMemory, AVortexPeriodReadsAsTheLargestWholeHzThatGivesIt) {
  const MemoryImage m = with_airflow_bytes(0, [](int k) {
    // 83 ticks: 250000 / 83 = 3012.05; 12500 ticks: 20 Hz.
    return k == 0 ? std::array<std::uint8_t, 2>{83, 0} : std::array<std::uint8_t, 2>{0xD4, 0x30};
  });
  const Tune t = tune_from_memory(m, 7500000, {});
  EXPECT_EQ(t.airflow[0][0], 3012);
  EXPECT_EQ(t.airflow[0][1], 20);
}

TEST(TuneMemory, SpeedHeadingsShowThePeriodsInWholeHundredsOfRpm) {
  MemoryImage m = memory_from_tune(golden_tune());
  m[1][2] = 4;                     // four cylinders: rpmfaktor 30000000
  m[4][0] = 0x60, m[4][1] = 0xEA;  // 60000 ticks: 500 rpm
  m[4][2] = 0xA6, m[4][3] = 0x0E;  // 3750: 8000 rpm
  m[4][4] = 0x10, m[4][5] = 0x27;  // 10000: 3000 rpm
  const Tune t = tune_from_memory(m, 7500000, {});
  EXPECT_EQ(t.rpmfaktor, 30000000);
  EXPECT_EQ(t.rpm_headings[0], 500);
  EXPECT_EQ(t.rpm_headings[1], 8000);
  EXPECT_EQ(t.rpm_headings[2], 3000);
  EXPECT_EQ(t.axes.rpm_points[2], 10000);
}

TEST(TuneMemory, AnUnknownCylinderCountKeepsTheRpmfaktorGiven) {
  MemoryImage m = memory_from_tune(golden_tune());
  m[1][2] = 5;
  EXPECT_EQ(tune_from_memory(m, 7500000, {}).rpmfaktor, 7500000);
  m[1][2] = 6;
  EXPECT_EQ(tune_from_memory(m, 7500000, {}).rpmfaktor, 20000000);
  m[1][2] = 8;
  EXPECT_EQ(tune_from_memory(m, 7500000, {}).rpmfaktor, 15000000);
}

TEST(TuneMemory, LoadHeadingsAreTheDefaultAxisOfTheLoadTypeRead) {
  MemoryImage m = memory_from_tune(golden_tune());
  m[0][0] = kLoadAirflow;
  const Tune t = tune_from_memory(m, 7500000, {});
  EXPECT_EQ(t.load_headings[0], 50);
  EXPECT_EQ(t.load_headings[1], 246);
  EXPECT_EQ(t.load_headings[15], 3000);
}

TEST(TuneMemory, AccelerationParameter2HasNoPlaceInMemoryAndReadsAs0) {
  const Tune t = tune_from_memory(memory_from_tune(golden_tune()), 7500000, {});
  EXPECT_EQ(t.accel_param, (std::array<std::uint8_t, 6>{3, 120, 0, 5, 90, 17}));
  EXPECT_EQ(t.seq_faktor, 8);
}

TEST(TuneMemory, ACorrectionAbove100CannotBeSentAndTheCellIsNamed) {
  Tune t = golden_tune();
  t.correction[4][8] = 101;
  try {
    memory_from_tune(t);
    FAIL() << "sent";
  } catch (const ProgramError& e) {
    EXPECT_STREQ(e.what(),
                 "Correction map row 5, column 9: 101 cannot be sent (the controller takes -100 "
                 "to 100).");
  }
}

TEST(TuneMemory, ASpeedPointAbove16BitsCannotBeSent) {
  Tune t = golden_tune();
  t.axes.rpm_points[15] = 65536;
  EXPECT_THROW(memory_from_tune(t), ProgramError);
}

TEST(TuneMemory, LoadedAxesArePeriodsOfTheHeadingsAndTheLoadTypesPoints) {
  const Tune t = golden_tune();  // rpmfaktor 7500000, TPS 25 .. 230
  EXPECT_EQ(t.axes.rpm_points[0], 15000);
  EXPECT_EQ(t.axes.rpm_points[15], 938);  // 937.5, ties to even
  EXPECT_EQ(t.axes.load_points[0], 25);
  EXPECT_EQ(t.axes.load_points[15], 230);
}

TEST(TuneMemory, TheEepromImageReadsBackIntoTheSameBlocks) {
  const EepromImage e = eeprom_from_tune(golden_tune());
  EXPECT_EQ(eeprom_from_tune(with_eeprom(Tune{}, e)), e);
}

TEST(TuneMemory, TheEepromImageHoldsTwelveLoadPointsAndTwelveHalfRows) {
  Tune t = golden_tune();
  const EepromImage before = eeprom_from_tune(t);
  t.axes.load_points[12] = 999;
  t.correction[12][0] = 50;
  t.correction[0][8] = 50;
  t.boost_enable = 0;
  EXPECT_EQ(eeprom_from_tune(t), before);
}

// The window's own transfers send exactly the typed images.
class TuneMemoryWindow : public LinkFixture {
 protected:
  TuneMemoryWindow() {
    write_file_bytes(folder.path() / "t.inj", InjGolden().bytes);
    fp.dialogs.expect_file(folder.path() / "t.inj");
    f.settings_file.Laden_Click();
    go_online();
    answer_like_controller();
  }
};

TEST_F(TuneMemoryWindow, WriteDataToUnitSendsTheMemoryImageOfTheWindowsTune) {
  f.transfers.Command9_Click();
  const MemoryImage expected = memory_from_tune(tune_from_window(f.c, f.vars));
  for (int i = 0; i < kMemoryBlocks; ++i)
    for (int k = 0; k < 16; ++k)
      ASSERT_EQ(memory[memory_block_address(i) + k],
                expected[static_cast<std::size_t>(i)][static_cast<std::size_t>(k)])
          << "at 0x" << std::hex << memory_block_address(i) + k;
}

TEST_F(TuneMemoryWindow, WriteToEepromSendsTheEepromImageOfTheWindowsTune) {
  f.transfers.Command4_Click(0);
  const EepromImage expected = eeprom_from_tune(tune_from_window(f.c, f.vars));
  std::map<int, FrameData> sent;
  for (const auto& fr : peer.frames) {
    if (fr.code() != kCmdEepromWrite) continue;
    FrameData d{};
    for (std::size_t k = 0; k < 16; ++k) d[k] = static_cast<std::uint8_t>(fr.bytes[4 + k]);
    sent[fr.address()] = d;
  }
  ASSERT_EQ(sent.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_EQ(sent[kEepromRequestOrder[i]], expected[i])
        << "at 0x" << std::hex << kEepromRequestOrder[i];
}

TEST_F(TuneMemoryWindow, ATuneAppliedToTheWindowIsTheWindowsTune) {
  Tune t = golden_tune();
  t.correction[3][4] = -77;
  t.airflow[15][15] = 4321;
  t.axes.load_points[7] = -5;
  t.accel_param[2] = 33;
  apply_tune(t, f.c, f.panel_controls, f.vars);
  const Tune back = tune_from_window(f.c, f.vars);
  EXPECT_EQ(encode_inj(back), encode_inj(t));
  EXPECT_EQ(back.axes, t.axes);
  EXPECT_EQ(back.accel_param, t.accel_param);
}

TEST_F(TuneMemoryWindow, TheWindowsTuneAppliedToAnotherWindowShowsTheSameGrids) {
  FakePlatform other_platform;
  TempFolder other_folder;
  Program other{other_platform.platform, other_folder.path()};
  other.form1.Form_Load();
  apply_tune(tune_from_window(f.c, f.vars), other.form1.c, other.form1.panel_controls,
             other.form1.vars);
  for (int r = 0; r <= 16; ++r)
    for (int col = 0; col <= 16; ++col) {
      ASSERT_EQ(other.form1.c.MSFlexGrid2.text(r, col), f.c.MSFlexGrid2.text(r, col));
      ASSERT_EQ(other.form1.c.MSFlexGrid3.text(r, col), f.c.MSFlexGrid3.text(r, col));
    }
  EXPECT_EQ(other.form1.panel_controls.Text1.text, f.panel_controls.Text1.text);
  EXPECT_EQ(other.form1.c.Combo1.list_index, f.c.Combo1.list_index);
}

}  // namespace
}  // namespace nerit::testing
