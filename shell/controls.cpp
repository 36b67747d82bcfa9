#include "shell/controls.h"

#include <stdexcept>

#include "shell/errors.h"
#include "shell/platform.h"

namespace nerit {

void ListBox::add_item(std::string item) {
  items.push_back(std::move(item));
  if (max_items == 0 || items.size() <= max_items + max_items / 10) return;
  const std::size_t gone = items.size() - max_items;
  items.erase(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(gone));
  dropped += static_cast<long long>(gone);
  list_index = list_index < static_cast<int>(gone) ? -1 : list_index - static_cast<int>(gone);
}

void ComboBox::select(int i) {
  if (i < -1 || i >= list_count()) throw InvalidPropertyError();
  list_index = i;
  text = i < 0 ? std::string() : items[static_cast<std::size_t>(i)];
}

void Grid::resize(int rows, int cols) {
  if (rows < 0 || cols < 0) throw InvalidPropertyError();
  std::vector<std::string> text(static_cast<std::size_t>(rows * cols));
  std::vector<Color> back(text.size(), background_);
  for (int r = 0; r < std::min(rows, rows_); ++r) {
    for (int c = 0; c < std::min(cols, cols_); ++c) {
      const std::size_t to = static_cast<std::size_t>(r * cols + c);
      text[to] = std::move(text_[index(r, c)]);
      back[to] = back_[index(r, c)];
    }
  }
  text_ = std::move(text);
  back_ = std::move(back);
  col_width_.resize(static_cast<std::size_t>(cols), kDefaultColWidth);
  row_height_.resize(static_cast<std::size_t>(rows), kDefaultRowHeight);
  rows_ = rows;
  cols_ = cols;
  row = std::min(row, std::max(rows - 1, 0));
  col = std::min(col, std::max(cols - 1, 0));
  row_sel = std::min(row_sel, std::max(rows - 1, 0));
  col_sel = std::min(col_sel, std::max(cols - 1, 0));
  ++revision_;
}

std::size_t Grid::index(int r, int c) const {
  if (r < 0 || r >= rows_ || c < 0 || c >= cols_) throw std::out_of_range("Subscript out of range");
  return static_cast<std::size_t>(r * cols_ + c);
}

const std::string& Grid::text(int r, int c) const {
  return text_[index(r, c)];
}

void Grid::set_text(int r, int c, std::string text) {
  text_[index(r, c)] = std::move(text);
  ++revision_;
}

Color Grid::back_color(int r, int c) const {
  return back_[index(r, c)];
}

void Grid::set_back_color(int r, int c, Color color) {
  back_[index(r, c)] = color;
  ++revision_;
}

void Grid::set_all_back_color(Color color) {
  background_ = color;
  back_.assign(back_.size(), color);
  ++revision_;
}

int Grid::col_width(int c) const {
  if (c < 0 || c >= cols_) throw std::out_of_range("Subscript out of range");
  return col_width_[static_cast<std::size_t>(c)];
}

void Grid::set_col_width(int c, int twips) {
  if (c < 0 || c >= cols_) throw std::out_of_range("Subscript out of range");
  col_width_[static_cast<std::size_t>(c)] = twips;
  ++revision_;
}

int Grid::row_height(int r) const {
  if (r < 0 || r >= rows_) throw std::out_of_range("Subscript out of range");
  return row_height_[static_cast<std::size_t>(r)];
}

void Grid::set_row_height(int r, int twips) {
  if (r < 0 || r >= rows_) throw std::out_of_range("Subscript out of range");
  row_height_[static_cast<std::size_t>(r)] = twips;
  ++revision_;
}

void Grid::set_current(int r, int c) {
  index(r, c);  // range check
  row = row_sel = r;
  col = col_sel = c;
  ++revision_;
}

int Grid::cell_left(int c) const {
  int x = 0;
  for (int i = 0; i < c && i < cols_; ++i) x += col_width_[static_cast<std::size_t>(i)];
  return x;
}

int Grid::cell_top(int r) const {
  int y = 0;
  for (int i = 0; i < r && i < rows_; ++i) y += row_height_[static_cast<std::size_t>(i)];
  return y;
}

Timer::~Timer() {
  if (host_) host_->timer_destroyed(*this);
}

void Timer::attach(TimerHost* host) {
  if (host_ && host_ != host) host_->timer_destroyed(*this);
  host_ = host;
  if (host_) host_->timer_changed(*this);
}

void Timer::set_interval(int ms) {
  if (ms < 0) throw InvalidPropertyError();
  if (ms == interval_) return;
  interval_ = ms;
  if (host_) host_->timer_changed(*this);
}

void Timer::set_enabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  if (host_) host_->timer_changed(*this);
}

void Timer::tick() {
  if (!enabled_ || interval_ == 0) return;
  if (on_tick) on_tick();
}

}  // namespace nerit
