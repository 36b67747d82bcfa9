#include "ui/live_chart_view.h"

#include <QChart>
#include <QGraphicsLayout>
#include <QLegend>
#include <QLineSeries>
#include <QList>
#include <QPointF>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

namespace nerit::ui {

namespace {

const std::array<QColor, kChartCount> kColors = {QColor(0, 70, 200), QColor(200, 30, 30),
                                                 QColor(0, 140, 60), QColor(190, 110, 0)};

// Each span is a low and a high point, the one nearer the line so far first, so a spike
// shows as a stroke and a flat stretch as a flat line.
QList<QPointF> points(const std::vector<ChartSpan>& spans, ChartChannel channel, long long end_ms) {
  QList<QPointF> out;
  out.reserve(static_cast<qsizetype>(2 * spans.size()));
  for (const ChartSpan& s : spans) {
    const double x = static_cast<double>(s.t_ms - end_ms) / 1000;
    double first = chart_share(channel, s.low), second = chart_share(channel, s.high);
    if (!out.isEmpty() && std::abs(out.back().y() - second) < std::abs(out.back().y() - first))
      std::swap(first, second);
    out.append({x, first});
    if (second != first) out.append({x, second});
  }
  return out;
}

}  // namespace

LiveChartView::LiveChartView(const LiveChart& chart, const ChartControls& controls, QWidget* parent)
    : QChartView(parent), chart_(chart), controls_(controls) {
  auto* c = new QChart();
  c->setAnimationOptions(QChart::NoAnimation);
  c->setBackgroundRoundness(0);
  c->setMargins(QMargins(2, 2, 2, 2));
  c->layout()->setContentsMargins(0, 0, 0, 0);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.85);

  auto* time = new QValueAxis(c);
  time->setRange(-static_cast<double>(kChartWindowMs) / 1000, 0);
  time->setTickCount(7);
  time->setLabelFormat("%.0f s");
  time->setLabelsFont(small);
  auto* share = new QValueAxis(c);
  share->setRange(0, 1);
  share->setTickCount(5);
  share->setLabelsVisible(false);  // each channel has its own scale: the legend names it
  c->addAxis(time, Qt::AlignBottom);
  c->addAxis(share, Qt::AlignLeft);

  for (int i = 0; i < kChartCount; ++i) {
    auto* s = new QLineSeries(c);
    s->setName(QString::fromUtf8(kChartScales[static_cast<std::size_t>(i)].name) + " " +
               range_text(i));
    s->setUseOpenGL(false);
    QPen pen(kColors[static_cast<std::size_t>(i)]);
    pen.setWidthF(1.2);
    s->setPen(pen);
    c->addSeries(s);
    s->attachAxis(time);
    s->attachAxis(share);
    series_[static_cast<std::size_t>(i)] = s;
  }
  c->legend()->hide();  // the channel boxes beside the table are the legend
  QChart* blank =
      QChartView::chart();  // the view comes with a chart of its own and does not free it
  setChart(c);
  delete blank;
  setRenderHint(QPainter::Antialiasing, false);
  setMinimumHeight(160);

  frame_.setInterval(kFrameMs);
  connect(&frame_, &QTimer::timeout, this, [this] { update_series(); });
}

QColor LiveChartView::color(int channel) {
  return kColors.at(static_cast<std::size_t>(channel));
}

QString LiveChartView::range_text(int channel) {
  const ChartScale& s = kChartScales.at(static_cast<std::size_t>(channel));
  return QString("%1-%2").arg(s.min).arg(s.max);
}

LiveChartView::Shown LiveChartView::now() const {
  Shown s;
  s.revision = chart_.revision();
  const QRectF plot = chart()->plotArea();
  // A span every two pixels: its low and high still show each spike, at half the points.
  s.slices = std::max(1, static_cast<int>(plot.width() > 0 ? plot.width() : width()) / 2);
  for (int i = 0; i < kChartCount; ++i)
    s.ticked[static_cast<std::size_t>(i)] =
        controls_.channels[static_cast<std::size_t>(i)].value == 1;
  return s;
}

void LiveChartView::update_series() {
  const Shown s = now();
  if (drawn_ && s == shown_) return;
  for (int i = 0; i < kChartCount; ++i) {
    const auto k = static_cast<std::size_t>(i);
    QLineSeries* line = series_[k];
    if (line->isVisible() != s.ticked[k]) line->setVisible(s.ticked[k]);
    if (!s.ticked[k]) continue;
    const auto channel = static_cast<ChartChannel>(i);
    line->replace(
        points(decimate(chart_.samples(), channel, chart_.end_ms(), kChartWindowMs, s.slices),
               channel, chart_.end_ms()));
  }
  shown_ = s;
  drawn_ = true;
  ++redraws_;
}

void LiveChartView::showEvent(QShowEvent* event) {
  QChartView::showEvent(event);
  update_series();
  frame_.start();
}

void LiveChartView::hideEvent(QHideEvent* event) {
  frame_.stop();
  QChartView::hideEvent(event);
}

}  // namespace nerit::ui
