#pragma once

#include <vector>

#include "buttons/dialogs/button_set_dialog.h"

class zListBoxBase;

/// Shows the labels of a group's buttons; a double click on one is a press on the default button.
class ziButtonListDialog : public ziButtonSetDialog {
 protected:
  ziButtonListDialog(zWindow* mainWindow, std::uint32_t resourceId,
                     const std::vector<RWCString>& labels);

  zListBoxBase& list;

 private:
  virtual int onAccept(zEvent* event);
};

/// Asks for one of the buttons. The first is selected to begin with.
class SelectButtonDlg : public ziButtonListDialog {
 public:
  SelectButtonDlg(zWindow* mainWindow, const std::vector<RWCString>& labels);

  /// The row of the chosen label, counted from 0; -1 when there are none.
  int chosenRow() const;
};

/// Asks for buttons to delete. OK without a selection leaves the dialog open.
class DeleteButtonDlg : public ziButtonListDialog {
 public:
  DeleteButtonDlg(zWindow* mainWindow, const std::vector<RWCString>& labels);

  /// The chosen labels, first to last.
  const std::vector<RWCString>& chosenLabels() const { return chosen; }

 private:
  int onAccept(zEvent* event) override;

  std::vector<RWCString> chosen;
};
