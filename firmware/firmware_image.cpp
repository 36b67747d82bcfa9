#include "firmware/firmware_image.h"

#include <cstdio>

namespace nerit {

std::string boot_loader_request() {
  std::string frame{'\x55', '\x04'};
  frame.append(19, '\0');
  frame += '\x0D';
  return frame;
}

std::uint8_t transfer_byte(const std::vector<std::uint8_t>& image, long number) {
  if (number >= 1 && number <= static_cast<long>(image.size()))
    return image[static_cast<std::size_t>(number - 1)];
  return 0xFF;
}

std::string progress_text(long sent) {
  // In whole numbers, so that the last byte shows exactly 100.
  return std::to_string(100 * sent / kTransferBytes) + "%";
}

std::string minutes_text(long long ms) {
  const long long s = ms / 1000;
  char text[32];
  if (s >= 3600)
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", s / 3600, s / 60 % 60, s % 60);
  else
    std::snprintf(text, sizeof text, "%lld:%02lld", s / 60, s % 60);
  return text;
}

std::string transfer_time_text(long sent, long long elapsed_ms) {
  std::string text = minutes_text(elapsed_ms) + " elapsed";
  if (sent > 0 && sent < kTransferBytes)
    text += ", " + minutes_text(elapsed_ms * (kTransferBytes - sent) / sent) + " left";
  return text;
}

}  // namespace nerit
