#pragma once

#include <memory>
#include <vector>

#include "framework/core/dialog_frame.h"
#include "framework/draw/measure.h"

class zControl;
class zEditBox;
class zEditLine;
class zGroupBox;
class zPushButton;
class zStaticText;
struct StringListNode;

/// The items that a question brings along.
using PromptItems = std::vector<RWCString>;

/// Copies of the texts from `head` on; null gives none.
PromptItems promptItems(const StringListNode* head);

/// Title of all prompts; questions are told apart by it too.
extern RWCString popUpTitle;

/// Base of the dialogs in which the user answers the tester: title, measures, text, and the row of
/// OK and Cancel. Everything is placed by the size of the prompts' font.
///
/// A prompt is made ready by its constructor and comes up with run(); until then it waits unseen.
class UIPopUpDlgBase : public zFormDialog {
 public:
  /// The buttons' own operations, asked before the form's; non-zero keeps the form out.
  virtual int onOk(zEvent* event);
  virtual int onCancel(zEvent* event);

  void setup(int flags) override;

  /// 1 after a valid OK, else 0: the status, by the name that it has among the prompts.
  int& accepted = status;

 protected:
  /// Of `size` only the height counts, and that until addButtonRow.
  UIPopUpDlgBase(zWindow* parent, const zDimension& size);

  /// Moves rows that are yet to be added closer together, as far as their controls allow, so that
  /// `rows` units of height with the decoration stay on the screen.
  void fitRows(int rows);
  /// Adds the prompt's text at `y`; returns the y below it.
  int addMessageText(const RWCString& wording, int y);
  /// Adds an edit line bound to `bound` at `y`.
  zEditLine* addEditLine(int y, RWCString* bound);
  /// Adds the line and the two buttons at `y` and fits the dialog's height.
  void addButtonRow(int y);
  /// The common end of construction: the button row at `y`, then all that makes the dialog ready.
  void finish(int y);

  /// A place over the whole width between the margins.
  zSizer* rowAt(int y, int height) const;
  int rowWidth() const { return clientRect.width() - 2 * marginX; }
  /// A static text over the whole width. `wording` is shown as it is: it has no mnemonics.
  zStaticText* addStaticText(const RWCString& wording, int y, int height);
  /// The same in a read-only box that wraps long lines and scrolls.
  zEditBox* addTextBox(const RWCString& wording, int y, int height);
  /// Whether a static text shows every line of `wording` from end to end.
  bool linesFit(const RWCString& wording) const;
  /// The height that texts may take of a dialog of which `others` pixels are used already, so that
  /// it stays on the screen with its decoration; a few lines at least.
  int roomForText(int others) const;
  int nextId() { return ++lastId; }

  // Measures in pixels; 4 dialog units each way.
  int unitX = 0;
  int unitY = 0;
  int gapY = 0;     ///< between rows
  int marginX = 0;  ///< at the left and at the right
  zRect clientRect;
  std::unique_ptr<zDialogUnit> units;

  // The controls belong to the dialog's window tree.
  zControl* messageText = nullptr;  ///< a static text, or a box if that can't show it whole
  zPushButton* okButton = nullptr;
  zPushButton* cancelButton = nullptr;
  zGroupBox* separator = nullptr;

 private:
  int lastId = 100;  ///< beyond the ids of the buttons
};

/// `text` as a static text must be given it to show it as it is.
RWCString withoutMnemonics(const RWCString& text);

/// Line feeds and 1.
int lineCount(const RWCString& text);
