#include "buttons/dialogs/button_list_dialogs.h"

#include "framework/controls/button.h"
#include "framework/controls/multi_list.h"
#include "resources/dialogs.h"

ziButtonListDialog::ziButtonListDialog(zWindow* mainWindow, std::uint32_t resourceId,
                                       const std::vector<RWCString>& labels)
    : ziButtonSetDialog(mainWindow, resourceId), list(control<zListBoxBase>(kDialogList)) {
  for (const RWCString& label : labels) {
    list.add(label.c_str());
  }
  list.setNotify(this, toHandler(&ziButtonListDialog::onAccept), kListDoubleClick);
  finish(list, list);
  // Newer than the form's own binding, so asked before it.
  bindClick(kDialogOk, toHandler(&ziButtonListDialog::onAccept));
}

int ziButtonListDialog::onAccept(zEvent* event) {
  return onOkClicked(event);
}

SelectButtonDlg::SelectButtonDlg(zWindow* mainWindow, const std::vector<RWCString>& labels)
    : ziButtonListDialog(mainWindow, kDialogSelectButton, labels) {
  list.setCurSel(0);
}

int SelectButtonDlg::chosenRow() const {
  return list.selection();
}

DeleteButtonDlg::DeleteButtonDlg(zWindow* mainWindow, const std::vector<RWCString>& labels)
    : ziButtonListDialog(mainWindow, kDialogDeleteButton, labels) {
  control<zMultiList>(kDialogList).setBoundList(&chosen);
}

int DeleteButtonDlg::onAccept(zEvent* /*event*/) {
  const int isStored = storeData();
  if (isStored != 0 && !chosen.empty()) {
    endDialog();
  } else {
    // The window manager's close leaves it as it is.
    status = 0;
  }
  return 1;
}
