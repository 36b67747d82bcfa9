#pragma once
// The base-settings window of a loaded program on the fake platform, with a scripted controller
// on the wire.
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "setup/form3.h"
#include "shell/fault_boundary.h"
#include "tests/link/link_fixture.h"

namespace nerit::testing {

class Form3Fixture : public LinkFixture {
 protected:
  // As the menu opens it: the host shows the window, then its load runs.
  void open() {
    fp.windows.show(FormId::Form3);
    form3.Form_Load();
  }
  // A handler as the window runs it: a failure becomes the "Error" box.
  void click(const std::function<void()>& handler) { run_handler(fp.dialogs, handler); }
  // Everything the controller's port received, as hex.
  std::string wire() const {
    const auto it = fp.comm.written.find(1);
    return it == fp.comm.written.end() ? "" : hex_bytes(it->second);
  }
  std::vector<std::uint8_t> file_bytes(const std::string& name) const {
    std::ifstream in(folder.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  bool file_exists(const std::string& name) const {
    return std::filesystem::exists(folder.path() / name);
  }
  // Types the three sensor boxes as the user would: each change runs Text1_Change.
  void type_sensor(const std::string& faktor, const std::string& offset, const std::string& max_p) {
    const std::string texts[] = {faktor, offset, max_p};
    for (int i = 0; i < 3; ++i) {
      c3.Text1[static_cast<std::size_t>(i)].text = texts[i];
      form3.pressure.Text1_Change(i);
    }
  }
  void choose_sensor(int index) {
    c3.Combo1.select(index);
    form3.pressure.Combo1_Click();
  }

  Form3& form3 = program.form3;
  Form3Controls& c3 = program.form3.c;
  ProgramState& vars = program.form1.vars;
};

// A command frame as hex: "55", the code, "00 00", the data bytes given, zeros, "00 0D".
inline std::string frame_hex(int code, const std::vector<int>& data) {
  char b[16];
  std::snprintf(b, sizeof b, "55 %02X 00 00", code);
  std::string s = b;
  for (std::size_t i = 0; i < 16; ++i) {
    std::snprintf(b, sizeof b, " %02X", i < data.size() ? data[i] : 0);
    s += b;
  }
  return s + " 00 0D";
}

}  // namespace nerit::testing
