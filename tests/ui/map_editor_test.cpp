// The map grids and their cell editors on the offscreen platform: mouse and keys reach the
// editor handlers with the right model fields, and the widgets show what they did.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include "tests/ui/ui_test_support.h"
#include "ui/form5_window.h"

inline void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << s.toStdString() << '"';
}

namespace nerit::ui {
namespace {

class MapEditorTest : public ProgramTest {
 protected:
  MapEditorTest() { start(); }

  MapGridView* grid() { return w().MSFlexGrid2; }
  QRect rect(int r, int col) { return grid()->visualRect(grid()->model()->index(r, col)); }
  QPoint at(int r, int col) { return rect(r, col).center(); }
  // Where the editor box covers that cell, in its own parent's coordinates.
  QRect over(int r, int col) {
    const QRect cell = rect(r, col);
    return {grid()->viewport()->mapTo(w().Text2->parentWidget(), cell.topLeft()), cell.size()};
  }
  void press(QPoint p, Qt::MouseButton b = Qt::LeftButton) {
    QTest::mousePress(grid()->viewport(), b, {}, p);
  }
  void release(QPoint p, Qt::MouseButton b = Qt::LeftButton) {
    QTest::mouseRelease(grid()->viewport(), b, {}, p);
  }
  void select(int r0, int c0, int r1, int c1) {
    press(at(r0, c0));
    QTest::mouseMove(grid()->viewport(), at(r1, c1));
    release(at(r1, c1));
  }
  void set_cells(std::initializer_list<std::tuple<int, int, const char*>> cells) {
    app->run([&] {
      for (const auto& [r, col, text] : cells) c().MSFlexGrid2.set_text(r, col, text);
    });
  }
  QString shown(std::initializer_list<std::pair<int, int>> cells) {
    QStringList out;
    for (auto [r, col] : cells) out << cell(grid(), r, col);
    return out.join("|");
  }
  QColor back(int r, int col) {
    return grid()->model()->index(r, col).data(Qt::BackgroundRole).value<QBrush>().color();
  }
  // Start row and column, end row and column.
  std::array<int, 4> block() {
    const SelectedBlock& b = form().maps.block;
    return {b.start_row, b.start_col, b.end_row, b.end_col};
  }
};

TEST_F(MapEditorTest, DragSelectsTheBlockWhereverTheButtonComesUp) {
  const QPoint outside_after = grid()->viewport()->rect().bottomRight() + QPoint(80, 60);
  for (auto [release_at, want] : {std::pair{at(5, 6), std::array{2, 3, 5, 6}},
                                  {outside_after, {2, 3, 16, 16}},      // the last body cell
                                  {QPoint(-50, -50), {2, 3, 1, 1}}}) {  // the first body cell
    press(at(2, 3));
    QTest::mouseMove(grid()->viewport(), at(4, 4));
    QTest::mouseMove(grid()->viewport(), release_at);
    release(release_at);
    EXPECT_EQ(block(), want) << release_at.x();
  }
  // While dragging the block shows; the editor sits over the pressed cell.
  press(at(2, 3));
  QTest::mouseMove(grid()->viewport(), at(4, 5));
  const QColor highlight = QPalette().color(QPalette::Active, QPalette::Highlight);
  EXPECT_EQ(back(4, 5), highlight);
  EXPECT_EQ(back(3, 4), highlight);
  EXPECT_EQ(back(5, 5), QColor(Qt::white));
  EXPECT_EQ(back(4, 6), QColor(Qt::white));
  EXPECT_EQ(back(2, 3), QColor(Qt::white));  // the current cell keeps its colours
  release(at(4, 5));
  EXPECT_TRUE(w().Text2->isVisible());
  EXPECT_EQ(w().Text2->geometry(), over(2, 3));
  EXPECT_EQ(w().Text2->selectedText(), "0");

  select(0, 8, 0, 8);  // a heading cell takes no press
  EXPECT_EQ(block(), (std::array{2, 3, 4, 5}));
}

// Each key reaches the handler with its code and character; the editor follows the cell.
TEST_F(MapEditorTest, KeysInTheEditorReachTheHandlers) {
  struct Case {
    Qt::Key key;
    QString text;
    int want_row, want_col;
    QString want_text;
  } cases[] = {
      {Qt::Key_D, "d", 7, 16, "43"},          // up
      {Qt::Key_A, "A", 7, 16, "41"},          // down
      {Qt::Key_ParenLeft, "(", 7, 16, "42"},  // not Down, whose key code is 40 too
      {Qt::Key_Right, "", 7, 1, "42"},        // wraps; the value goes along
      {Qt::Key_Down, "", 8, 16, "42"},
      {Qt::Key_Return, "\r", 7, 16, ""},  // commits and closes
  };
  for (const Case& k : cases) {
    app->run([&] { form().editor.close_box(MapId::Correction); });
    set_cells({{7, 16, "42"}});
    select(7, 16, 7, 16);
    QKeyEvent key(QEvent::KeyPress, k.key, Qt::NoModifier, k.text);
    QApplication::sendEvent(w().Text2, &key);
    EXPECT_EQ(c().MSFlexGrid2.row, k.want_row) << k.text.toStdString();
    EXPECT_EQ(c().MSFlexGrid2.col, k.want_col) << k.text.toStdString();
    EXPECT_EQ(w().Text2->isVisible() ? w().Text2->text() : "", k.want_text) << k.key;
    EXPECT_EQ(w().Text2->geometry(), over(k.want_row, k.want_col)) << k.key;
  }
}

// A right press inside a dragged block leaves the block as it is; the frame shows at the grid's
// corner, where the model puts it, also for a press on a heading.
TEST_F(MapEditorTest, RightPressShowsTheCommandFrameAndKeepsTheBlockForItsCommands) {
  set_cells({{2, 2, "10"}, {2, 6, "50"}});
  select(2, 2, 2, 6);
  press(at(2, 4), Qt::RightButton);
  release(at(2, 4), Qt::RightButton);
  ASSERT_TRUE(w().Frame6->isVisible());
  EXPECT_EQ(block(), (std::array{2, 2, 2, 6}));
  EXPECT_EQ(w().Frame6->pos(), grid()->mapTo(&app->main_window(), QPoint(0, 0)));
  QTest::mouseClick(w().Command13, Qt::LeftButton);  // interpolate rows
  EXPECT_TRUE(w().Frame6->isHidden());
  EXPECT_EQ(shown({{2, 2}, {2, 3}, {2, 4}, {2, 5}, {2, 6}}), "10|20|30|40|50");

  press(at(0, 5), Qt::RightButton);
  release(at(0, 5), Qt::RightButton);
  EXPECT_TRUE(w().Frame6->isVisible());
  EXPECT_EQ(block(), (std::array{2, 2, 2, 6}));
}

// The editor stays over the cell it was placed on while the grid's current cell moves away.
TEST_F(MapEditorTest, TheEditorStaysWhereItWasPlaced) {
  select(3, 3, 3, 3);
  ASSERT_TRUE(w().Text2->isVisible());
  app->run([this] {
    c().Combo1.select(2);
    form().axes.Combo1_Click();  // fills the load axis, ending on row 16, column 0
  });
  EXPECT_EQ(c().MSFlexGrid2.row * 100 + c().MSFlexGrid2.col, 1600);
  EXPECT_EQ(w().Text2->geometry(), over(3, 3));

  QTest::mouseClick(w().MSFlexGrid3->viewport(), Qt::LeftButton, {},
                    w().MSFlexGrid3->visualRect(w().MSFlexGrid3->model()->index(4, 4)).center());
  const QRect placed = w().Text5->geometry();
  app->run([this] {
    form().maps.automap_rpm[9] = 4500;
    form().maps.automap_load[12] = 3666;
    form().automap.automap(4500, 3666, 77);  // fills (12, 9) and makes it current
  });
  EXPECT_EQ(c().MSFlexGrid3.row * 100 + c().MSFlexGrid3.col, 1209);
  EXPECT_EQ(w().Text5->geometry(), placed);
}

TEST_F(MapEditorTest, CopyPasteUndoAndRedoGoThroughTheClipboardAndTheHistory) {
  set_cells({{1, 1, "5"}, {1, 2, "-7"}});
  select(1, 1, 1, 2);
  QTest::keyClick(w().Text2, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "5\t-7");
  select(4, 4, 4, 4);
  QTest::keyClick(w().Text2, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(shown({{4, 4}, {4, 5}}), "5|-7");
  EXPECT_TRUE(w().Text2->isHidden());
  // The keys on the grid itself, the editor being closed.
  for (auto [key, mods, want] :
       {std::tuple{Qt::Key_Z, Qt::KeyboardModifiers(Qt::ControlModifier), "0|0"},
        {Qt::Key_Y, Qt::ControlModifier, "5|-7"},
        {Qt::Key_Z, Qt::ControlModifier, "0|0"},
        {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, "5|-7"}}) {
    QTest::keyClick(grid(), key, mods);
    EXPECT_EQ(shown({{4, 4}, {4, 5}}), want) << key << " " << mods;
  }
}

TEST_F(MapEditorTest, MapControlsReachTheirHandlers) {
  w().Combo1->setCurrentIndex(2);
  emit w().Combo1->activated(2);  // "Analog"
  EXPECT_EQ(cell(grid(), 2, 0), "333");
  for (const char* box : {"Map Aktiv", "Aktiv", "Map Aktiv", "Aktiv"}) w().check.at(box)->click();
  EXPECT_FALSE(grid()->isEnabled());
  EXPECT_FALSE(w().MSFlexGrid3->isEnabled());
  w().check.at("Map Aktiv")->click();
  EXPECT_TRUE(grid()->isEnabled());

  // RPM Points: the heading row takes presses and edits like the body, the panels go away.
  w().menu.at("RPM Points")->trigger();
  select(0, 3, 0, 3);
  EXPECT_EQ(w().Text2->geometry(), over(0, 3));
  EXPECT_EQ(w().Text2->text(), "1500");
  EXPECT_EQ(w().panel_stack->currentIndex(), kPanelCount);
  w().menu.at("RPM Points")->trigger();  // back: every panel visible, the last one on top
  EXPECT_EQ(w().panel_stack->currentWidget(), w().Frame1[kPanelAccelerationFuel]);

  // The graph window, on a display without OpenGL: the text instead of the graph.
  QTest::mouseClick(w().GraphButton, Qt::LeftButton);
  auto* graph = dynamic_cast<Form5Window*>(app->windows().widget(FormId::Form5));
  ASSERT_NE(graph, nullptr);
  EXPECT_TRUE(graph->isVisible());
  EXPECT_EQ(graph->graph(), nullptr);
  ASSERT_NE(graph->notice(), nullptr);
  EXPECT_EQ(graph->notice()->text(), "3-D graph not available: this display offers no OpenGL.");
  EXPECT_TRUE(dialogs.shown.empty());
}

}  // namespace
}  // namespace nerit::ui
