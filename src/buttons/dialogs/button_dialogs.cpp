// The dialogs of the button set, but for what they have in common.

#include "buttons/dialogs/button_dialogs.h"

#include <utility>

#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "resources/dialogs.h"

ziButtonTextDialog::ziButtonTextDialog(zWindow* mainWindow, std::uint32_t resourceId,
                                       const RWCString& label, const RWCString& definition)
    : ziNameDialog(mainWindow, resourceId, label),
      definitionText(definition),
      definitionLine(bindEditLine(kDialogSecondEdit, definitionText)) {
  finish(definitionLine);
}

AddButtonDlg::AddButtonDlg(zWindow* mainWindow, AddButton onAdd)
    : ziButtonTextDialog(mainWindow, kDialogAddButton), add(std::move(onAdd)) {
  bindApply();
}

void AddButtonDlg::apply() {
  add(nameText, definitionText);
  nameText = "";
  definitionText = "";
  nameLine.showData();
  definitionLine.showData();
}

EditButtonDlg::EditButtonDlg(zWindow* mainWindow, const RWCString& label,
                             const RWCString& definition)
    : ziButtonTextDialog(mainWindow, kDialogEditButton, label, definition) {}

ziButtonListDialog::ziButtonListDialog(zWindow* mainWindow, std::uint32_t resourceId,
                                       const std::vector<std::string>& labels)
    : ziButtonSetDialog(mainWindow, resourceId), list(control<zListBoxBase>(kDialogList)) {
  for (const std::string& label : labels) {
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

SelectButtonDlg::SelectButtonDlg(zWindow* mainWindow, const std::vector<std::string>& labels)
    : ziButtonListDialog(mainWindow, kDialogSelectButton, labels) {
  list.setCurSel(0);
}

int SelectButtonDlg::chosenRow() const {
  return list.selection();
}

DeleteButtonDlg::DeleteButtonDlg(zWindow* mainWindow, const std::vector<std::string>& labels)
    : ziButtonListDialog(mainWindow, kDialogDeleteButton, labels) {
  control<zMultiList>(kDialogList).setBoundList(&chosen);
}

std::vector<std::string> DeleteButtonDlg::chosenLabels() const {
  std::vector<std::string> labels;
  for (const RWCString& label : chosen) {
    labels.push_back(label.str());
  }
  return labels;
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

SaveChangesDlg::SaveChangesDlg(zWindow* mainWindow, const RWCString& question)
    : ziButtonSetDialog(mainWindow, kDialogSaveChanges) {
  auto& shown = control<zStaticText>(kDialogText);
  shown.setText(question.c_str());
  bindClick(kDialogSave, toHandler(&SaveChangesDlg::onSave));
  bindClick(kDialogDiscard, toHandler(&SaveChangesDlg::onDiscard));
  finish(shown, control<zDefPushButton>(kDialogSave));
}

int SaveChangesDlg::onSave(zEvent* /*event*/) {
  return endAsking(1);
}

int SaveChangesDlg::onDiscard(zEvent* /*event*/) {
  return endAsking(0);
}

int SaveChangesDlg::endAsking(int save) {
  saveRequested = save;
  storeData();
  endDialog();
  return 1;
}
