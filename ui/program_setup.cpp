#include "ui/program_setup.h"

#include <QApplication>
#include <QStyleFactory>

namespace nerit::ui {

void set_up_application() {
  // No display name: on X11 Qt appends one to every window title ("Error — Nerit").
  QApplication::setApplicationName("nerit");
  QApplication::setApplicationVersion(NERIT_VERSION);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
}

}  // namespace nerit::ui
