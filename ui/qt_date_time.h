#pragma once
// A Qt date and time as the program's DateTime, to the second.
#include <QDateTime>

#include "shell/clock_texts.h"

namespace nerit::ui {

inline DateTime date_time_of(const QDateTime& t) {
  return {t.date().year(), t.date().month(),  t.date().day(),
          t.time().hour(), t.time().minute(), t.time().second()};
}

}  // namespace nerit::ui
