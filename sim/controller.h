#pragma once
// The virtual controller. It lives on a millisecond time axis given by its caller: receive()
// hands it what the program wrote at a time, poll() returns what has reached the program by a
// time, and next_due() says when something will happen next. Callers keep their times
// non-decreasing; the same object runs on a test's virtual clock or on a real one.
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "sim/boot_loader.h"
#include "sim/controller_memory.h"
#include "sim/frame_reader.h"
#include "sim/frames.h"
#include "sim/options.h"
#include "sim/transmitter.h"

namespace nerit::sim {

enum class StreamMode { kOff = 0, kStatus = 1, kDebug = 2 };

struct ReceivedFrame {
  double at_ms = 0;
  CommandFrame frame;
};

class Controller {
 public:
  explicit Controller(Options options = {});

  void receive(double now_ms, std::string_view bytes);
  std::vector<Emission> poll(double now_ms);
  // When the next emission arrives or the controller next has something to do, or -1.
  double next_due() const;

  const MemoryWindow& working_memory() const { return memory_.ram; }
  const MemoryWindow& eeprom() const { return memory_.eeprom; }
  const ControllerMemory& permanent() const { return permanent_; }
  // Direct access, as with a debugger on the controller.
  ControllerMemory& memory() { return memory_; }

  const std::vector<ReceivedFrame>& frames_received() const { return received_; }
  std::size_t bytes_discarded() const { return reader_.discarded(); }
  StreamMode stream_mode() const { return mode_; }
  std::uint8_t manual_adjust() const { return manual_adjust_; }
  int replies() const { return replies_; }  // produced so far, sent or not
  bool vanished() const { return vanished_; }
  const BootLoader& boot_loader() const { return boot_; }
  // The last problem with the state file, empty when there was none.
  const std::string& state_error() const { return state_error_; }
  // The last problem writing Options::flash_image_file, empty when there was none.
  const std::string& image_file_error() const { return image_file_error_; }

 private:
  enum class Kind { kReplyFrame, kReplyByte, kStatusFrame, kDebugLine };
  struct Outgoing {
    std::string bytes;
    Kind kind = Kind::kReplyFrame;
    int reply_number = 0;
    bool vanish_after = false;
  };

  void advance(double now_ms);
  void place(double ready_ms, const Outgoing& out);
  double interval_ms() const;
  void tick_stream(double t_ms);
  void vanish(double t_ms);

  void take_byte(double now_ms, std::uint8_t byte);
  void handle(double now_ms, const CommandFrame& frame);
  void set_stream(double now_ms, std::uint8_t mode);
  void make_permanent();
  void keep_image();
  void reply(double now_ms, std::string bytes, Kind kind = Kind::kReplyFrame, double extra_ms = 0);

  Options options_;
  ControllerMemory memory_;
  ControllerMemory permanent_;
  FrameReader reader_;
  BootLoader boot_;
  Transmitter line_;
  std::multimap<double, Outgoing> outbox_;  // by the time each is ready to go

  StreamMode mode_ = StreamMode::kOff;
  double next_tick_ms_ = -1;
  std::uint8_t manual_adjust_ = 128;
  int replies_ = 0;
  bool silent_ = false;
  double vanish_at_ms_ = -1;
  bool vanished_ = false;
  double now_ms_ = 0;
  std::vector<ReceivedFrame> received_;
  std::string state_error_;
  std::string image_file_error_;
};

}  // namespace nerit::sim
