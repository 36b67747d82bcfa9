#include "files/restore_points.h"

#include <algorithm>
#include <vector>

#include "files/tune_file.h"
#include "files/tune_window.h"
#include "shell/errors.h"

namespace nerit {

namespace {

bool is_restore_point(const std::filesystem::path& file) {
  // Names start with the date, "2026-11-23_...", so that sorting them sorts by time.
  const std::string name = file.filename().string();
  return file.extension() == ".inj" && name.size() > 20 && name[4] == '-' && name[10] == '_';
}

void prune(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.is_regular_file() && is_restore_point(entry.path())) files.push_back(entry.path());
  if (files.size() <= RestorePoints::kKept) return;
  std::sort(files.begin(), files.end());
  for (std::size_t i = 0; i + RestorePoints::kKept < files.size(); ++i)
    std::filesystem::remove(files[i]);
}

}  // namespace

std::string restore_point_stamp(const DateTime& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d_%02d-%02d-%02d", t.year, t.month, t.day, t.hour,
                t.minute, t.second);
  return text;
}

std::filesystem::path save_restore_point(const std::filesystem::path& folder, const Tune& tune,
                                         const std::string& stamp, const std::string& action,
                                         const std::string& which) {
  std::filesystem::create_directories(folder);
  const std::string base = stamp + "_" + action + "_" + which;
  std::filesystem::path file = folder / (base + ".inj");
  for (int n = 2; std::filesystem::exists(file); ++n)
    file = folder / (base + "-" + std::to_string(n) + ".inj");
  write_tune_file(file, tune);
  prune(folder);
  return file;
}

void RestorePoints::remember_read() {
  unreadable_.clear();
  try {
    last_read_ = tune_from_window(c_, vars_);
  } catch (const ProgramError& e) {
    // The controller holds what a file cannot (a cell below -100): said at the next write.
    last_read_.reset();
    unreadable_ = e.what();
  }
}

void RestorePoints::before_write(const std::string& action) {
  if (last_read_) keep(*last_read_, action, "read");
  if (!unreadable_.empty())
    c_.List1.add_item("Restore point of the read tune not saved: " + unreadable_);
  try {
    keep(tune_from_window(c_, vars_), action, "written");
  } catch (const ProgramError& e) {
    c_.List1.add_item("Restore point not saved: " + std::string(e.what()));
  }
}

void RestorePoints::before_firmware() {
  if (last_read_) keep(*last_read_, "Firmwareupdate", "read");
}

void RestorePoints::keep(const Tune& tune, const std::string& action, const char* which) {
  try {
    const auto file = save_restore_point(folder(), tune, restore_point_stamp(p_.clock.now()),
                                         action, which);
    c_.List1.add_item("Restore point: " + file.string());
  } catch (const std::filesystem::filesystem_error& e) {
    c_.List1.add_item("Restore point not saved: " + std::string(e.what()));
  } catch (const ProgramError& e) {
    c_.List1.add_item("Restore point not saved: " + std::string(e.what()));
  }
}

}  // namespace nerit
