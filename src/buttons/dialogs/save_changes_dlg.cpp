#include "buttons/dialogs/save_changes_dlg.h"

#include "framework/controls/button.h"
#include "framework/controls/static_text.h"
#include "resources/dialogs.h"

SaveChangesDlg::SaveChangesDlg(zWindow* mainWindow, const RWCString& question)
    : ziButtonSetDialog(mainWindow, kDialogSaveChanges) {
  auto& shown = control<zStaticText>(kDialogText);
  shown.setText(question.c_str());
  bindClick(kDialogSave, toHandler(&SaveChangesDlg::onSave));
  bindClick(kDialogDiscard, toHandler(&SaveChangesDlg::onDiscard));
  finish(shown, control<zDefPushButton>(kDialogSave));
}

int SaveChangesDlg::onSave(zEvent* /*event*/) {
  return endWith(1);
}

int SaveChangesDlg::onDiscard(zEvent* /*event*/) {
  return endWith(0);
}

int SaveChangesDlg::endWith(int save) {
  saveRequested = save;
  storeData();
  endDialog();
  return 1;
}
