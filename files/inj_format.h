#pragma once
// The 880-byte settings file (.inj): every field at its fixed offset, integers little-endian,
// 16-bit fields signed, correction cells stored as value + 100. Pure: bytes in, bytes out.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "files/tune.h"
#include "shell/errors.h"

namespace nerit {

inline constexpr std::size_t kInjSize = 880;

namespace inj_offset {
inline constexpr std::size_t kRpmfaktor = 0;
inline constexpr std::size_t kLoadType = 16;
inline constexpr std::size_t kSettingsEnd = 44;  // settings bytes 16..43
inline constexpr std::size_t kRpmHeadings = 48;
inline constexpr std::size_t kLoadHeadings = 80;
inline constexpr std::size_t kCorrection = 112;
inline constexpr std::size_t kAirflow = 368;
}  // namespace inj_offset

// A file that cannot be a tune; what() names the problem for the user.
struct InjFormatError : ProgramError {
  using ProgramError::ProgramError;
};

// The file after saving `tune` over `existing` (empty for a new file). Bytes 4-15 and 44-47
// and everything past byte 879 stay as they were; a shorter file is filled with zeros.
// InjFormatError when a correction cell lies outside -100..155.
std::vector<std::uint8_t> encode_inj(const Tune& tune, std::vector<std::uint8_t> existing = {});

// The tune a file holds. InjFormatError when the file is shorter than 880 bytes, a column
// heading is 0 (it divides rpmfaktor) or the load type is above 3. Bytes past 879 are ignored.
Tune decode_inj(const std::vector<std::uint8_t>& file);

}  // namespace nerit
