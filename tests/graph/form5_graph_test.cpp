// The graph window on a virtual X server with OpenGL: the surface holds the correction map
// as the grid shows it, the axes show the headings, and the buttons read the map again.
#include <QApplication>
#include <QPushButton>
#include <QtDataVisualization/Q3DCamera>
#include <QtDataVisualization/Q3DScene>
#include <QtDataVisualization/Q3DSurface>
#include <QtDataVisualization/QSurface3DSeries>
#include <QtDataVisualization/QSurfaceDataProxy>
#include <QtDataVisualization/QValue3DAxis>

#include "shell/numbers.h"
#include "tests/ui/ui_test_support.h"
#include "ui/form5_window.h"

namespace nerit::ui {
namespace {

class Form5GraphTest : public ProgramTest {
 protected:
  Form5GraphTest() { start(); }

  Form5Window* open_graph() {
    app->run([this] { app->platform().windows.show(FormId::Form5); });
    return dynamic_cast<Form5Window*>(app->windows().widget(FormId::Form5));
  }
  QSurfaceDataProxy* proxy(Form5Window* w) { return w->graph()->seriesList().at(0)->dataProxy(); }
  // The heights along one load row, as the surface holds them.
  std::vector<float> heights(Form5Window* w, int row) {
    std::vector<float> out;
    for (int col = 0; col < 16; ++col) out.push_back(proxy(w)->itemAt(row, col)->y());
    return out;
  }
};

TEST_F(Form5GraphTest, SurfaceHoldsTheMapWithHeadingLabels) {
  app->run([this] {
    Grid& g = c().MSFlexGrid2;
    g.set_text(3, 5, "12,5");
    g.set_text(5, 3, "-20");
    g.set_text(1, 16, "100");
    g.set_text(16, 1, "-50");
    g.set_text(3, 0, "40");
  });
  Form5Window* w = open_graph();
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->windowTitle(), "Graph");
  ASSERT_NE(w->graph(), nullptr) << "no OpenGL on the virtual X server";
  EXPECT_EQ(w->notice(), nullptr);
  ASSERT_TRUE(wait_until([w] { return w->graph()->isExposed(); }));
  run_events_for(300);  // a few frames drawn

  ASSERT_EQ(proxy(w)->rowCount(), 16);
  ASSERT_EQ(proxy(w)->columnCount(), 16);
  const Grid& g = c().MSFlexGrid2;
  for (int r = 0; r < 16; ++r)
    for (int col = 0; col < 16; ++col) {
      const QVector3D p = proxy(w)->itemAt(r, col)->position();
      ASSERT_EQ(p, QVector3D(col + 1, float(val(g.text(r + 1, col + 1))), r + 1))
          << r << "," << col;
    }
  EXPECT_EQ(proxy(w)->itemAt(2, 4)->y(), 12);
  EXPECT_EQ(proxy(w)->itemAt(4, 2)->y(), -20);
  EXPECT_EQ(proxy(w)->itemAt(0, 15)->y(), 100);
  EXPECT_EQ(proxy(w)->itemAt(15, 0)->y(), -50);

  QStringList rpm, load;
  for (int i = 1; i <= 16; ++i) {
    rpm << QString::number(500 * i);
    load << (i == 3 ? "40" : "--");
  }
  EXPECT_EQ(w->graph()->axisX()->title(), "RPM");
  EXPECT_EQ(w->graph()->axisX()->labels(), rpm);
  EXPECT_EQ(w->graph()->axisZ()->title(), "Load");
  EXPECT_EQ(w->graph()->axisZ()->labels(), load);
  EXPECT_EQ(w->graph()->axisY()->title(), "%");
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Form5GraphTest, UpdateReadsTheMapAgainAndGraphAlsoResetsTheView) {
  Form5Window* w = open_graph();
  ASSERT_NE(w, nullptr);
  ASSERT_NE(w->graph(), nullptr);
  Q3DCamera* camera = w->graph()->scene()->activeCamera();
  const float default_x = camera->xRotation(), default_zoom = camera->zoomLevel();
  camera->setXRotation(default_x + 40);  // as a mouse drag and wheel would
  camera->setZoomLevel(default_zoom + 80);

  app->run([this] { c().MSFlexGrid2.set_text(7, 2, "33"); });
  EXPECT_EQ(proxy(w)->itemAt(6, 1)->y(), 0);  // the graph shows a map read, not a live view
  EXPECT_EQ(w->Command2->text(), "update");
  w->Command2->click();
  EXPECT_EQ(proxy(w)->itemAt(6, 1)->y(), 33);
  EXPECT_EQ(camera->xRotation(), default_x + 40);
  EXPECT_EQ(camera->zoomLevel(), default_zoom + 80);

  app->run([this] { c().MSFlexGrid2.set_text(7, 2, "-7.5"); });
  EXPECT_EQ(w->Command1->text(), "Graph");
  w->Command1->click();
  EXPECT_EQ(heights(w, 6)[1], -7.5f);
  EXPECT_EQ(camera->xRotation(), default_x);
  EXPECT_EQ(camera->zoomLevel(), default_zoom);
  run_events_for(100);
}

}  // namespace
}  // namespace nerit::ui

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
