#include "shell/latin1.h"

namespace nerit {

std::string latin1_to_utf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() * 2);
  for (const char ch : bytes) {
    const auto code = static_cast<unsigned char>(ch);
    if (code < 0x80) {
      out += ch;
    } else {
      out += static_cast<char>(0xC0 | (code >> 6));
      out += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return out;
}

}  // namespace nerit
