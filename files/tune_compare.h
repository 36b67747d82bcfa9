#pragma once
// What differs between two tunes: the settings one by one, and per map the cells that differ,
// how many, and the largest change. Pure.
#include <string>
#include <vector>

#include "files/tune.h"

namespace nerit {

struct SettingDifference {
  std::string name;
  std::string ours;    // the window's value
  std::string theirs;  // the file's value
};

struct MapComparison {
  int changed = 0;      // cells that differ
  int largest = 0;      // largest absolute change
  int largest_row = 0;  // 1-based cell of the largest change, 0 when none differs
  int largest_col = 0;
  TuneMap<bool> differs{};  // [row][col], 0-based
};

struct TuneComparison {
  std::vector<SettingDifference> settings;  // settings and headings, in file order
  MapComparison correction;
  MapComparison airflow;

  bool same() const { return settings.empty() && !correction.changed && !airflow.changed; }
};

TuneComparison compare_tunes(const Tune& ours, const Tune& theirs);

// One line a map, then one a differing setting: what the comparison window heads its tables with.
std::vector<std::string> comparison_summary(const TuneComparison& comparison);

}  // namespace nerit
