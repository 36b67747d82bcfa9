#pragma once
// Names for assistive technology and UI automation: a widget's accessible name is what a
// person calls it (its caption, or a short name for a control without one), its accessible
// description the control's own name ("Command9", "MSFlexGrid2", "Label4(0)").
#include <QAction>
#include <QString>
#include <QWidget>

namespace nerit::ui {

inline void name_widget(QWidget* w, const QString& name, const QString& control) {
  if (w->accessibleName() != name) w->setAccessibleName(name);
  if (w->accessibleDescription() != control) w->setAccessibleDescription(control);
  if (w->objectName() != control) w->setObjectName(control);
}

// Menu entries carry their name as text; the control's name goes with them as well.
inline void name_action(QAction* a, const QString& control) {
  a->setObjectName(control);
  a->setWhatsThis(control);
}

}  // namespace nerit::ui
