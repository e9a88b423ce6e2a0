#include "buttons/dialogs/button_text_dialogs.h"

#include <utility>

#include "framework/controls/edit.h"
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
