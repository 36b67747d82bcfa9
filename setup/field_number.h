#pragma once
// The numbers typed into the base-settings window's boxes. Stricter than val(): a box that
// holds anything but a number ends the action with a message instead of reading as 0.
#include <optional>
#include <string>
#include <string_view>

namespace nerit {

// An optional "-", digits and at most one decimal mark ("," as typed, or "."), at least one
// digit, blanks around allowed. Nothing for any other text, an empty one included.
std::optional<double> field_number(std::string_view text);

// field_number, or ProgramError naming the box: `Faktor: "0,0a" is not a number.`
double field_number_or_throw(std::string_view text, const std::string& box_name);

}  // namespace nerit
