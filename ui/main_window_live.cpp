// The main window's live values: the live table with the stream and channel boxes beside it,
// the chart under them.
#include <QGridLayout>
#include <QVBoxLayout>

#include "ui/accessible.h"
#include "ui/main_window.h"

namespace nerit::ui {

QWidget* MainWindow::build_live() {
  LiveControls& lc = f_.live_controls;
  auto* box = new QGroupBox("Live", this);
  name_widget(box, "Live", "Live");
  auto* grid = new QGridLayout(box);
  grid->setSpacing(4);
  auto* checks = new QVBoxLayout();
  checks->setSpacing(2);
  const struct {
    CheckBox& model;
    Handler click;
    const char* control;
  } boxes[] = {{f_.c.Check1, [this] { f_.stream.Check1_Click(); }, "Check1"},
               {lc.Check7, [this] { f_.stream.Check7_Click(); }, "Check7"}};
  for (const auto& b : boxes) {
    auto* cb = new QCheckBox(box);
    name_widget(cb, QString::fromStdString(b.model.caption), b.control);
    bind_.check(cb, b.model, b.click);
    w_.check[b.model.caption] = cb;
    checks->addWidget(cb);
  }
  checks->addSpacing(8);

  w_.MSFlexGrid1 = new GridView(lc.MSFlexGrid1, GridView::Fit::ModelWidths, box);
  w_.MSFlexGrid1->setAutoFillBackground(true);  // repaints without the group box behind it
  name_widget(w_.MSFlexGrid1, "Live values", "MSFlexGrid1");
  w_.MSFlexGrid1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  w_.MSFlexGrid1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  w_.MSFlexGrid1->setMinimumWidth(200);
  w_.MSFlexGrid1->setMaximumWidth(240);
  w_.MSFlexGrid1->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  bind_.grid(w_.MSFlexGrid1);
  QObject::connect(w_.MSFlexGrid1, &QAbstractItemView::clicked, this,
                   [this](const QModelIndex& cell) {
                     f_.live_controls.MSFlexGrid1.set_current(cell.row(), cell.column());
                     run_([this] { f_.stream.MSFlexGrid1_Click(); });
                   });
  grid->addWidget(w_.MSFlexGrid1, 0, 0);

  // The chart, and a box per channel in the line's colour with the range the chart's height
  // stands for.
  w_.chart = new LiveChartView(f_.chart, lc.chart, box);
  name_widget(w_.chart, "Live chart", "chart");
  w_.chart->setMinimumWidth(380);
  w_.chart->setAutoFillBackground(true);
  auto* legend = new QGridLayout();
  legend->setHorizontalSpacing(10);
  legend->setVerticalSpacing(2);
  for (int i = 0; i < kChartCount; ++i) {
    const auto k = static_cast<std::size_t>(i);
    CheckBox& m = lc.chart.channels[k];
    auto* cb = new QCheckBox(box);
    name_widget(cb, QString::fromStdString(m.caption), QString("chart_channel(%1)").arg(i));
    QPalette p = cb->palette();
    p.setColor(QPalette::WindowText, LiveChartView::color(i));
    cb->setPalette(p);
    bind_.check(cb, m);
    auto* range = new QLabel(LiveChartView::range_text(i), box);
    name_widget(range, QString::fromStdString(m.caption) + " range",
                QString("chart_range(%1)").arg(i));
    range->setPalette(p);
    range->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    legend->addWidget(cb, i, 0);
    legend->addWidget(range, i, 1);
    w_.chart_channel[k] = cb;
  }
  checks->addLayout(legend);
  checks->addStretch(1);
  grid->addLayout(checks, 0, 1);
  grid->addWidget(w_.chart, 1, 0, 1, 2);
  grid->setRowStretch(1, 1);
  return box;
}

}  // namespace nerit::ui
