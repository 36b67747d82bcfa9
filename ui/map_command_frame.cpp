#include "ui/map_command_frame.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace nerit::ui {

MapCommandFrame::MapCommandFrame(const Frame& model, QWidget* parent,
                                 std::function<QPoint(const Frame&)> position)
    : QFrame(parent), m_(model), column_(new QVBoxLayout(this)), position_(std::move(position)) {
  setFrameShape(QFrame::StyledPanel);
  setFrameShadow(QFrame::Raised);
  setAutoFillBackground(true);
  column_->setContentsMargins(4, 4, 4, 4);
  column_->setSpacing(3);
  hide();
}

QPushButton* MapCommandFrame::add_button(bool small) {
  auto* b = new QPushButton(this);
  if (small) {
    QFont f = b->font();
    f.setPointSizeF(f.pointSizeF() * 0.8);
    b->setFont(f);
    b->setMaximumHeight(b->fontMetrics().height() + 6);
  }
  column_->addWidget(b);
  return b;
}

void MapCommandFrame::refresh() {
  if (!m_.visible) {
    if (!isHidden()) hide();
    return;
  }
  if (isEnabled() != m_.enabled) setEnabled(m_.enabled);
  if (size() != sizeHint()) resize(sizeHint());
  QWidget* host = parentWidget();
  const QPoint wanted = position_(m_);
  const QPoint at(std::clamp(wanted.x(), 0, std::max(0, host->width() - width())),
                  std::clamp(wanted.y(), 0, std::max(0, host->height() - height())));
  if (pos() != at) move(at);
  if (isHidden()) {
    show();
    raise();
  }
}

}  // namespace nerit::ui
