// The map grids and their cell editors on the offscreen platform: mouse and keys reach the
// editor handlers with the right model fields, and the widgets show what they did.
#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include "tests/ui/ui_test_support.h"

inline void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& l, std::ostream* os) {
  *os << '"' << l.join("|").toStdString() << '"';
}

namespace nerit::ui {
namespace {

class MapEditorTest : public ProgramTest {
 protected:
  MapEditorTest() { start(); }

  MapGridView* grid() { return w().MSFlexGrid2; }
  QPoint at(int r, int col) { return grid()->visualRect(grid()->model()->index(r, col)).center(); }
  void press(int r, int col, Qt::MouseButton b = Qt::LeftButton) {
    QTest::mousePress(grid()->viewport(), b, {}, at(r, col));
  }
  void drag(QPoint to) { QTest::mouseMove(grid()->viewport(), to); }
  void release(QPoint where, Qt::MouseButton b = Qt::LeftButton) {
    QTest::mouseRelease(grid()->viewport(), b, {}, where);
  }
  void select(int r0, int c0, int r1, int c1) {
    press(r0, c0);
    drag(at(r1, c1));
    release(at(r1, c1));
  }
  void set_cells(std::initializer_list<std::tuple<int, int, const char*>> cells) {
    app->run([&] {
      for (const auto& [r, col, text] : cells) c().MSFlexGrid2.set_text(r, col, text);
    });
  }
  QString shown(int r, int col) { return cell(grid(), r, col); }
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
  const QRect area = grid()->viewport()->rect();
  struct Case {
    QPoint release_at;
    std::array<int, 4> want;
  } cases[] = {
      {at(5, 6), {2, 3, 5, 6}},
      {area.bottomRight() + QPoint(80, 60), {2, 3, 16, 16}},  // outside: the last body cell
      {QPoint(-50, -50), {2, 3, 1, 1}},                       // outside: the first body cell
  };
  for (const Case& k : cases) {
    press(2, 3);
    drag(at(4, 4));
    drag(k.release_at);
    release(k.release_at);
    EXPECT_EQ(block(), k.want) << k.release_at.x();
  }
  press(2, 3);
  drag(at(4, 5));
  EXPECT_EQ(back(4, 5), QPalette().color(QPalette::Active, QPalette::Highlight));
  EXPECT_EQ(back(3, 4), QPalette().color(QPalette::Active, QPalette::Highlight));
  EXPECT_EQ(back(5, 5), QColor(Qt::white));
  EXPECT_EQ(back(4, 6), QColor(Qt::white));
  release(at(4, 5));
  EXPECT_TRUE(w().Text2->isVisible());
  EXPECT_EQ(w().Text2->geometry(), grid()->visualRect(grid()->model()->index(2, 3)));
  EXPECT_EQ(w().Text2->selectedText(), "0");

