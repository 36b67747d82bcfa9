#include "ui/compare_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "ui/accessible.h"

namespace nerit::ui {

namespace {

const QColor kDiffers(255, 200, 120);

QTableWidget* map_table(const Tune& ours, const Tune& theirs, const TuneMap<std::int16_t>& a,
                        const TuneMap<std::int16_t>& b, const MapComparison& diff) {
  auto* table = new QTableWidget(kTuneMapSize, kTuneMapSize);
  QStringList columns, rows;
  for (int i = 0; i < kTuneMapSize; ++i) {
    const auto k = static_cast<std::size_t>(i);
    columns << (ours.rpm_headings[k] == theirs.rpm_headings[k]
                    ? QString::number(ours.rpm_headings[k])
                    : QString("%1 | %2").arg(ours.rpm_headings[k]).arg(theirs.rpm_headings[k]));
    rows << (ours.load_headings[k] == theirs.load_headings[k]
                 ? QString::number(ours.load_headings[k])
                 : QString("%1 | %2").arg(ours.load_headings[k]).arg(theirs.load_headings[k]));
  }
  table->setHorizontalHeaderLabels(columns);
  table->setVerticalHeaderLabels(rows);
  for (std::size_t r = 0; r < kTuneMapSize; ++r)
    for (std::size_t c = 0; c < kTuneMapSize; ++c) {
      auto* item = new QTableWidgetItem;
      if (diff.differs[r][c]) {
        item->setText(QString("%1 → %2").arg(a[r][c]).arg(b[r][c]));
        item->setBackground(kDiffers);
        item->setToolTip(QString("Window %1, file %2 (change %3)")
                             .arg(a[r][c])
                             .arg(b[r][c])
                             .arg(b[r][c] - a[r][c]));
      } else {
        item->setText(QString::number(a[r][c]));
      }
      item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
      table->setItem(static_cast<int>(r), static_cast<int>(c), item);
    }
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table->verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  return table;
}

QTableWidget* settings_table(const TuneComparison& diff) {
  auto* table = new QTableWidget(static_cast<int>(diff.settings.size()), 3);
  table->setHorizontalHeaderLabels({"Setting", "Window", "File"});
  for (int i = 0; i < table->rowCount(); ++i) {
    const SettingDifference& d = diff.settings[static_cast<std::size_t>(i)];
    int col = 0;
    for (const std::string* text : {&d.name, &d.ours, &d.theirs}) {
      auto* item = new QTableWidgetItem(QString::fromStdString(*text));
      item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
      table->setItem(i, col++, item);
    }
  }
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table->verticalHeader()->hide();
  return table;
}

}  // namespace

CompareDialog::CompareDialog(const Comparison& cmp, QWidget* parent) : QDialog(parent) {
  const QString file = QString::fromStdString(cmp.file.filename().string());
  setWindowTitle("Compare with " + file);
  name_widget(this, windowTitle(), "CompareDialog");
  auto* layout = new QVBoxLayout(this);

  QStringList lines;
  for (const std::string& line : comparison_summary(cmp.diff))
    lines << QString::fromStdString(line);
  const int map_lines = 2;
  auto* summary =
      new QLabel((cmp.diff.same() ? QString("The window and %1 hold the same tune.").arg(file)
                                  : QString("Window → %1").arg(file)) +
                 "\n" + lines.mid(0, map_lines).join("\n"));
  name_widget(summary, "Summary", "summary");
  layout->addWidget(summary);

  auto* tabs = new QTabWidget;
  name_widget(tabs, "Maps and settings", "tabs");
  correction = map_table(cmp.ours, cmp.theirs, cmp.ours.correction, cmp.theirs.correction,
                         cmp.diff.correction);
  name_widget(correction, "Injektorcorrection", "correction");
  airflow = map_table(cmp.ours, cmp.theirs, cmp.ours.airflow, cmp.theirs.airflow, cmp.diff.airflow);
  name_widget(airflow, "Airflow Output", "airflow");
  settings = settings_table(cmp.diff);
  name_widget(settings, "Settings", "settings");
  tabs->addTab(correction, QString("Injektorcorrection (%1)").arg(cmp.diff.correction.changed));
  tabs->addTab(airflow, QString("Airflow Output (%1)").arg(cmp.diff.airflow.changed));
  tabs->addTab(settings, QString("Settings (%1)").arg(cmp.diff.settings.size()));
  layout->addWidget(tabs);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  name_widget(buttons, "Close", "buttons");
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
  layout->addWidget(buttons);
  resize(1100, 620);
}

CompareDialog* show_comparison(const Comparison& comparison, QWidget* parent) {
  auto* dialog = new CompareDialog(comparison, parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->show();
  return dialog;
}

}  // namespace nerit::ui
