#pragma once
// What the boot loader takes: 1016 blocks of 128 bytes, the image followed by erased flash
// (0xFF). Pure.
#include <cstdint>
#include <string>
#include <vector>

namespace nerit {

inline constexpr long kBlockBytes = 128;
inline constexpr long kBlocks = 1016;
inline constexpr long kTransferBytes = kBlockBytes * kBlocks;  // 130048
// The largest file "Load File" takes: 36 bytes above what is sent, whose tail is never sent.
inline constexpr long kMaxImageBytes = 130084;

inline constexpr std::uint8_t kLoaderReady = 0x05;
inline constexpr std::uint8_t kBlockReceived = 0x06;
inline constexpr std::uint8_t kProgrammingDone = 0x07;

// The running firmware's request to enter its boot loader: "U", 0x04, nineteen 0x00, CR.
std::string boot_loader_request();

// Byte `number` (1-based) of the transfer: the image's byte while the image lasts, else 0xFF.
std::uint8_t transfer_byte(const std::vector<std::uint8_t>& image, long number);

// The percentage once `sent` bytes have gone: the whole part of 100 / 130048 x sent, then "%".
std::string progress_text(long sent);

// "m:ss" (or "h:mm:ss") of a count of milliseconds.
std::string minutes_text(long long ms);

// "0:12 elapsed, 1:05 left" once `sent` of the bytes have gone in `elapsed_ms`.
std::string transfer_time_text(long sent, long long elapsed_ms);

}  // namespace nerit
