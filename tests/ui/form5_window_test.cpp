// The graph window where the display has no OpenGL: a clear text instead of the graph, and the
// buttons still work.
#include <QLabel>
#include <QPushButton>

#include "tests/ui/ui_test_support.h"
#include "ui/form5_window.h"

namespace nerit::ui {
namespace {

class Form5WindowTest : public ProgramTest {
 protected:
  Form5WindowTest() { start(); }
};

TEST_F(Form5WindowTest, WithoutOpenGlShowsTheTextInsteadOfTheGraph) {
  app->run([this] { app->platform().windows.show(FormId::Form5); });
  auto* w = dynamic_cast<Form5Window*>(app->windows().widget(FormId::Form5));
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(w->isVisible());
  EXPECT_EQ(w->windowTitle(), "Graph");
  EXPECT_EQ(w->graph(), nullptr);
  ASSERT_NE(w->notice(), nullptr);
  EXPECT_EQ(w->notice()->text(), "3-D graph not available: this display offers no OpenGL.");

  app->run([this] { c().MSFlexGrid2.set_text(2, 3, "9"); });
  w->Command2->click();
  EXPECT_EQ(app->program().form5.surface.values[1][2], 9);
  w->Command1->click();
  run_events_for(50);
  EXPECT_TRUE(dialogs.shown.empty());
}

}  // namespace
}  // namespace nerit::ui
