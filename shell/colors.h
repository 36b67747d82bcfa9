#pragma once
// Colours as the window models store them: BGR integers (0x00BBGGRR),
// plus the system colour for a button's face.
#include <cstdint>

namespace nerit {

using Color = std::uint32_t;

inline constexpr Color kGreen = 65280;   // 0x00FF00
inline constexpr Color kRed = 255;       // 0x0000FF
inline constexpr Color kYellow = 65535;  // 0x00FFFF
inline constexpr Color kWhite = 0xFFFFFF;
inline constexpr Color kBlack = 0x000000;
inline constexpr Color kButtonFace = 0x8000000F;        // system colour: button face
inline constexpr Color kWindowBackground = 0x80000005;  // system colour: window
inline constexpr Color kButtonText = 0x80000012;        // system colour: button text
inline constexpr Color kWindowText = 0x80000008;        // system colour: window text

inline constexpr bool is_system_color(Color c) {
  return (c & 0x80000000u) != 0;
}
inline constexpr int red_of(Color c) {
  return static_cast<int>(c & 0xFF);
}
inline constexpr int green_of(Color c) {
  return static_cast<int>((c >> 8) & 0xFF);
}
inline constexpr int blue_of(Color c) {
  return static_cast<int>((c >> 16) & 0xFF);
}

}  // namespace nerit
