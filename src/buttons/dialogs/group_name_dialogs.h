#pragma once

#include <functional>

#include "buttons/dialogs/button_set_dialog.h"

/// Asks for the name of a group; a name that another group has is good too.
class ziGroupNameDialog : public ziNameDialog {
 public:
  const RWCString& name() const { return nameText; }

 protected:
  ziGroupNameDialog(zWindow* mainWindow, std::uint32_t resourceId, const RWCString& name = {});
};

/// Asks for new groups: any number by Apply, and a last one by OK, which the caller adds.
class AddGroupDlg : public ziGroupNameDialog {
 public:
  using AddGroup = std::function<void(const RWCString& name)>;

  /// Apply calls `onAdd`.
  AddGroupDlg(zWindow* mainWindow, AddGroup onAdd);

 protected:
  void apply() override;

 private:
  AddGroup add;
};

/// Asks for another name of a group.
class RenameGroupDlg : public ziGroupNameDialog {
 public:
  RenameGroupDlg(zWindow* mainWindow, const RWCString& name);
};
