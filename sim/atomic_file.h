#pragma once
// Replacing a file as a whole: the bytes go to a temporary file beside it, which is then
// renamed over it, so a reader sees the old content or the new one and never a part.
#include <string>
#include <string_view>

namespace nerit::sim {

// False with the reason in `error` when the file could not be replaced; the old one stays.
bool replace_file(const std::string& path, std::string_view bytes, std::string& error);

}  // namespace nerit::sim
