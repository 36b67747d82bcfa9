#include "files/recent_files.h"

#include <algorithm>
#include <fstream>
#include <string>

#include "shell/errors.h"

namespace nerit {

void RecentFiles::load(const std::filesystem::path& pfad) {
  pfad_ = pfad;
  files_.clear();
  std::ifstream in(pfad_ / kListName);
  std::string line;
  while (files_.size() < kCount && std::getline(in, line))
    if (!line.empty()) files_.emplace_back(line);
  show();
}

void RecentFiles::add(const std::filesystem::path& file) {
  const auto absolute = std::filesystem::absolute(file).lexically_normal();
  files_.erase(std::remove(files_.begin(), files_.end(), absolute), files_.end());
  files_.insert(files_.begin(), absolute);
  if (files_.size() > kCount) files_.resize(kCount);
  show();
  store();
}

void RecentFiles::recent_Click(std::size_t i) {
  if (i >= files_.size()) return;
  const auto file = files_[i];
  std::error_code ec;
  if (!std::filesystem::is_regular_file(file, ec)) {
    files_.erase(files_.begin() + static_cast<std::ptrdiff_t>(i));
    show();
    store();
    throw FileError(file.string() + " no longer exists; it has been taken off the list.");
  }
  if (open) open(file);
}

void RecentFiles::show() {
  for (std::size_t i = 0; i < kCount; ++i) {
    items[i].visible = i < files_.size();
    items[i].caption = i < files_.size() ? std::to_string(i + 1) + " " + files_[i].string() : "";
  }
}

void RecentFiles::store() const {
  if (pfad_.empty()) return;
  // A list that cannot be kept costs the next run its menu entries, nothing else.
  std::ofstream out(pfad_ / kListName, std::ios::trunc);
  for (const auto& f : files_) out << f.string() << '\n';
}

}  // namespace nerit
