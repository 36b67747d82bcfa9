#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "cli/cli_options.h"
#include "cli/command.h"
#include "cli/controller_line.h"
#include "cli/controller_tune.h"
#include "firmware/firmware_image.h"
#include "shell/data_files.h"

namespace nerit::cli {

namespace {

constexpr long kProgressEveryBlocks = 16;

// The image as the boot loader takes it; nothing is sent for a file that cannot be used.
std::vector<std::uint8_t> image_of(const std::string& file) {
  auto bytes = read_file_bytes(file);
  if (!bytes) throw CliFailure(kBadFile, "there is no file " + file);
  if (bytes->empty()) throw CliFailure(kBadFile, file + " is empty; nothing was sent");
  if (static_cast<long>(bytes->size()) > kMaxImageBytes)
    throw CliFailure(kBadFile, file + " has " + std::to_string(bytes->size()) +
                                   " bytes, more than the " + std::to_string(kMaxImageBytes) +
                                   " a firmware image can have; nothing was sent");
  return std::move(*bytes);
}

// The transfer to the boot loader, with one progress line on `err` rewritten in place.
class Transfer {
 public:
  Transfer(ControllerLine& line, std::ostream& err) : line_(line), err_(err) {}

  // The running firmware's answer to the start request: the loader's 0x05, or a byte of a
  // status frame still on its way. Either one ends the wait, as in the firmware window.
  void enter_boot_loader() {
    line_.send(boot_loader_request());
    if (!line_.line().next_byte(line_.timeout_ms()))
      throw CliFailure(kNoController, "no controller answered the boot-loader request on " +
                                          line_.port() + " within " + ms_text());
  }

  void send_image(const std::vector<std::uint8_t>& image) {
    clock_.start();
    try {
      for (long block = 1; block <= kBlocks; ++block) {
        std::string bytes;
        for (long n = (block - 1) * kBlockBytes + 1; n <= block * kBlockBytes; ++n)
          bytes += static_cast<char>(transfer_byte(image, n));
        line_.send(bytes);
        // A block without its 0x06 is not sent again: the loader counts bytes, so a second copy
        // would be programmed as the next block and shift the rest of the image.
        if (!wait_for_ack(block))
          throw CliFailure(kTimeOut, "the boot loader did not acknowledge block " +
                                         std::to_string(block) + " of " + std::to_string(kBlocks) +
                                         " within " + ms_text());
        if (block % kProgressEveryBlocks == 0 || block == kBlocks) show_progress(block);
      }
      if (!done_ && !wait_for_done())
        throw CliFailure(
            kTimeOut, "the boot loader did not report the end of programming within " + ms_text());
    } catch (const CliFailure&) {
      end_progress();
      throw;
    }
    end_progress();
  }

 private:
  // True once 0x06 came. Other bytes go by, as the window reads them; 0x07 counts for the
  // last block only, when its 0x06 was lost on the way.
  bool wait_for_ack(long block) {
    const QDeadlineTimer deadline(line_.timeout_ms());
    while (auto byte = line_.line().next_byte(left_ms(deadline))) {
      if (*byte == kBlockReceived) return true;
      if (*byte != kProgrammingDone) continue;
      if (block < kBlocks)
        throw CliFailure(kRefused, "the boot loader reported the end of programming with block " +
                                       std::to_string(block) + " of " + std::to_string(kBlocks) +
                                       " on its way");
      done_ = true;
      return true;
    }
    return false;
  }

  bool wait_for_done() {
    const QDeadlineTimer deadline(line_.timeout_ms());
    while (auto byte = line_.line().next_byte(left_ms(deadline))) {
      if (*byte != kProgrammingDone) continue;
      done_ = true;
      return true;
    }
    return false;
  }

  // Stray bytes do not extend a wait: each one ends timeout_ms after it began.
  static int left_ms(const QDeadlineTimer& deadline) {
    return static_cast<int>(std::max<qint64>(0, deadline.remainingTime()));
  }

  void show_progress(long block) {
    const long sent = block * kBlockBytes;
    std::string text = "block " + std::to_string(block) + "/" + std::to_string(kBlocks) + "  " +
                       progress_text(sent) + "  " + transfer_time_text(sent, clock_.elapsed());
    const std::size_t length = text.size();
    if (text.size() < shown_) text.resize(shown_, ' ');  // covers the longer line before
    err_ << "\r" << text << std::flush;
    shown_ = length;
  }

  void end_progress() {
    if (shown_ > 0) err_ << "\n";
    shown_ = 0;
  }

  std::string ms_text() const { return std::to_string(line_.timeout_ms()) + " ms"; }

  ControllerLine& line_;
  std::ostream& err_;
  QElapsedTimer clock_;
  std::size_t shown_ = 0;  // length of the progress line on screen, 0 when none is
  bool done_ = false;      // 0x07 came
};

}  // namespace

int run_flash(const Args& args, std::ostream& out, std::ostream& err) {
  const ParsedArgs a = parse_args(args, kLineOptions, {"--recovery", "--no-backup"});
  if (a.positional.size() != 1) throw UsageError("one IMAGE.bin to send, please");
  const std::string port = port_of(a);
  const int timeout_ms = a.number("--timeout", kDefaultTimeoutMs, 1);
  const std::string file = a.positional[0];
  const std::vector<std::uint8_t> image = image_of(file);

  ControllerLine line(port, timeout_ms, err);
  Transfer transfer(line, err);
  // --recovery: the loader already waits (after a failed update), silent until bytes come.
  if (!a.has("--recovery")) {
    if (!a.has("--no-backup")) {
      err << "connected: " << line.connect() << "\n";
      const std::filesystem::path data = data_folder_of(a);
      keep_restore_point(line, load_axis_inputs(data), data, "nerit-cli flash", err);
    }
    transfer.enter_boot_loader();
  }
  transfer.send_image(image);
  out << "flashed " << file << " (" << image.size() << " bytes)\n";
  return kOk;
}

}  // namespace nerit::cli
