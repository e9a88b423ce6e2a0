#pragma once

#include <functional>
#include <string>
#include <vector>

#include "buttons/dialogs/button_set_dialog.h"

class zListBoxBase;

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

/// Shows the labels of a group's buttons; a double click on one is a press on the default button.
class ziButtonListDialog : public ziButtonSetDialog {
 protected:
  ziButtonListDialog(zWindow* mainWindow, std::uint32_t resourceId,
                     const std::vector<std::string>& labels);

  zListBoxBase& list;

 private:
  virtual int onAccept(zEvent* event);
};

/// Asks for one of the buttons. The first is selected to begin with.
class SelectButtonDlg : public ziButtonListDialog {
 public:
  SelectButtonDlg(zWindow* mainWindow, const std::vector<std::string>& labels);

  /// The row of the chosen label, counted from 0; -1 when there are none.
  int chosenRow() const;
};

/// Asks for buttons to delete. OK without a selection leaves the dialog open.
class DeleteButtonDlg : public ziButtonListDialog {
 public:
  DeleteButtonDlg(zWindow* mainWindow, const std::vector<std::string>& labels);

  /// The chosen labels, first to last.
  std::vector<std::string> chosenLabels() const;

 private:
  int onAccept(zEvent* event) override;

  std::vector<RWCString> chosen;
};

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
  int endAsking(int save);
};
