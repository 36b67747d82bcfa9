#include "ui/splash_window.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace nerit::ui {

SplashWindow::SplashWindow(int width_px, int height_px)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
  setFixedSize(width_px, height_px);
  setWindowTitle("Nerit");
}

void SplashWindow::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient bg(0, 0, width(), height());
  bg.setColorAt(0, QColor(18, 32, 52));
  bg.setColorAt(1, QColor(40, 78, 120));
  p.fillRect(rect(), bg);

  // A stylised injector spray.
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 170, 40, 200));
  QPainterPath spray;
  const QPointF tip(width() * 0.78, height() * 0.30);
  spray.moveTo(tip);
  spray.lineTo(width() * 0.95, height() * 0.78);
  spray.lineTo(width() * 0.61, height() * 0.78);
  spray.closeSubpath();
  p.drawPath(spray);
  p.setBrush(QColor(200, 210, 220));
  p.drawRoundedRect(QRectF(tip.x() - 14, height() * 0.08, 28, tip.y() - height() * 0.08), 5, 5);

  p.setPen(Qt::white);
  QFont title = font();
  title.setPointSize(36);
  title.setBold(true);
  p.setFont(title);
  p.drawText(QRectF(28, height() * 0.18, width(), 60), Qt::AlignLeft, "Nerit");
  QFont sub = font();
  sub.setPointSize(12);
  p.setFont(sub);
  p.drawText(QRectF(30, height() * 0.48, width(), 24), Qt::AlignLeft, "Piggyback injection tuner");
  p.setPen(QColor(190, 200, 215));
  p.drawText(QRectF(30, height() - 34, width(), 24), Qt::AlignLeft, "Starting…");
}

}  // namespace nerit::ui