  // A heading cell takes no press.
  press(0, 8);
  release(at(0, 8));
  EXPECT_EQ(block(), (std::array{2, 3, 4, 5}));
}

TEST_F(MapEditorTest, EnterWritesTheClampedValueIntoTheWholeBlockAndHidesTheEditor) {
  select(9, 9, 9, 9);
  QTest::keyClicks(w().Text2, "7");
  select(2, 3, 3, 5);
  EXPECT_EQ(shown(9, 9), "7");  // clicking away keeps what was typed
  QTest::keyClicks(w().Text2, "150");
  EXPECT_EQ(w().Text2->text(), "150");
  QTest::keyClick(w().Text2, Qt::Key_Return);
  for (int r = 2; r <= 3; ++r)
    for (int col = 3; col <= 5; ++col) EXPECT_EQ(shown(r, col), "100") << r << "," << col;
  EXPECT_EQ(shown(2, 6), "0");
  EXPECT_EQ(shown(4, 3), "0");
  EXPECT_TRUE(w().Text2->isHidden());
}

TEST_F(MapEditorTest, KeysInTheEditorMoveAndStepLikeTheHandlersSay) {
  struct Case {
    const char* name;
    Qt::Key key;
    QString text;
    int want_row, want_col;
    QString want_text;
  } cases[] = {
      {"d steps up", Qt::Key_D, "d", 7, 16, "43"},
      {"A steps down", Qt::Key_A, "A", 7, 16, "41"},
      {"( is not Down", Qt::Key_ParenLeft, "(", 7, 16, "42"},
      {"% is not Left", Qt::Key_Percent, "%", 7, 16, "42"},
      {"Right wraps", Qt::Key_Right, "", 7, 1, "0"},
      {"Down", Qt::Key_Down, "", 8, 16, "0"},
  };
  for (const Case& k : cases) {
    app->run([&] { form().editor.close_box(MapId::Correction); });
    set_cells({{7, 16, "42"}});
    select(7, 16, 7, 16);
    QKeyEvent key(QEvent::KeyPress, k.key, Qt::NoModifier, k.text);
    QApplication::sendEvent(w().Text2, &key);
    EXPECT_EQ(c().MSFlexGrid2.row, k.want_row) << k.name;
    EXPECT_EQ(c().MSFlexGrid2.col, k.want_col) << k.name;
    EXPECT_EQ(w().Text2->text(), k.want_text) << k.name;
    EXPECT_EQ(w().Text2->geometry(),
              grid()->visualRect(grid()->model()->index(k.want_row, k.want_col)))
        << k.name;
  }
}

TEST_F(MapEditorTest, RightPressShowsTheCommandFrameAndInterpolateRowsHidesIt) {
  set_cells({{2, 2, "10"}, {2, 6, "50"}});
  select(2, 2, 2, 6);
  press(2, 6, Qt::RightButton);
  release(at(2, 6), Qt::RightButton);
  ASSERT_TRUE(w().Frame6->isVisible());
  const QPoint pressed_at = grid()->viewport()->mapTo(&app->main_window(), at(2, 6));
  EXPECT_EQ(w().Frame6->pos(), pressed_at);
  QTest::mouseClick(w().Command13, Qt::LeftButton);
  EXPECT_TRUE(w().Frame6->isHidden());
  EXPECT_EQ((QStringList{shown(2, 3), shown(2, 4), shown(2, 5)}), (QStringList{"20", "30", "40"}));
}

TEST_F(MapEditorTest, CopyPasteUndoAndRedoGoThroughTheClipboardAndTheHistory) {
  set_cells({{1, 1, "5"}, {1, 2, "-7"}});
  select(1, 1, 1, 2);
  QTest::keyClick(w().Text2, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "5\t-7");

  press(4, 4);
  release(at(4, 4));
  QTest::keyClick(w().Text2, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ((QStringList{shown(4, 4), shown(4, 5)}), (QStringList{"5", "-7"}));
  EXPECT_TRUE(w().Text2->isHidden());

  struct Case {
    Qt::KeyboardModifiers mods;
    Qt::Key key;
    QStringList want;
  } cases[] = {
      {Qt::ControlModifier, Qt::Key_Z, {"0", "0"}},
      {Qt::ControlModifier, Qt::Key_Y, {"5", "-7"}},
      {Qt::ControlModifier, Qt::Key_Z, {"0", "0"}},
      {Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z, {"5", "-7"}},
  };
  for (const Case& k : cases) {
    QTest::keyClick(grid(), k.key, k.mods);
    EXPECT_EQ((QStringList{shown(4, 4), shown(4, 5)}), k.want) << k.key << " " << k.mods;
  }
}

TEST_F(MapEditorTest, MapControlsReachTheirHandlers) {
  w().Combo1->setCurrentIndex(2);
  emit w().Combo1->activated(2);  // "Analog"
  EXPECT_EQ((QStringList{cell(grid(), 2, 0), cell(grid(), 16, 0), cell(w().MSFlexGrid3, 16, 0)}),
            (QStringList{"333", "5000", "5000"}));

  for (const char* box : {"Map Aktiv", "Aktiv"}) {
    w().check.at(box)->click();
    w().check.at(box)->click();
  }
  EXPECT_FALSE(grid()->isEnabled());
  EXPECT_FALSE(w().MSFlexGrid3->isEnabled());
  w().check.at("Map Aktiv")->click();
  EXPECT_TRUE(grid()->isEnabled());

  // RPM Points: the heading row takes presses and edits like the body, the panels go away.
  w().menu.at("RPM Points")->trigger();
  EXPECT_EQ(back(0, 3), QColor(Qt::white));
  select(0, 3, 0, 3);
  EXPECT_EQ(w().Text2->geometry(), grid()->visualRect(grid()->model()->index(0, 3)));
  EXPECT_EQ(w().Text2->text(), "1500");
  EXPECT_EQ(w().panel_stack->currentIndex(), kPanelCount);
  w().menu.at("RPM Points")->trigger();  // back: every panel visible, the last one on top
  EXPECT_EQ(w().panel_stack->currentWidget(), w().Frame1[kPanelAccelerationFuel]);

  QTest::mouseClick(w().GraphButton, Qt::LeftButton);
  EXPECT_TRUE(app->windows().is_loaded(FormId::Form5));
}

}  // namespace
}  // namespace nerit::ui
