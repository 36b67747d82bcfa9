#pragma once
// The splash picture (Form4), drawn rather than loaded so the program needs no image files.
#include <QWidget>

namespace nerit::ui {

class SplashWindow : public QWidget {
 public:
  SplashWindow(int width_px, int height_px);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace nerit::ui
