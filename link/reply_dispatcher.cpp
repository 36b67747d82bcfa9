#include "link/reply_dispatcher.h"

#include <stdexcept>

#include "shell/errors.h"
#include "shell/latin1.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

template <class... Ts>
struct Overloaded : Ts... {
  using Ts::operator()...;
};

}  // namespace

void ReplyDispatcher::MSComm1_OnComm() {
  if (p_.comm.comm_event() != SerialPort::kReceive) return;  // overrun, overflow and the rest

  const std::string chunk = p_.comm.input();
  link_.rxbuffer += chunk;

  // In debug mode the controller writes text lines; a CR on its own ends one.
  if (vars_.debugmode == 1 && chunk == "\r") {
    std::string line = link_.rxbuffer;
    line.pop_back();
    c_.List1.add_item(latin1_to_utf8(line));
    link_.rxbuffer.clear();
  }

  const std::optional<std::string> frame = take_frame(link_.rxbuffer);
  if (!frame) return;
  if (const std::optional<Reply> reply = decode_reply(*frame)) dispatch(*reply);
}

void ReplyDispatcher::dispatch(const Reply& reply) {
  std::visit(Overloaded{
                 [&](const FirmwareReply& r) {
                   wire_.log("->  online Firmware: " + r.text);
                   c_.Label4[2].caption = r.text;
                   vars_.connected = 1;
                   if (sink) sink->firmware(r);
                 },
                 [&](const StatusReply& r) {
                   std::string line = " -> Status: ";
                   for (int i = 4; i <= 19; ++i) line += " " + hex_text(r.b(i));
                   wire_.log(line);
                   if (!sink) return;
                   try {
                     sink->status(r);
                   } catch (const ProgramError&) {
                   } catch (const std::out_of_range&) {
                   }
                 },
                 [&](const MemoryBlockReply& r) {
                   wire_.log(" -> Read SRam @ 0x" + hex_text(r.address));
                   // The block counts as answered even when it cannot be shown, so a read goes on
                   // to the next block instead of asking for this one forever.
                   struct Answered {
                     int& flag;
                     ~Answered() { flag = 1; }
                   } answered{link_.reply_done};
                   if (sink) sink->memory_block(r);
                 },
                 [&](const BlockReply&) { link_.reply_done = 1; },
                 [&](const TextReply& r) {
                   if (r.text == "Write SDram")
                     wire_.log(" -> " + r.text + " @ 0x" + hex_text(link_.write_addr));
                   else
                     wire_.log(" -> " + r.text);
                   link_.reply_done = 1;
                   if (r.flag == 1) c_.Command5.back_color = kButtonFace;
                   if (sink) sink->text(r);
                 },
             },
             reply);
}

}  // namespace nerit
