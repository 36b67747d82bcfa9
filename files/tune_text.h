#pragma once
// A tune as text for a terminal and as CSV for a spreadsheet. Pure.
#include <string>
#include <vector>

#include "files/tune.h"

namespace nerit {

// The settings one a line ("Injoffset in      1000"), then both maps as aligned tables with the
// RPM headings on top and the load headings on the left.
std::string tune_text(const Tune& tune);

// Both maps as CSV, fields separated by ";": for each map a line with its name, a line
// "Load \ RPM" and the 16 RPM headings, then 16 lines of a load heading and its 16 cells; a blank
// line between the maps.
std::string maps_csv(const Tune& tune);

// The tune with both maps and their headings taken from CSV written by maps_csv (a spreadsheet
// may have added quotes, blanks, a "," separator or CR LF line ends). ProgramError naming the
// line and the field when something is missing, no number, or does not fit the tune.
Tune with_maps_csv(Tune tune, const std::string& csv);

// Every setting, heading and cell that differs, one a line: "TPS max: 230 -> 200",
// "Correction map row 3, column 5: 12 -> 20".
std::vector<std::string> tune_differences(const Tune& from, const Tune& to);

}  // namespace nerit
