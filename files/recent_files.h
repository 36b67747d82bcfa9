#pragma once
// The Datei menu's list of the settings files used last, newest first, kept in pfad between
// runs.
#include <array>
#include <filesystem>
#include <functional>
#include <vector>

#include "shell/controls.h"

namespace nerit {

class RecentFiles {
 public:
  static constexpr std::size_t kCount = 5;
  static constexpr const char* kListName = "RecentFiles.txt";

  // Reads the list kept in `pfad` (none there: an empty list).
  void load(const std::filesystem::path& pfad);
  // `file` goes to the top; the list is kept.
  void add(const std::filesystem::path& file);
  // Entry i of the menu: a file that has gone is taken off the list with an error.
  void recent_Click(std::size_t i);

  const std::vector<std::filesystem::path>& files() const { return files_; }
  // Visible for the entries in use, captioned "1 <path>".
  std::array<MenuItem, kCount> items;
  // Opens a file of the list.
  std::function<void(const std::filesystem::path&)> open;

 private:
  void show();
  void store() const;
  std::filesystem::path pfad_;
  std::vector<std::filesystem::path> files_;
};

}  // namespace nerit
