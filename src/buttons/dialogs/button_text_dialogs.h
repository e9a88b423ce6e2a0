#pragma once

#include <functional>

#include "buttons/dialogs/button_set_dialog.h"

/// Asks for label and definition of a button. The definition may be empty.
class ziButtonTextDialog : public ziNameDialog {
 public:
  const RWCString& label() const { return nameText; }
  const RWCString& definition() const { return definitionText; }

 protected:
  ziButtonTextDialog(zWindow* mainWindow, std::uint32_t resourceId, const RWCString& label = {},
                     const RWCString& definition = {});

  RWCString definitionText;
  zEditLine& definitionLine;
};

/// Asks for new buttons: any number by Apply, and a last one by OK, which the caller adds.
class AddButtonDlg : public ziButtonTextDialog {
 public:
  using AddButton = std::function<void(const RWCString& label, const RWCString& definition)>;

  /// Apply calls `onAdd`.
  AddButtonDlg(zWindow* mainWindow, AddButton onAdd);

 protected:
  void apply() override;

 private:
  AddButton add;
};

/// Asks for another label and definition of a button.
class EditButtonDlg : public ziButtonTextDialog {
 public:
  EditButtonDlg(zWindow* mainWindow, const RWCString& label, const RWCString& definition);
};
