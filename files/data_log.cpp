#include "files/data_log.h"

#include "shell/errors.h"

namespace nerit {

void DataLog::lstart_Click() {
  const std::filesystem::path path = vars_.pfad / data_log_name(p_.date_text(), p_.time_text());
  std::ofstream out(path, std::ios::out | std::ios::trunc | std::ios::binary);
  if (!out.is_open()) throw FileError("Cannot create the data log " + path.string());
  out << kDataLogHeader << kDataLogLineEnd << std::flush;
  if (!out) throw FileError("Cannot write the data log " + path.string());

  close();  // a recording still open (Start again after the stream came back) ends here
  file_ = std::move(out);
  path_ = path;
  rows_ = 0;
  started_ms_ = p_.clock.milliseconds();
  c_.menus.lstart.enabled = false;
  c_.logging = 1;
  c_.menus.lstop.enabled = true;
}

void DataLog::lstop_Click() {
  c_.menus.lstart.enabled = true;
  c_.menus.lstop.enabled = false;
  c_.logging = 0;
  close();
}

void DataLog::write_row(const DataLogValues& values) {
  if (c_.logging != 1 || !file_.is_open()) return;
  file_ << data_log_row(values, p_.decimal_separator()) << kDataLogLineEnd << std::flush;
  if (!file_) {
    // The disk is full or gone: recording ends with one message, not one per frame.
    c_.logging = 0;
    c_.menus.lstart.enabled = true;
    c_.menus.lstop.enabled = false;
    close();
    p_.dialogs.notify({"Cannot write the data log " + path_.string() + "; recording stopped.",
                       MsgButtons::Ok, MsgIcon::Critical, "Error"});
    return;
  }
  ++rows_;
}

void DataLog::close() {
  if (file_.is_open()) file_.close();
}

std::string DataLog::status_text() const {
  if (!recording()) return "";
  return recording_status(path_.filename().string(), rows_, p_.clock.milliseconds() - started_ms_);
}

}  // namespace nerit
