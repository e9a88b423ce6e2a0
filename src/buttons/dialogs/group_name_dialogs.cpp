#include "buttons/dialogs/group_name_dialogs.h"

#include <utility>

#include "framework/controls/edit.h"
#include "resources/dialogs.h"

ziGroupNameDialog::ziGroupNameDialog(zWindow* mainWindow, std::uint32_t resourceId,
                                     const RWCString& name)
    : ziNameDialog(mainWindow, resourceId, name) {
  finish(nameLine);
}

AddGroupDlg::AddGroupDlg(zWindow* mainWindow, AddGroup onAdd)
    : ziGroupNameDialog(mainWindow, kDialogAddGroup), add(std::move(onAdd)) {
  bindApply();
}

void AddGroupDlg::apply() {
  add(nameText);
  nameText = "";
  nameLine.showData();
}

RenameGroupDlg::RenameGroupDlg(zWindow* mainWindow, const RWCString& name)
    : ziGroupNameDialog(mainWindow, kDialogRenameGroup, name) {}
