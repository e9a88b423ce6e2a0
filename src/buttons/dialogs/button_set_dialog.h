#pragma once

#include <vector>

#include "framework/core/dialog_frame.h"

class zControl;
class zEditLine;

/// Base of the small dialogs in which the user edits the button set. They only collect and check;
/// what was entered is carried out by who runs the dialog, except for the Apply buttons. One is
/// made ready by its constructor and comes up with run(), which returns 1 for a positive end. The
/// title is set between the two.
class ziButtonSetDialog : public zFormDialog {
 protected:
  /// The controls come from the built-in dialog resource `resourceId`. The dialog is placed over
  /// `mainWindow`.
  ziButtonSetDialog(zWindow* mainWindow, std::uint32_t resourceId);

  /// The control `controlId` of the resource, which must have one of this class.
  template <class T>
  T& control(int controlId) {
    return *windowCast<T>(childById(controlId));
  }
  /// Binds an edit line to `data` and shows its text. The user can type no more than 255
  /// characters.
  zEditLine& bindEditLine(int controlId, RWCString& data);
  /// Stores what the controls hold. Line ends, which come in by pasting, become blanks first: a
  /// text is one line of a button file.
  void readControls();
  /// Binds the press of a button; what is bound last is asked first.
  void bindClick(int controlId, zHandler handler);
  /// The common end of construction: the rule between `above`, the lowest control over the row of
  /// buttons, and that row; then the place on the screen, the focus at `first`, and the form's
  /// setup.
  void finish(zControl& above, zControl& first);

 private:
  void fitLabels();
  void addRule(zControl& above);

  std::vector<zEditLine*> editLines;
};

/// A dialog with a text that needs at least one character that is no blank: the label of a button
/// or the name of a group. As long as it has none, OK silently goes back to its edit line.
class ziNameDialog : public ziButtonSetDialog {
 protected:
  /// `initial` is there to begin with, selected.
  ziNameDialog(zWindow* mainWindow, std::uint32_t resourceId, const RWCString& initial = {});

  /// Binds the button Apply: it calls apply() if the text is good, and always goes back to the
  /// line.
  void bindApply();
  /// Carries out what was entered and empties the dialog; it stays open.
  virtual void apply() {}
  void finish(zControl& above);

  RWCString nameText;
  zEditLine& nameLine;

 private:
  int onAccept(zEvent* event);
  int onApply(zEvent* event);
  int onFirstFocus(zEvent* event);
  bool readName();
};
