#include "ui/qt_colors.h"

namespace nerit::ui {

QColor to_qcolor(Color c, const QPalette& palette) {
  if (is_system_color(c)) {
    switch (c & 0xFF) {
      case 0x05:
        return palette.color(QPalette::Base);
      case 0x08:
        return palette.color(QPalette::Text);
      case 0x0F:
        return palette.color(QPalette::Button);
      case 0x12:
        return palette.color(QPalette::ButtonText);
      default:
        return palette.color(QPalette::Window);
    }
  }
  return QColor(red_of(c), green_of(c), blue_of(c));
}

}  // namespace nerit::ui
