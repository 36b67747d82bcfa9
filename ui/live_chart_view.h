#pragma once
// The live chart under the live table: the last 30 s of every ticked channel, each drawn as a
// share of its range. It redraws at its own pace, at most every kFrameMs and only when the
// samples, the ticked channels or the plot's width changed.
#include <QChartView>
#include <QTimer>
#include <array>

#include "live/live_chart.h"

class QLineSeries;

namespace nerit::ui {

class LiveChartView : public QChartView {
 public:
  LiveChartView(const LiveChart& chart, const ChartControls& controls, QWidget* parent = nullptr);

  // Draws the chart anew when anything it shows changed.
  void update_series();

  QLineSeries* series(int channel) const { return series_.at(static_cast<std::size_t>(channel)); }
  // The line's colour, and the range its height stands for ("0-8000").
  static QColor color(int channel);
  static QString range_text(int channel);
  // How often the points were drawn anew, for tests.
  int redraws() const { return redraws_; }

  static constexpr int kFrameMs = 100;
  QSize sizeHint() const override { return {400, 240}; }

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct Shown {
    unsigned revision = 0;
    int slices = 0;
    std::array<bool, kChartCount> ticked{};
    bool operator==(const Shown&) const = default;
  };
  Shown now() const;

  const LiveChart& chart_;
  const ChartControls& controls_;
  std::array<QLineSeries*, kChartCount> series_{};
  QTimer frame_;
  Shown shown_;
  bool drawn_ = false;
  int redraws_ = 0;
};

}  // namespace nerit::ui
