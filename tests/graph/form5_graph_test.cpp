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
  void SetUp() override {
    start();
    app->run([this] {
      for (auto [r, col, text] :
           {std::tuple{3, 5, "12,5"}, {5, 3, "-20"}, {1, 16, "100"}, {16, 1, "-50"}, {3, 0, "40"}})
        c().MSFlexGrid2.set_text(r, col, text);
      app->platform().windows.show(FormId::Form5);
    });
    w = dynamic_cast<Form5Window*>(app->windows().widget(FormId::Form5));
    ASSERT_NE(w, nullptr);
    ASSERT_NE(w->graph(), nullptr) << "no OpenGL on the virtual X server";
  }
  float height(int r, int col) {
    return w->graph()->seriesList().at(0)->dataProxy()->itemAt(r, col)->y();
  }
  Form5Window* w = nullptr;
};

TEST_F(Form5GraphTest, SurfaceHoldsTheMapWithHeadingLabels) {
  EXPECT_EQ(w->notice(), nullptr);
  ASSERT_TRUE(wait_until([this] { return w->graph()->isExposed(); }));
  run_events_for(300);  // a few frames drawn

  QSurfaceDataProxy* proxy = w->graph()->seriesList().at(0)->dataProxy();
  ASSERT_EQ(proxy->rowCount(), 16);
  ASSERT_EQ(proxy->columnCount(), 16);
  for (int r = 0; r < 16; ++r)
    for (int col = 0; col < 16; ++col)
      ASSERT_EQ(proxy->itemAt(r, col)->position(),
                QVector3D(col + 1, float(val(c().MSFlexGrid2.text(r + 1, col + 1))), r + 1))
          << r << "," << col;

  QStringList rpm, load;
  for (int i = 1; i <= 16; ++i) {
    rpm << QString::number(500 * i);
    load << (i == 3 ? "40" : "--");
  }
  EXPECT_EQ(w->graph()->axisX()->labels(), rpm);
  EXPECT_EQ(w->graph()->axisZ()->labels(), load);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Form5GraphTest, UpdateReadsTheMapAgainAndGraphAlsoResetsTheView) {
  Q3DCamera* camera = w->graph()->scene()->activeCamera();
  const float default_x = camera->xRotation(), default_zoom = camera->zoomLevel();
  camera->setXRotation(default_x + 40);  // as a mouse drag and wheel would
  camera->setZoomLevel(default_zoom + 80);

  app->run([this] { c().MSFlexGrid2.set_text(7, 2, "33"); });
  EXPECT_EQ(height(6, 1), 0);  // the graph shows a map read, not a live view
  w->Command2->click();        // update
  EXPECT_EQ(height(6, 1), 33);
  EXPECT_EQ(camera->xRotation(), default_x + 40);
  EXPECT_EQ(camera->zoomLevel(), default_zoom + 80);

  app->run([this] { c().MSFlexGrid2.set_text(7, 2, "-7.5"); });
  w->Command1->click();  // Graph
  EXPECT_EQ(height(6, 1), -7.5f);
  EXPECT_EQ(camera->xRotation(), default_x);
  EXPECT_EQ(camera->zoomLevel(), default_zoom);
}

}  // namespace
}  // namespace nerit::ui

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
