#include "sim/cli_options.h"

#include <charconv>
#include <cstddef>
#include <string_view>

namespace nerit::sim {

namespace {

std::optional<double> parse_ms(std::string_view text) {
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || !(value >= 0)) return std::nullopt;
  return value;
}

std::optional<int> parse_count(std::string_view text) {
  int value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || value < 0) return std::nullopt;
  return value;
}

// "3,7,9" into the set.
bool parse_numbers(std::string_view text, std::set<int>& into) {
  while (true) {
    const std::size_t comma = text.find(',');
    const auto n = parse_count(text.substr(0, comma));
    if (!n || *n == 0) return false;
    into.insert(*n);
    if (comma == std::string_view::npos) return true;
    text.remove_prefix(comma + 1);
  }
}

// "0d 55 ff" or "0D55FF".
bool parse_hex(std::string_view text, std::string& into) {
  std::string digits;
  for (char c : text) {
    if (c != ' ' && c != ':') digits.push_back(c);
  }
  if (digits.empty() || digits.size() % 2 != 0) return false;
  into.clear();
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    unsigned value = 0;
    const auto [end, ec] = std::from_chars(digits.data() + i, digits.data() + i + 2, value, 16);
    if (ec != std::errc() || end != digits.data() + i + 2) return false;
    into.push_back(static_cast<char>(value));
  }
  return true;
}

bool apply(CommandLine& cl, std::string_view flag, std::string_view value) {
  Options& o = cl.options;
  Faults& f = o.faults;
  auto ms = [&](double& into) {
    const auto v = parse_ms(value);
    if (v) into = *v;
    return v.has_value();
  };
  auto optional_ms = [&](std::optional<double>& into) {
    into = parse_ms(value);
    return into.has_value();
  };
  auto optional_count = [&](std::optional<int>& into) {
    into = parse_count(value);
    return into.has_value();
  };
  if (flag == "--interval") return ms(o.stream_interval_ms) && o.stream_interval_ms > 0;
  if (flag == "--debug-interval") return ms(o.debug_interval_ms) && o.debug_interval_ms > 0;
  if (flag == "--delay") return ms(o.reply_delay_ms);
  if (flag == "--hold") return optional_ms(o.hold_engine_at_ms);
  if (flag == "--state") {
    o.state_file = value;
    return !value.empty();
  }
  if (flag == "--firmware") {
    o.firmware = std::string(value.substr(0, 16));
    o.firmware.resize(16, ' ');
    return true;
  }
  if (flag == "--block-programming-ms") return ms(o.block_programming_ms);
  if (flag == "--flash-image") {
    o.flash_image_file = value;
    return !value.empty();
  }
  if (flag == "--drop") return parse_numbers(value, f.drop_replies);
  if (flag == "--garbage") return parse_hex(value, f.garbage);
  if (flag == "--garbage-on") return parse_numbers(value, f.garbage_replies);
  if (flag == "--chunk") {
    const auto n = parse_count(value);
    if (n) f.chunk_size = static_cast<std::size_t>(*n);
    return n.has_value();
  }
  if (flag == "--silent-at") return optional_ms(f.silent_from_ms);
  if (flag == "--silent-after") return optional_count(f.silent_after_replies);
  if (flag == "--vanish-at") return optional_ms(f.vanish_at_ms);
  if (flag == "--vanish-after") return optional_count(f.vanish_after_replies);
  return false;
}

bool is_switch(std::string_view flag, CommandLine& cl) {
  if (flag == "--pacing" || flag == "--no-pacing") {
    cl.options.paced = flag == "--pacing";
  } else if (flag == "--demo") {
    cl.options.demo_tune = true;
  } else if (flag == "--boot-loader") {
    cl.options.start_in_boot_loader = true;
  } else if (flag == "--forget-writes") {
    cl.options.faults.forget_ram_writes = true;
  } else if (flag == "--help" || flag == "-h") {
    cl.help = true;
  } else if (flag == "--version") {
    cl.version = true;
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::optional<CommandLine> parse_command_line(const std::vector<std::string>& args,
                                              std::string& error) {
  CommandLine cl;
  cl.options.paced = true;
  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string_view flag = args[i];
    if (is_switch(flag, cl)) continue;
    std::string_view value;
    const std::size_t eq = flag.find('=');
    if (eq != std::string_view::npos) {
      value = flag.substr(eq + 1);
      flag = flag.substr(0, eq);
    } else if (i + 1 < args.size()) {
      value = args[++i];
    } else {
      error = "missing value for " + std::string(flag);
      return std::nullopt;
    }
    if (!apply(cl, flag, value)) {
      error = "bad argument: " + std::string(flag) + " " + std::string(value);
      return std::nullopt;
    }
  }
  return cl;
}

std::string usage_text() {
  return "usage: nerit-sim [options]\n"
         "Serves a virtual Nerit controller on a pseudo-terminal; prints its path first.\n"
         "  --help | --version       this text, or the version\n"
         "  --pacing | --no-pacing   19200-baud output timing (default on)\n"
         "  --interval MS            status frame interval (50)\n"
         "  --debug-interval MS      debug line interval (250)\n"
         "  --delay MS               answer every command this much later (0)\n"
         "  --hold MS                keep the engine where it is at MS of its drive cycle\n"
         "  --state FILE             keep the permanent state in FILE across runs\n"
         "  --firmware TEXT          firmware text, 16 characters\n"
         "  --demo                   start from the demo tune (shaped correction map, boost on)\n"
         "  --boot-loader            start in the boot loader, waiting silently for an image\n"
         "  --block-programming-ms MS\n"
         "                           boot loader: from a block's last byte to its 0x06 (5)\n"
         "  --flash-image FILE       boot loader: write each image received in full to FILE\n"
         "faults (replies are counted from 1; each boot loader byte 0x05/0x06/0x07 is one):\n"
         "  --drop N[,N...]          never send these replies\n"
         "  --garbage HEX            send these bytes before reply frames\n"
         "  --garbage-on N[,N...]    ... only before these replies\n"
         "  --chunk K                send frames in pieces of K bytes\n"
         "  --silent-at MS           send nothing from MS on\n"
         "  --silent-after N         send nothing after N replies\n"
         "  --vanish-at MS           close the line at MS\n"
         "  --vanish-after N         close the line once reply N has gone out\n"
         "  --forget-writes          acknowledge working-memory writes without storing them\n";
}

}  // namespace nerit::sim
