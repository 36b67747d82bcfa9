#include "ui/bindings.h"

#include <QSignalBlocker>
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "ui/qt_colors.h"

namespace nerit::ui {

namespace {

QString qs(const std::string& s) {
  return QString::fromStdString(s);
}

void show_state(QWidget* w, bool visible, bool enabled) {
  if (w->isEnabled() != enabled) w->setEnabled(enabled);
  // Only hide what the model hides; showing follows the parent window.
  if (w->isHidden() == visible) w->setVisible(visible);
}

void set_back_color(QWidget* w, Color c, QPalette::ColorRole role) {
  const QColor want = to_qcolor(c, QPalette());
  if (w->palette().color(role) == want) return;
  QPalette p = w->palette();
  p.setColor(role, want);
  w->setPalette(p);
}

// Remembers the text a widget was last given, so that a refresh converts nothing while the
// model's text stays the same.
class ShownText {
 public:
  template <class Set>
  void show(const std::string& now, Set set) {
    if (shown_ && *shown_ == now) return;
    shown_ = now;
    set(qs(now));
  }

 private:
  std::optional<std::string> shown_;
};

}  // namespace

void Bindings::on_user(Handler h) {
  if (h) run_(h);
}

void Bindings::label(QLabel* w, const Label& m) {
  refreshers_.push_back([w, &m, caption = ShownText()]() mutable {
    caption.show(m.caption, [w](const QString& t) { w->setText(t); });
    set_back_color(w, m.back_color, QPalette::Window);
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::button(QPushButton* w, const CommandButton& m, Handler click) {
  QObject::connect(w, &QPushButton::clicked, w, [this, click] { on_user(click); });
  refreshers_.push_back([w, &m, caption = ShownText()]() mutable {
    caption.show(m.caption, [w](const QString& t) { w->setText(t); });
    set_back_color(w, m.back_color, QPalette::Button);
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::check(QCheckBox* w, CheckBox& m, Handler click) {
  QObject::connect(w, &QCheckBox::clicked, w, [this, &m, click](bool checked) {
    m.value = checked ? 1 : 0;
    on_user(click);
  });
  refreshers_.push_back([w, &m, caption = ShownText()]() mutable {
    caption.show(m.caption, [w](const QString& t) { w->setText(t); });
    if (w->isChecked() != (m.value == 1)) {
      const QSignalBlocker block(w);
      w->setChecked(m.value == 1);
    }
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::combo(QComboBox* w, ComboBox& m, Handler click) {
  QObject::connect(w, &QComboBox::activated, w, [this, &m, click](int index) {
    m.select(index);
    on_user(click);
  });
  refreshers_.push_back(
      [w, &m, items = std::vector<std::string>(), placeholder = ShownText()]() mutable {
        const QSignalBlocker block(w);
        if (items != m.items || w->count() != m.list_count()) {
          w->clear();
          for (const auto& item : m.items) w->addItem(qs(item));
          items = m.items;
        }
        if (w->currentIndex() != m.list_index) w->setCurrentIndex(m.list_index);
        if (m.list_index < 0)
          placeholder.show(m.text, [w](const QString& t) { w->setPlaceholderText(t); });
        show_state(w, m.visible, m.enabled);
      });
}

void Bindings::list(QListWidget* w, ListBox& m, Handler click) {
  QObject::connect(w, &QListWidget::itemClicked, w, [this, w, &m, click](QListWidgetItem* item) {
    m.list_index = w->row(item);
    on_user(click);
  });
  refreshers_.push_back([this, w, &m, dropped = m.dropped, grown = QElapsedTimer()]() mutable {
    const QSignalBlocker block(w);
    // Lines the model let go at its front go here too.
    if (m.dropped != dropped) {
      const auto gone = std::min<long long>(m.dropped - dropped, w->count());
      if (gone > 0) w->model()->removeRows(0, static_cast<int>(gone));
      dropped = m.dropped;
    }
    const int n = m.list_count();
    const int shown = w->count();
    // A log only grows: when the lines shown are still the first ones of the model (their
    // first and last agree), only the new lines are added. Anything else shows it anew.
    auto same = [&](int i) {
      return w->item(i)->text() == qs(m.items[static_cast<std::size_t>(i)]);
    };
    const bool grows = shown <= n && (shown == 0 || (same(0) && same(shown - 1)));
    // Under a stream the log grows by dozens of lines a second: it takes them in a few times a
    // second, as nobody reads faster.
    const bool wait =
        grows && shown < n && paced_ && grown.isValid() && grown.elapsed() < kLogPaceMs;
    if (wait) {
      deferred_ = true;
    } else {
      if (!grows) w->clear();
      const bool added = w->count() < n;
      for (int i = w->count(); i < n; ++i) w->addItem(qs(m.items[static_cast<std::size_t>(i)]));
      if (added) grown.start();
      if (w->currentRow() != m.list_index) w->setCurrentRow(m.list_index);
      if (added && m.list_index < 0) w->scrollToBottom();
    }
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::frame(QGroupBox* w, const Frame& m) {
  refreshers_.push_back([w, &m, caption = ShownText()]() mutable {
    caption.show(m.caption, [w](const QString& t) { w->setTitle(t); });
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::menu(QAction* w, const MenuItem& m, Handler click) {
  QObject::connect(w, &QAction::triggered, w, [this, w, &m, click] {
    // A checkable entry shows the model's mark, not the one Qt flipped on the click.
    if (w->isCheckable() && w->isChecked() != m.checked) w->setChecked(m.checked);
    on_user(click);
  });
  refreshers_.push_back([w, &m, caption = ShownText()]() mutable {
    caption.show(m.caption, [w](const QString& t) { w->setText(t); });
    if (w->isCheckable() && w->isChecked() != m.checked) w->setChecked(m.checked);
    if (w->isEnabled() != m.enabled) w->setEnabled(m.enabled);
    if (w->isVisible() != m.visible) w->setVisible(m.visible);
  });
}

void Bindings::text(QLineEdit* w, TextBox& m, Handler change) {
  QObject::connect(w, &QLineEdit::textEdited, w, [this, &m, change](const QString& t) {
    m.text = t.toStdString();
    on_user(change);
  });
  refreshers_.push_back([w, &m] {
    if (w->text() != qs(m.text)) w->setText(qs(m.text));
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::option(QRadioButton* w, OptionButton& m, std::vector<OptionButton*> group,
                      Handler click) {
  w->setAutoExclusive(false);  // the models decide which button is set, none included
  QObject::connect(w, &QRadioButton::clicked, w, [this, &m, group, click] {
    for (OptionButton* o : group) o->value = o == &m;
    run_(click ? click : Handler([] {}));  // the group's other buttons show the change too
  });
  refreshers_.push_back([w, &m, caption = ShownText()]() mutable {
    caption.show(m.caption, [w](const QString& t) { w->setText(t); });
    if (w->isChecked() != m.value) {
      const QSignalBlocker block(w);
      w->setChecked(m.value);
    }
    show_state(w, m.visible, m.enabled);
  });
}

template <class Model>
void Bindings::range(QAbstractSlider* w, Model& m, Handler scroll, Handler change) {
  auto dragged = std::make_shared<bool>(false);  // the value moved since the press
  QObject::connect(w, &QAbstractSlider::valueChanged, w,
                   [this, w, &m, scroll, change, dragged](int v) {
                     if (m.value == v) return;
                     m.value = v;
                     if (w->isSliderDown()) {
                       *dragged = true;
                       on_user(scroll);
                     } else {
                       on_user(change);
                     }
                   });
  QObject::connect(w, &QAbstractSlider::sliderPressed, w, [dragged] { *dragged = false; });
  QObject::connect(w, &QAbstractSlider::sliderReleased, w, [this, change, dragged] {
    if (std::exchange(*dragged, false)) on_user(change);
  });
  refreshers_.push_back([w, &m] {
    const QSignalBlocker block(w);
    if (w->minimum() != m.min || w->maximum() != m.max) w->setRange(m.min, m.max);
    if (w->value() != m.value && !w->isSliderDown()) w->setValue(m.value);
    show_state(w, m.visible, m.enabled);
  });
}

void Bindings::scroll(QScrollBar* w, ScrollBar& m, Handler scroll, Handler change) {
  range(w, m, std::move(scroll), std::move(change));
}

void Bindings::slider(QSlider* w, Slider& m, Handler scroll, Handler change) {
  range(w, m, std::move(scroll), std::move(change));
}

void Bindings::grid(GridView* w) {
  refreshers_.push_back([w] { w->refresh(); });
}

bool Bindings::refresh(bool paced) {
  paced_ = paced;
  deferred_ = false;
  for (const auto& r : refreshers_) r();
  paced_ = false;
  return deferred_;
}

}  // namespace nerit::ui
