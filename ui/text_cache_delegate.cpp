#include "ui/text_cache_delegate.h"

#include <QApplication>
#include <QPainter>

namespace nerit::ui {

namespace {

constexpr int kMargin = 3;  // pixels between the text and the cell's edge

}  // namespace

const QStaticText& TextCacheDelegate::line(const QString& text, const QFont& font) const {
  if (font != font_) {
    lines_.clear();
    font_ = font;
  }
  if (QStaticText* cached = lines_.object(text)) return *cached;
  auto* laid = new QStaticText(text);
  laid->setTextFormat(Qt::PlainText);
  laid->setPerformanceHint(QStaticText::AggressiveCaching);
  laid->prepare(QTransform(), font);
  lines_.insert(text, laid);
  return *lines_.object(text);
}

void TextCacheDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
  const QRect r = option.rect;
  const bool selected = option.state & QStyle::State_Selected;
  const QPalette::ColorGroup group =
      option.state & QStyle::State_Enabled ? QPalette::Normal : QPalette::Disabled;
  const QVariant back = index.data(Qt::BackgroundRole);
  if (selected)
    painter->fillRect(r, option.palette.brush(group, QPalette::Highlight));
  else if (back.canConvert<QBrush>())
    painter->fillRect(r, back.value<QBrush>());

  const QString text = index.data(Qt::DisplayRole).toString();
  if (!text.isEmpty()) {
    const QVariant fore = index.data(Qt::ForegroundRole);
    QPen pen(selected ? option.palette.color(group, QPalette::HighlightedText)
                      : option.palette.color(group, QPalette::Text));
    if (!selected && fore.canConvert<QBrush>()) pen.setColor(fore.value<QBrush>().color());
    const QStaticText& laid = line(text, option.font);
    const QSizeF size = laid.size();
    const QVariant align_role = index.data(Qt::TextAlignmentRole);
    const Qt::Alignment align = align_role.isValid()
                                    ? Qt::Alignment(align_role.toInt())
                                    : Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter);
    qreal x = r.left() + kMargin;
    if (align & Qt::AlignRight) x = r.right() - kMargin - size.width();
    if (align & Qt::AlignHCenter) x = r.left() + (r.width() - size.width()) / 2;
    const qreal y = r.top() + (r.height() - size.height()) / 2;
    painter->save();
    painter->setClipRect(r);
    painter->setFont(option.font);
    painter->setPen(pen);
    painter->drawStaticText(QPointF(x, y), laid);
    painter->restore();
  }
  if (option.state & QStyle::State_HasFocus) {
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.backgroundColor = option.palette.color(group, QPalette::Window);
    const QWidget* widget = option.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
  }
}

}  // namespace nerit::ui
