#include "sim/controller.h"

#include <algorithm>
#include <utility>

#include "sim/atomic_file.h"
#include "sim/default_tune.h"
#include "sim/eeprom_copy.h"
#include "sim/engine_model.h"
#include "sim/settings_commands.h"
#include "sim/state_file.h"
#include "sim/status_frame.h"

namespace nerit::sim {

namespace {

// The earliest of the non-negative times, or -1.
double earliest(std::initializer_list<double> times) {
  double best = -1;
  for (double t : times) {
    if (t >= 0 && (best < 0 || t < best)) best = t;
  }
  return best;
}

}  // namespace

Controller::Controller(Options options)
    : options_(std::move(options)),
      memory_(options_.demo_tune ? demo_tune() : default_tune()),
      reader_(options_.frame_timeout_ms),
      line_(options_.paced, options_.faults.chunk_size) {
  if (!options_.state_file.empty()) {
    if (auto kept = load_state_file(options_.state_file, state_error_)) memory_ = *kept;
  }
  permanent_ = memory_;
  if (options_.faults.vanish_at_ms) vanish_at_ms_ = *options_.faults.vanish_at_ms;
  if (options_.start_in_boot_loader) boot_.start();
}

void Controller::receive(double now_ms, std::string_view bytes) {
  now_ms = std::max(now_ms, now_ms_);
  advance(now_ms);
  if (vanished_) return;
  for (char c : bytes) take_byte(now_ms, static_cast<std::uint8_t>(c));
  advance(now_ms);
}

std::vector<Emission> Controller::poll(double now_ms) {
  now_ms = std::max(now_ms, now_ms_);
  advance(now_ms);
  return line_.take_due(now_ms);
}

double Controller::next_due() const {
  if (vanished_) return line_.next_due();
  const double ready = outbox_.empty() ? -1 : outbox_.begin()->first;
  return earliest({line_.next_due(), ready, next_tick_ms_, reader_.expiry(), vanish_at_ms_});
}

// Runs everything that happens up to now_ms in the order it happens.
void Controller::advance(double now_ms) {
  while (!vanished_) {
    const double ready = outbox_.empty() ? -1 : outbox_.begin()->first;
    const double expiry = reader_.expiry();
    const double t = earliest({vanish_at_ms_, ready, expiry, next_tick_ms_});
    if (t < 0 || t > now_ms) break;
    if (t == vanish_at_ms_) {
      vanish(t);
    } else if (t == ready) {
      const Outgoing out = outbox_.begin()->second;
      outbox_.erase(outbox_.begin());
      place(t, out);
    } else if (t == expiry) {
      for (const CommandFrame& f : reader_.expire(t)) handle(t, f);
    } else {
      tick_stream(t);
    }
  }
  now_ms_ = now_ms;
}

void Controller::place(double ready_ms, const Outgoing& out) {
  const Faults& faults = options_.faults;
  if (faults.silent_from_ms && ready_ms >= *faults.silent_from_ms) return;
  double end = ready_ms;
  switch (out.kind) {
    case Kind::kReplyFrame: {
      const bool garbage =
          !faults.garbage.empty() &&
          (faults.garbage_replies.empty() || faults.garbage_replies.count(out.reply_number) > 0);
      end = line_.send(ready_ms, garbage ? faults.garbage + out.bytes : out.bytes, true);
      break;
    }
    case Kind::kStatusFrame:
      end = line_.send(ready_ms, out.bytes, true);
      break;
    case Kind::kReplyByte:
      end = line_.send(ready_ms, out.bytes, false);
      break;
    case Kind::kDebugLine: {
      // The program ends a debug line only on a CR that arrives by itself.
      const double text_end = line_.send(ready_ms, out.bytes, false);
      end = line_.send(text_end + options_.debug_cr_gap_ms, "\r", false);
      break;
    }
  }
  if (out.vanish_after) vanish_at_ms_ = earliest({vanish_at_ms_, end});
}

double Controller::interval_ms() const {
  // At least a millisecond, so a zero interval cannot stall the time axis.
  return std::max(
      1.0, mode_ == StreamMode::kDebug ? options_.debug_interval_ms : options_.stream_interval_ms);
}

void Controller::tick_stream(double t_ms) {
  next_tick_ms_ = t_ms + interval_ms();
  if (silent_) return;
  const EngineState engine = engine_state_at(options_.hold_engine_at_ms.value_or(t_ms));
  const Status status = compute_status(engine, memory_.ram, manual_adjust_);
  if (mode_ == StreamMode::kDebug) {
    outbox_.emplace(t_ms, Outgoing{debug_line(engine, status, memory_.ram), Kind::kDebugLine});
  } else {
    outbox_.emplace(t_ms, Outgoing{status_frame(status), Kind::kStatusFrame});
  }
}

void Controller::vanish(double t_ms) {
  vanished_ = true;
  line_.cut_after(t_ms);
  outbox_.clear();
  mode_ = StreamMode::kOff;
  next_tick_ms_ = -1;
  reader_.reset();
}

void Controller::take_byte(double now_ms, std::uint8_t byte) {
  if (!boot_.active()) {
    for (const CommandFrame& f : reader_.push(now_ms, byte)) handle(now_ms, f);
    return;
  }
  const std::string ack(1, static_cast<char>(BootLoader::kBlockReceived));
  switch (boot_.push(byte)) {
    case BootLoader::Step::kNone:
      break;
    case BootLoader::Step::kBlockDone:
      reply(now_ms, ack, Kind::kReplyByte, options_.block_programming_ms);
      break;
    case BootLoader::Step::kImageDone:
      reply(now_ms, ack, Kind::kReplyByte, options_.block_programming_ms);
      reply(now_ms, std::string(1, static_cast<char>(BootLoader::kFinished)), Kind::kReplyByte,
            options_.block_programming_ms + BootLoader::kProgrammingMs);
      keep_image();
      // The new firmware starts from the permanent state, like after power-up.
      memory_ = permanent_;
      manual_adjust_ = 128;
      break;
  }
}

void Controller::keep_image() {
  if (options_.flash_image_file.empty()) return;
  const std::vector<std::uint8_t>& image = boot_.flashed_image();
  const std::string_view bytes(reinterpret_cast<const char*>(image.data()), image.size());
  replace_file(options_.flash_image_file, bytes, image_file_error_);
}

void Controller::handle(double now_ms, const CommandFrame& f) {
  received_.push_back({now_ms, f});
  const std::uint16_t address = f.address();
  switch (f.code) {
    case command::kConnect:
      reply(now_ms, firmware_reply(options_.firmware));
      break;
    case command::kRamRead:
      reply(now_ms, block_reply(reply::kRamBlock, address, memory_.ram.block(address)));
      break;
    case command::kRamWrite:
      if (!options_.faults.forget_ram_writes) memory_.ram.set_block(address, f.data);
      reply(now_ms, text_reply("Write SDram"));
      break;
    case command::kEepromWrite:
      memory_.eeprom.set_block(address, f.data);
      reply(now_ms, text_reply("Write EEProm"));
      break;
    case command::kEepromRead:
      reply(now_ms, block_reply(reply::kEepromBlock, address, memory_.eeprom.block(address)));
      break;
    case command::kReload:
      // The program does not wait here; an answer could end another transfer's wait early.
      reload_from_eeprom(memory_.eeprom, memory_.ram);
      break;
    case command::kPermanent:
      make_permanent();
      reply(now_ms, text_reply("Permanent", true));
      break;
    case command::kInjectorData:
      manual_adjust_ = apply_injector_data(f.data, memory_.ram);
      reply(now_ms, text_reply("Write Injector"));
      break;
    case command::kAirflow:
      apply_airflow_settings(f.data, memory_.ram);
      reply(now_ms, text_reply("Write Airflow"));
      break;
    case command::kBoost:
      apply_boost_settings(f.data, memory_.ram);
      reply(now_ms, text_reply("Write Boost"));
      break;
    case command::kStream:
      set_stream(now_ms, f.data[0]);
      break;
    case command::kBootLoader:
      set_stream(now_ms, 0);
      reader_.reset();
      boot_.start();
      reply(now_ms, std::string(1, static_cast<char>(BootLoader::kReady)), Kind::kReplyByte);
      break;
    default:
      break;
  }
}

void Controller::set_stream(double now_ms, std::uint8_t mode) {
  const StreamMode wanted = mode == 1   ? StreamMode::kStatus
                            : mode == 2 ? StreamMode::kDebug
                                        : StreamMode::kOff;
  // The program sends the same mode twice in a row; the second must not restart the beat.
  if (wanted == mode_) return;
  mode_ = wanted;
  next_tick_ms_ = mode_ == StreamMode::kOff ? -1 : now_ms + interval_ms();
}

void Controller::make_permanent() {
  permanent_ = memory_;
  if (!options_.state_file.empty()) save_state_file(options_.state_file, permanent_, state_error_);
}

void Controller::reply(double now_ms, std::string bytes, Kind kind, double extra_ms) {
  const Faults& faults = options_.faults;
  const int number = ++replies_;
  const double ready = now_ms + options_.reply_delay_ms + extra_ms;
  const bool sent = !silent_ && faults.drop_replies.count(number) == 0;
  const bool last = faults.vanish_after_replies && number == *faults.vanish_after_replies;
  if (sent) {
    outbox_.emplace(ready, Outgoing{std::move(bytes), kind, number, last});
  } else if (last) {
    vanish_at_ms_ = earliest({vanish_at_ms_, ready});
  }
  if (faults.silent_after_replies && number >= *faults.silent_after_replies) silent_ = true;
}

}  // namespace nerit::sim
