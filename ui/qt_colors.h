#pragma once
// BGR colour integers of the models as Qt colours; system colours come from the palette.
#include <QColor>
#include <QPalette>

#include "shell/colors.h"

namespace nerit::ui {

QColor to_qcolor(Color c, const QPalette& palette);

}  // namespace nerit::ui
