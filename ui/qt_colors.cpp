#include "ui/qt_colors.h"

namespace nerit::ui {

QColor to_qcolor(Color c, const QPalette& palette) {
  if (is_system_color(c)) {
    switch (c) {
      case kWindowBackground:
        return palette.color(QPalette::Base);
      case kWindowText:
        return palette.color(QPalette::Text);
      case kButtonFace:
        return palette.color(QPalette::Button);
      case kButtonText:
        return palette.color(QPalette::ButtonText);
      default:
        return palette.color(QPalette::Window);
    }
  }
  return QColor(red_of(c), green_of(c), blue_of(c));
}

}  // namespace nerit::ui
