// nerit-cli's subcommands on tune files: what they print, the files they write, and their exit
// statuses.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/command.h"
#include "files/inj_format.h"
#include "files/tune_file.h"
#include "shell/data_files.h"
#include "tests/files/inj_golden.h"
#include "tests/support/fake_platform.h"

namespace nerit::testing {
namespace {

using cli::Args;

class CliTest : public ::testing::Test {
 protected:
  CliTest() {
    a = (folder.path() / "a.inj").string();
    b = (folder.path() / "b.inj").string();
    write_file_bytes(a, InjGolden().bytes);
    write_file_bytes(b, InjGolden().bytes);
  }
  int run(Args args) {
    args.insert(args.begin(), "nerit-cli");
    out.str("");
    err.str("");
    return cli::run_cli(args, out, err);
  }
  TempFolder folder;
  std::string a, b;
  std::ostringstream out, err;
};

TEST_F(CliTest, HelpListsEveryCommand) {
  EXPECT_EQ(run({"--help"}), cli::kOk);
  for (const char* name :
       {"show FILE.inj", "diff A.inj B.inj", "export FILE.inj --csv", "import FILE.inj MAPS.csv",
        "read FILE.inj|--json", "write FILE.inj", "log [FILE.csv]"})
    EXPECT_NE(out.str().find(name), std::string::npos) << name;
}

TEST_F(CliTest, NoCommandIsAUsageError) {
  EXPECT_EQ(run({}), cli::kUsage);
  EXPECT_NE(err.str().find("usage: nerit-cli COMMAND"), std::string::npos);
}

TEST_F(CliTest, AnUnknownCommandIsAUsageError) {
  EXPECT_EQ(run({"flashh"}), cli::kUsage);
  EXPECT_EQ(err.str(), "nerit-cli: unknown command \"flashh\" (nerit-cli --help lists them)\n");
}

TEST_F(CliTest, ShowPrintsSettingsAndBothMaps) {
  EXPECT_EQ(run({"show", a}), cli::kOk);
  const std::string text = out.str();
  EXPECT_NE(text.find("TPS max                   230\n"), std::string::npos);
  EXPECT_NE(text.find("Injektorcorrection\n          500   1000"), std::string::npos);
  EXPECT_NE(text.find("\n   100     25     28"), std::string::npos);  // last correction row
  EXPECT_NE(text.find("Airflow Output\n"), std::string::npos);
}

TEST_F(CliTest, ShowOfAFileThatIsNoTuneIsABadFile) {
  write_file_bytes(a, {1, 2, 3});
  EXPECT_EQ(run({"show", a}), cli::kBadFile);
  EXPECT_EQ(err.str(),
            "nerit-cli show: a.inj is no settings file: The file holds 3 bytes; a settings file "
            "has 880.\n");
}

TEST_F(CliTest, ShowWithoutAFileIsAUsageError) {
  EXPECT_EQ(run({"show"}), cli::kUsage);
  EXPECT_EQ(err.str(), "nerit-cli show: one tune file, please\nusage: nerit-cli show FILE.inj\n");
}

TEST_F(CliTest, DiffOfEqualTunesIsSilentAndZero) {
  EXPECT_EQ(run({"diff", a, b}), cli::kOk);
  EXPECT_EQ(out.str(), "");
}

TEST_F(CliTest, DiffListsAChangedSettingAndCellAndExitsWith1) {
  Tune t = read_tune_file(b);
  t.tps_max = 200;
  t.correction[2][4] = 77;
  write_tune_file(b, t);
  EXPECT_EQ(run({"diff", a, b}), cli::kDiffer);
  EXPECT_EQ(out.str(), "TPS max: 230 -> 200\nCorrection map row 3, column 5: " +
                           std::to_string(InjGolden::correction(2, 4)) + " -> 77\n");
}

TEST_F(CliTest, ExportWritesBothMapsAsCsv) {
  EXPECT_EQ(run({"export", a, "--csv"}), cli::kOk);
  const std::string csv = out.str();
  EXPECT_EQ(csv.rfind("Injektorcorrection\r\nLoad \\ RPM;500;1000;1500;", 0), 0u);
  EXPECT_NE(csv.find("\r\n0;-20;-17;-14;"), std::string::npos);
  EXPECT_NE(csv.find("\r\n\r\nAirflow Output\r\n"), std::string::npos);
}

TEST_F(CliTest, ImportOfAnExportChangesNoByte) {
  const std::string csv = (folder.path() / "maps.csv").string();
  EXPECT_EQ(run({"export", a, "--csv", csv}), cli::kOk);
  EXPECT_EQ(run({"import", a, csv}), cli::kOk);
  EXPECT_EQ(read_file_bytes(a).value(), InjGolden().bytes);
}

TEST_F(CliTest, ImportTakesACellChangedInASpreadsheet) {
  EXPECT_EQ(run({"export", a, "--csv"}), cli::kOk);
  std::string csv = out.str();
  // The first correction cell changed.
  csv.replace(csv.find("\r\n0;-20;"), 8, "\r\n0;33;");
  write_file_bytes(folder.path() / "maps.csv", std::vector<std::uint8_t>(csv.begin(), csv.end()));
  EXPECT_EQ(run({"import", a, (folder.path() / "maps.csv").string()}), cli::kOk);
  EXPECT_EQ(read_tune_file(a).correction[0][0], 33);
  EXPECT_EQ(read_file_bytes(a).value()[112], 133);
}

TEST_F(CliTest, ImportRefusesACellTheFileCannotHoldAndKeepsTheFile) {
  EXPECT_EQ(run({"export", a, "--csv"}), cli::kOk);
  std::string csv = out.str();
  csv.replace(csv.find("\r\n0;-20;"), 8, "\r\n0;156;");
  write_file_bytes(folder.path() / "maps.csv", std::vector<std::uint8_t>(csv.begin(), csv.end()));
  EXPECT_EQ(run({"import", a, (folder.path() / "maps.csv").string()}), cli::kBadFile);
  EXPECT_EQ(err.str(), "nerit-cli import: line 3, field 2: 156 lies outside -100 to 155.\n");
  EXPECT_EQ(read_file_bytes(a).value(), InjGolden().bytes);
}

TEST_F(CliTest, ImportReadsCommaSeparatedQuotedFields) {
  EXPECT_EQ(run({"export", a, "--csv"}), cli::kOk);
  std::string csv = out.str();
  std::string commas;
  for (char ch : csv) commas += ch == ';' ? std::string("\",\"") : std::string(1, ch);
  write_file_bytes(folder.path() / "maps.csv",
                   std::vector<std::uint8_t>(commas.begin(), commas.end()));
  EXPECT_EQ(run({"import", a, (folder.path() / "maps.csv").string()}), cli::kOk);
  EXPECT_EQ(read_file_bytes(a).value(), InjGolden().bytes);
}

TEST_F(CliTest, ReadTakesAFileOrJsonNotBoth) {
  EXPECT_EQ(run({"read", a, "--json", "--port", "/dev/null"}), cli::kUsage);
  EXPECT_EQ(err.str().substr(0, err.str().find('\n')),
            "nerit-cli read: --json writes to standard output: no file, please");
}

TEST_F(CliTest, AnUnknownOptionIsAUsageError) {
  EXPECT_EQ(run({"write", a, "--port", "/dev/null", "--eprom"}), cli::kUsage);
  EXPECT_EQ(err.str().substr(0, err.str().find('\n')), "nerit-cli write: unknown option --eprom");
}

TEST_F(CliTest, ATimeOutOf0IsAUsageError) {
  EXPECT_EQ(run({"log", "--port", "/dev/null", "--timeout", "0"}), cli::kUsage);
  EXPECT_EQ(err.str().substr(0, err.str().find('\n')),
            "nerit-cli log: --timeout takes a whole number of at least 1, not \"0\"");
}

TEST_F(CliTest, WritingAMapTuneWithoutTheSensorTableIsRefusedBeforeThePortOpens) {
  Tune t = read_tune_file(a);
  t.load_type = 1;
  write_tune_file(a, t);
  const std::string data = (folder.path() / "data").string();
  EXPECT_EQ(run({"write", a, "--port", "/dev/nerit-none", "--data-dir", data}), cli::kBadFile);
  EXPECT_NE(err.str().find("no PressureSensor.dat"), std::string::npos) << err.str();
}

}  // namespace
}  // namespace nerit::testing
