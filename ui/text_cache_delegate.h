#pragma once
// Draws item text from a cache of laid-out lines, so a view that repaints many times a second
// (the log, the live table) does not shape the same text again on every paint. Background,
// foreground, alignment and selection come from the model's roles as with the standard
// delegate.
#include <QCache>
#include <QStaticText>
#include <QStyledItemDelegate>

namespace nerit::ui {

class TextCacheDelegate : public QStyledItemDelegate {
 public:
  explicit TextCacheDelegate(QObject* parent = nullptr) : QStyledItemDelegate(parent) {}
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  // A line laid out once; it stays valid while the font stays the same.
  const QStaticText& line(const QString& text, const QFont& font) const;
  mutable QCache<QString, QStaticText> lines_{512};
  mutable QFont font_;
};

}  // namespace nerit::ui
