#pragma once
// Plain models of the window controls the handlers read and write. The Qt layer shows them
// and writes user input back into them; tests read them directly. Positions and sizes are in
// twips (15 twips a pixel at 96 dpi), colours are BGR integers (colors.h).
#include <functional>
#include <string>
#include <vector>

#include "shell/colors.h"

namespace nerit {

inline constexpr int kTwipsPerPixel = 15;

struct Label {
  std::string caption;
  Color back_color = kButtonFace;
  Color fore_color = kButtonText;
  bool visible = true;
  bool enabled = true;
};

struct CommandButton {
  std::string caption;
  Color back_color = kButtonFace;
  bool visible = true;
  bool enabled = true;
};

struct CheckBox {
  std::string caption;
  int value = 0;  // 0 cleared, 1 ticked
  bool visible = true;
  bool enabled = true;
};

struct OptionButton {
  std::string caption;
  bool value = false;
  bool visible = true;
  bool enabled = true;
};

struct Frame {
  std::string caption;
  int left = 0, top = 0;  // in the window (or the frame that holds it)
  bool visible = true;
  bool enabled = true;
};

struct MenuItem {
  std::string caption;
  bool visible = true;
  bool enabled = true;
  bool checked = false;
};

struct ScrollBar {
  int min = 0;
  int max = 32767;
  int value = 0;
  bool visible = true;
  bool enabled = true;
};

struct Slider {
  int min = 0;
  int max = 10;
  int value = 0;
  bool visible = true;
  bool enabled = true;
};

struct ProgressBar {
  int min = 0;
  int max = 100;
  int value = 0;
  bool visible = true;
};

struct TextBox {
  std::string text;
  int sel_start = 0;
  int sel_length = 0;
  int left = 0, top = 0, width = 0, height = 0;
  bool visible = true;
  bool enabled = true;
  bool has_focus = false;
};

struct ListBox {
  std::vector<std::string> items;
  int list_index = -1;
  bool visible = true;
  bool enabled = true;
  // With a limit the oldest lines go, a tenth of it at a time, once the list outgrows it;
  // `dropped` counts every line ever taken off the front, so a view can follow.
  std::size_t max_items = 0;
  long long dropped = 0;

  void add_item(std::string item);
  void clear() {
    items.clear();
    list_index = -1;
  }
  int list_count() const { return static_cast<int>(items.size()); }
};

struct ComboBox {
  std::vector<std::string> items;
  int list_index = -1;  // -1: nothing selected
  std::string text;     // the edit text; follows the selected entry
  bool visible = true;
  bool enabled = true;

  void add_item(std::string item) { items.push_back(std::move(item)); }
  void clear() {
    items.clear();
    list_index = -1;
    text.clear();
  }
  // Selects entry i (or nothing for -1); the text follows the entry.
  void select(int i);
  int list_count() const { return static_cast<int>(items.size()); }
};

// A flexible grid: every cell holds text and a back colour. Rows and columns below the fixed
// counts are headings. `row`/`col` is the current cell, `row_sel`/`col_sel` the far corner of
// the selection.
class Grid {
 public:
  Grid() = default;
  Grid(int rows, int cols) { resize(rows, cols); }

  int rows() const { return rows_; }
  int cols() const { return cols_; }
  // Keeps the text of cells that stay; new cells are empty.
  void resize(int rows, int cols);
  void set_rows(int rows) { resize(rows, cols_); }
  void set_cols(int cols) { resize(rows_, cols); }

  const std::string& text(int r, int c) const;
  void set_text(int r, int c, std::string text);
  Color back_color(int r, int c) const;
  void set_back_color(int r, int c, Color color);
  // Back colour of every cell (and of the empty area), as setting the grid's BackColor does.
  void set_all_back_color(Color color);
  Color background() const { return background_; }

  int col_width(int c) const;
  void set_col_width(int c, int twips);
  int row_height(int r) const;
  void set_row_height(int r, int twips);

  // Current cell: setting it also collapses the selection onto it.
  void set_current(int r, int c);
  // Cell geometry in twips, relative to the grid's top left corner.
  int cell_left(int c) const;
  int cell_top(int r) const;
  int content_width() const { return cell_left(cols_); }
  int content_height() const { return cell_top(rows_); }

  int left = 0, top = 0;  // position in the frame that holds the grid
  int fixed_rows = 1;
  int fixed_cols = 1;
  int row = 0, col = 0;          // current cell
  int row_sel = 0, col_sel = 0;  // other corner of the selection
  bool enabled = true;
  bool visible = true;
  // Grows with every change of text or colour, so a view can skip unchanged grids.
  unsigned revision() const { return revision_; }

 private:
  std::size_t index(int r, int c) const;
  int rows_ = 0, cols_ = 0;
  std::vector<std::string> text_;
  std::vector<Color> back_;
  std::vector<int> col_width_;
  std::vector<int> row_height_;
  Color background_ = kWhite;
  unsigned revision_ = 0;
};

inline constexpr int kDefaultColWidth = 960;  // twips
inline constexpr int kDefaultRowHeight = 240;

class TimerHost;

// A window timer. Switching it on starts its countdown (switching on a running timer changes
// nothing); each tick runs on_tick and, while it stays enabled, counts down again.
class Timer {
 public:
  explicit Timer(int interval_ms = 0) : interval_(interval_ms) {}
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  int interval() const { return interval_; }
  void set_interval(int ms);
  bool enabled() const { return enabled_; }
  void set_enabled(bool on);

  // Connects the timer to the platform that makes it tick; done once at start-up.
  void attach(TimerHost* host);
  // Called by the platform when the countdown ends.
  void tick();

  std::function<void()> on_tick;

 private:
  int interval_;
  bool enabled_ = false;
  TimerHost* host_ = nullptr;
};

}  // namespace nerit
