#pragma once

#include "buttons/dialogs/button_set_dialog.h"

/// Asks whether changes are to be saved. Save and Discard are positive ends, Cancel is none.
class SaveChangesDlg : public ziButtonSetDialog {
 public:
  /// Asks `question`.
  SaveChangesDlg(zWindow* mainWindow, const RWCString& question);

  /// After a positive end: 1 for Save, 0 for Discard.
  int saveRequested = 0;

 private:
  int onSave(zEvent* event);
  int onDiscard(zEvent* event);
  int endWith(int save);
};
