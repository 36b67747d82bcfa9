#pragma once
// The comparison of the window's tune with a settings file: both maps cell by cell with the
// differing cells marked, and the settings that differ. It changes nothing and stays open
// beside the main window.
#include <QDialog>

#include "files/compare_file.h"

class QTableWidget;

namespace nerit::ui {

class CompareDialog : public QDialog {
 public:
  CompareDialog(const Comparison& comparison, QWidget* parent);

  QTableWidget* correction = nullptr;
  QTableWidget* airflow = nullptr;
  QTableWidget* settings = nullptr;
};

// Opens a new comparison window; it deletes itself when closed.
CompareDialog* show_comparison(const Comparison& comparison, QWidget* parent);

}  // namespace nerit::ui
