#pragma once
// The fuzz targets' property check: stays on in release builds, unlike assert().
#include <cstdio>
#include <cstdlib>
#include <source_location>

namespace nerit::fuzz {

inline void check(bool ok, const char* what,
                  const std::source_location where = std::source_location::current()) {
  if (ok) return;
  std::fprintf(stderr, "%s:%u: check failed: %s\n", where.file_name(),
               static_cast<unsigned>(where.line()), what);
  std::abort();
}

}  // namespace nerit::fuzz
