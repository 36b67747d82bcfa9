// Under a real X server: the titles the window manager gets are exactly the program's texts,
// with nothing added by the toolkit.
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QApplication>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QWindow>
#include <cstdlib>
#include <cstring>

#include "tests/support/fake_platform.h"
#include "ui/application.h"
#include "ui/program_setup.h"

namespace nerit::ui {
namespace {

xcb_atom_t atom(xcb_connection_t* x, const char* name) {
  const auto length = static_cast<std::uint16_t>(std::strlen(name));
  xcb_intern_atom_reply_t* reply =
      xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, length, name), nullptr);
  xcb_atom_t a = XCB_ATOM_NONE;
  if (reply) a = reply->atom;
  std::free(reply);
  return a;
}

// The window's _NET_WM_NAME as the window manager reads it.
std::string x_title(QWidget* w) {
  auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return "(no X11)";
  xcb_connection_t* x = x11->connection();
  xcb_get_property_reply_t* reply = xcb_get_property_reply(
      x,
      xcb_get_property(x, 0, static_cast<xcb_window_t>(w->windowHandle()->winId()),
                       atom(x, "_NET_WM_NAME"), atom(x, "UTF8_STRING"), 0, 1024),
      nullptr);
  std::string title;
  if (reply) {
    title.assign(static_cast<const char*>(xcb_get_property_value(reply)),
                 static_cast<std::size_t>(xcb_get_property_value_length(reply)));
    std::free(reply);
  }
  return title;
}

TEST(WindowTitles, TheWindowAndItsBoxesCarryExactlyTheirTexts) {
  testing::TempFolder folder;
  Application app({folder.path(), false, nullptr, {}, ""});  // real boxes
  app.start();
  QApplication::processEvents();
  EXPECT_EQ(x_title(&app.main_window()), "Nerit: ");

  std::string box_title;
  QTimer::singleShot(300, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    box_title = x_title(box);
    box->button(QMessageBox::Ok)->click();
  });
  app.main_window().widgets().Command9->click();  // no load type: "Fehler"
  EXPECT_EQ(box_title, "Fehler");
}

}  // namespace
}  // namespace nerit::ui

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  nerit::ui::set_up_application();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
