#include "files/tune_text.h"

#include <cstdio>
#include <sstream>

#include "files/tune_compare.h"
#include "shell/errors.h"

namespace nerit {

namespace {

constexpr const char* kCorrectionName = "Injektorcorrection";
constexpr const char* kAirflowName = "Airflow Output";

std::string padded(const std::string& text, std::size_t width) {
  return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

template <class Cells>
void map_table(std::ostringstream& out, const char* name, const Tune& t, const Cells& cells) {
  out << name << "\n" << padded("", 6);
  for (auto h : t.rpm_headings) out << padded(std::to_string(h), 7);
  out << "\n";
  for (std::size_t r = 0; r < kTuneMapSize; ++r) {
    out << padded(std::to_string(t.load_headings[r]), 6);
    for (auto v : cells[r]) out << padded(std::to_string(v), 7);
    out << "\n";
  }
}

template <class Cells>
void map_csv(std::ostringstream& out, const char* name, const Tune& t, const Cells& cells) {
  out << name << "\r\nLoad \\ RPM";
  for (auto h : t.rpm_headings) out << ';' << h;
  out << "\r\n";
  for (std::size_t r = 0; r < kTuneMapSize; ++r) {
    out << t.load_headings[r];
    for (auto v : cells[r]) out << ';' << v;
    out << "\r\n";
  }
}

// The CSV's lines without blank ones, each cut into trimmed fields without quotes.
std::vector<std::pair<int, std::vector<std::string>>> csv_rows(const std::string& csv) {
  std::vector<std::pair<int, std::vector<std::string>>> rows;
  std::istringstream in(csv);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const char sep = line.find(';') != std::string::npos ? ';' : ',';
    std::vector<std::string> fields;
    std::string field;
    std::istringstream cells(line);
    while (std::getline(cells, field, sep)) {
      const auto first = field.find_first_not_of(" \t\"");
      const auto last = field.find_last_not_of(" \t\"");
      fields.push_back(first == std::string::npos ? "" : field.substr(first, last - first + 1));
    }
    bool blank = true;
    for (const auto& f : fields) blank = blank && f.empty();
    if (!blank) rows.emplace_back(number, std::move(fields));
  }
  return rows;
}

std::int16_t csv_number(const std::string& text, int line, std::size_t field, int low, int high) {
  const std::string where = "line " + std::to_string(line) + ", field " + std::to_string(field + 1);
  if (text.empty()) throw ProgramError(where + " is empty.");
  std::size_t used = 0;
  long value = 0;
  try {
    value = std::stol(text, &used);
  } catch (const std::exception&) {
    used = 0;
  }
  if (used != text.size()) throw ProgramError(where + ": \"" + text + "\" is no whole number.");
  if (value < low || value > high)
    throw ProgramError(where + ": " + text + " lies outside " + std::to_string(low) + " to " +
                       std::to_string(high) + ".");
  return static_cast<std::int16_t>(value);
}

template <class Cells>
std::size_t read_map(const std::vector<std::pair<int, std::vector<std::string>>>& rows,
                     std::size_t at, const char* name, Tune& t, Cells& cells, int low, int high) {
  const int last_line = rows.empty() ? 0 : rows.back().first;
  if (at >= rows.size() || rows[at].second.at(0) != name)
    throw ProgramError("The map \"" + std::string(name) + "\" is missing (after line " +
                       std::to_string(at < rows.size() ? rows[at].first : last_line) + ").");
  if (at + 2 + kTuneMapSize > rows.size())
    throw ProgramError("The map \"" + std::string(name) + "\" has fewer than 16 rows.");
  const auto& head = rows[at + 1];
  if (head.second.size() < kTuneMapSize + 1)
    throw ProgramError("Line " + std::to_string(head.first) + " holds fewer than 16 RPM headings.");
  for (std::size_t c = 0; c < kTuneMapSize; ++c)
    t.rpm_headings[c] = csv_number(head.second[c + 1], head.first, c + 1, 1, 32767);
  for (std::size_t r = 0; r < kTuneMapSize; ++r) {
    const auto& row = rows[at + 2 + r];
    if (row.second.size() < kTuneMapSize + 1)
      throw ProgramError("Line " + std::to_string(row.first) + " holds fewer than 16 cells.");
    t.load_headings[r] = csv_number(row.second[0], row.first, 0, -32768, 32767);
    for (std::size_t c = 0; c < kTuneMapSize; ++c)
      cells[r][c] = csv_number(row.second[c + 1], row.first, c + 1, low, high);
  }
  return at + 2 + kTuneMapSize;
}

}  // namespace

std::string tune_text(const Tune& t) {
  std::ostringstream out;
  const auto line = [&out](const char* name, long value) {
    char text[64];
    std::snprintf(text, sizeof text, "%-26s%ld\n", name, value);
    out << text;
  };
  line("rpmfaktor", t.rpmfaktor);
  line("Load type", t.load_type);
  line("Pressure sensor", t.drucksensor);
  line("TPS min", t.tps_min);
  line("TPS max", t.tps_max);
  line("Injoffset in / us", t.injoffset_in);
  line("Injoffset out / us", t.injoffset_out);
  line("Injsize alt", t.injalt);
  line("Injsize neu", t.injneu);
  line("injsizecorr", t.injsizecorr);
  line("Airflow type", t.airflowtype);
  line("Airflow clamp", t.aoutmax);
  line("Boostcontroll", t.boost_enable);
  line("Boost start", t.boost_start);
  line("Boost set", t.boost_set);
  line("Zylinder", t.zylinder);
  line("Injchannels", t.injchannels);
  line("Map flags", t.map_flags);
  for (std::size_t i = 0; i < t.accel_param.size(); ++i) {
    const std::string name = "Acceleration parameter " + std::to_string(i);
    line(name.c_str(), t.accel_param[i]);
  }
  line("Sequential divisor", t.seq_faktor);
  out << "\n";
  map_table(out, kCorrectionName, t, t.correction);
  out << "\n";
  map_table(out, kAirflowName, t, t.airflow);
  return out.str();
}

std::string maps_csv(const Tune& t) {
  std::ostringstream out;
  map_csv(out, kCorrectionName, t, t.correction);
  out << "\r\n";
  map_csv(out, kAirflowName, t, t.airflow);
  return out.str();
}

Tune with_maps_csv(Tune t, const std::string& csv) {
  const auto rows = csv_rows(csv);
  const std::size_t next = read_map(rows, 0, kCorrectionName, t, t.correction, -100, 155);
  const auto rpm = t.rpm_headings;
  const auto load = t.load_headings;
  read_map(rows, next, kAirflowName, t, t.airflow, -32768, 32767);
  if (t.rpm_headings != rpm || t.load_headings != load)
    throw ProgramError(
        "The two maps have different headings; both maps share one RPM and one "
        "load axis.");
  return t;
}

std::vector<std::string> tune_differences(const Tune& a, const Tune& b) {
  std::vector<std::string> lines;
  const TuneComparison diff = compare_tunes(a, b);
  for (const auto& d : diff.settings) lines.push_back(d.name + ": " + d.ours + " -> " + d.theirs);
  const auto cells = [&](const char* name, const TuneMap<std::int16_t>& x,
                         const TuneMap<std::int16_t>& y, const MapComparison& m) {
    for (std::size_t r = 0; r < kTuneMapSize; ++r)
      for (std::size_t c = 0; c < kTuneMapSize; ++c)
        if (m.differs[r][c])
          lines.push_back(std::string(name) + " row " + std::to_string(r + 1) + ", column " +
                          std::to_string(c + 1) + ": " + std::to_string(x[r][c]) + " -> " +
                          std::to_string(y[r][c]));
  };
  cells("Correction map", a.correction, b.correction, diff.correction);
  cells("Airflow map", a.airflow, b.airflow, diff.airflow);
  return lines;
}

}  // namespace nerit
