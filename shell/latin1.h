#pragma once
// Text from the controller is one byte a character (ISO 8859-1); the program keeps UTF-8.
#include <string>
#include <string_view>

namespace nerit {

// Every byte becomes the character of the same code: 0x00-0x7F as themselves, 0x80-0xFF as
// two UTF-8 bytes. Zero bytes stay.
std::string latin1_to_utf8(std::string_view bytes);

}  // namespace nerit
