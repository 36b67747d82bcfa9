#include "ui/form5_window.h"

#include <QFont>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QPushButton>

#include <QVBoxLayout>
#include <QtDataVisualization/Q3DCamera>
#include <QtDataVisualization/Q3DScene>
#include <QtDataVisualization/Q3DSurface>
#include <QtDataVisualization/Q3DTheme>
#include <QtDataVisualization/QSurface3DSeries>
#include <QtDataVisualization/QSurfaceDataProxy>
#include <QtDataVisualization/QValue3DAxis>
#include <QtDataVisualization/QValue3DAxisFormatter>
#include "ui/accessible.h"

namespace nerit::ui {

namespace {

// The RPM and load axes run over the column and row numbers 1..16 and show the heading texts.
class HeadingFormatter : public QValue3DAxisFormatter {
 public:
  void set_headings(const QStringList& headings) {
    if (headings == headings_) return;
    headings_ = headings;
    markDirty(true);
  }

 protected:
  QValue3DAxisFormatter* createNewInstance() const override { return new HeadingFormatter; }
  void populateCopy(QValue3DAxisFormatter& copy) const override {
    QValue3DAxisFormatter::populateCopy(copy);
    static_cast<HeadingFormatter&>(copy).headings_ = headings_;
  }
  QString stringForValue(qreal value, const QString&) const override {
    return headings_.value(qRound(value) - 1);
  }

 private:
  QStringList headings_;
};

QValue3DAxis* heading_axis(const QString& title) {
  auto* axis = new QValue3DAxis;
  axis->setTitle(title);
  axis->setTitleVisible(true);
  axis->setRange(1, kMapSize);
  axis->setSegmentCount(kMapSize - 1);
  axis->setSubSegmentCount(1);
  axis->setLabelAutoRotation(30);
  axis->setFormatter(new HeadingFormatter);
  return axis;
}

template <std::size_t N>
QStringList to_qstrings(const std::array<std::string, N>& texts) {
  QStringList out;
  for (const std::string& t : texts) out << QString::fromStdString(t);
  return out;
}

}  // namespace

bool opengl_available() {
  if (QGuiApplication::platformName() == "offscreen" ||
      QGuiApplication::platformName() == "minimal")
    return false;
  QOpenGLContext context;
  if (!context.create() || !context.isValid()) return false;
  QOffscreenSurface surface;
  surface.setFormat(context.format());
  surface.create();
  if (!surface.isValid() || !context.makeCurrent(&surface)) return false;
  context.doneCurrent();
  return true;
}

Form5Window::Form5Window(Form5& form, HandlerRunner run)
    : QWidget(nullptr, Qt::Window), f_(form), bind_(run) {
  setWindowTitle("Graph");
  resize(800, 600);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(build_graph(), 1);

  auto* buttons = new QHBoxLayout;
  Command1 = new QPushButton(this);
  Command2 = new QPushButton(this);
  name_widget(Command1, "Graph", "Command1");
  name_widget(Command2, "update", "Command2");
  buttons->addWidget(Command1);
  buttons->addWidget(Command2);
  buttons->addStretch(1);
  layout->addLayout(buttons);
  bind_.button(Command1, f_.Command1, [this] { f_.Command1_Click(); });
  bind_.button(Command2, f_.Command2, [this] { f_.Command2_Click(); });

  run([this] { f_.Form_Load(); });
  refresh();  // not yet among the windows the program refreshes
}

QWidget* Form5Window::build_graph() {
  if (!opengl_available()) {
    notice_ = new QLabel(kNoGraphText, this);
    name_widget(notice_, kNoGraphText, "Graph notice");
    notice_->setAlignment(Qt::AlignCenter);
    notice_->setWordWrap(true);
    return notice_;
  }
  graph_ = new Q3DSurface;
  graph_->activeTheme()->setType(Q3DTheme::ThemeQt);
  QFont font = graph_->activeTheme()->font();
  font.setPointSize(48);
  font.setBold(true);
  graph_->activeTheme()->setFont(font);
  // Software rendering stays smooth without shadows.
  graph_->setShadowQuality(QAbstract3DGraph::ShadowQualityNone);
  graph_->setAxisX(heading_axis("RPM"));
  graph_->setAxisZ(heading_axis("Load"));
  auto* percent = new QValue3DAxis;
  percent->setTitle("%");
  percent->setTitleVisible(true);
  percent->setRange(-50, 100);
  percent->setSegmentCount(6);
  percent->setLabelFormat("%.0f");
  graph_->setAxisY(percent);

  auto* series = new QSurface3DSeries;
  series->setDrawMode(QSurface3DSeries::DrawSurfaceAndWireframe);
  series->setFlatShadingEnabled(false);
  QLinearGradient colours(0, 0, 1, 100);
  colours.setColorAt(0.0, Qt::darkBlue);
  colours.setColorAt(0.33, Qt::green);
  colours.setColorAt(0.67, Qt::yellow);
  colours.setColorAt(1.0, Qt::red);
  series->setBaseGradient(colours);
  series->setColorStyle(Q3DTheme::ColorStyleRangeGradient);
  graph_->addSeries(series);

  QWidget* container = QWidget::createWindowContainer(graph_, this);
  name_widget(container, "Injector correction surface", "Graph surface");
  container->setMinimumSize(320, 240);
  container->setFocusPolicy(Qt::StrongFocus);
  return container;
}

void Form5Window::refresh() {
  bind_.refresh();
  if (shown_revision_ != f_.revision()) {
    shown_revision_ = f_.revision();
    show_surface();
  }
  if (shown_camera_resets_ != f_.camera_resets()) {
    shown_camera_resets_ = f_.camera_resets();
    reset_camera();
  }
}

void Form5Window::show_surface() {
  if (!graph_) return;
  const SurfaceData& s = f_.surface;
  static_cast<HeadingFormatter*>(graph_->axisX()->formatter())
      ->set_headings(to_qstrings(s.rpm_labels));
  static_cast<HeadingFormatter*>(graph_->axisZ()->formatter())
      ->set_headings(to_qstrings(s.load_labels));

  auto* rows = new QSurfaceDataArray;
  rows->reserve(kMapSize);
  for (int r = 0; r < kMapSize; ++r) {
    auto* row = new QSurfaceDataRow(kMapSize);
    for (int c = 0; c < kMapSize; ++c)
      (*row)[c].setPosition(
          QVector3D(float(c + 1), float(s.values[std::size_t(r)][std::size_t(c)]), float(r + 1)));
    rows->append(row);
  }
  graph_->seriesList().at(0)->dataProxy()->resetArray(rows);
}

void Form5Window::reset_camera() {
  if (!graph_) return;
  Q3DCamera* camera = graph_->scene()->activeCamera();
  camera->setCameraPreset(Q3DCamera::CameraPresetIsometricLeft);
  camera->setZoomLevel(85);
  camera->setTarget(QVector3D(0, -0.6f, 0));  // the floor labels stay in the window
}

}  // namespace nerit::ui
