#include "files/compare_file.h"

#include "files/settings_file.h"
#include "files/tune_file.h"
#include "files/tune_window.h"
#include "link/transfers.h"

namespace nerit {

void CompareFile::compare_Click() {
  if (!load_type_chosen(c_, p_.dialogs)) return;
  const auto file = p_.dialogs.file_dialog(
      {FileDialogRequest::Kind::Open, "Compare with file", vars_.pfad, kInjFilter});
  if (file.empty()) return;
  Comparison result;
  result.file = file;
  result.ours = tune_from_window(c_, vars_);
  result.theirs = read_tune_file(file);
  result.diff = compare_tunes(result.ours, result.theirs);
  if (show) show(result);
}

}  // namespace nerit
