#pragma once

#include <vector>

#include "link/tool_message.h"
#include "prompts/pop_up_dlg_base.h"

class zListBox;
class zMultiList;

/// The prompts that come with a list. They are confirmed and cancelled as each form is.

/// Asks for one item of a sorted list. The field below it shows the choice; it is the answer.
class UIPopUpListDlg : public UIPopUpDlgBase {
 public:
  /// With `readOnlyField` the user can only choose, otherwise also type.
  UIPopUpListDlg(zWindow* parent, const RWCString& message, const PromptItems& items,
                 bool readOnlyField);

  /// Adds further items. Before the dialog runs the first item of all is chosen; after that the
  /// user's choice stays.
  void addItems(const PromptItems& items);

  /// What is in the field; empty when there was nothing to choose from.
  const RWCString& answer();

 private:
  int onSelect(zEvent* event);
  int onFocus(zEvent* event);
  int onDoubleClick(zEvent* event);
  int onFieldFocus(zEvent* event);
  void addField(int y, bool readOnlyField);
  void showChoice();

  zListBox* itemList = nullptr;
  zEditLine* shownEdit = nullptr;
  RWCString shownText;
  RWCString listText;
  int selectedIndex = 0;
};

/// Asks for any number of items, also none, of a list in the order in which it came.
class UIPopUpBitDlg : public UIPopUpDlgBase {
 public:
  UIPopUpBitDlg(zWindow* parent, const RWCString& message, const PromptItems& items);

  /// The chosen items in the form of a message, null when none was chosen. The dialog's own.
  const StringListNode* answer() const { return answerList->head(); }

  int storeData() override;

 private:
  int onDoubleClick(zEvent* event);

  zMultiList* itemList = nullptr;
  std::vector<RWCString> selection;
  std::unique_ptr<StringList> answerList = std::make_unique<StringList>();
};

/// Shows the definitions of a signal's parameters, each as it came, and asks for the values in one
/// line, which the tester checks.
class UIPopUpSigParDlg : public UIPopUpDlgBase {
 public:
  UIPopUpSigParDlg(zWindow* parent, const RWCString& message, const PromptItems& definitions);

  /// Shows `items` at `y`, or with 0 below those that are there, in their place. Returns their
  /// number and 1.
  int addDefinitions(const PromptItems& items, int y);

  /// What is in the field, as typed.
  const RWCString& answer();

 private:
  bool isReadable() const;
  void showDefinitions();

  zStaticText* definitionText = nullptr;
  zEditBox* definitionBox = nullptr;  ///< in front of definitionText if that can't be read whole
  RWCString definitions;
  int visibleHeight = 0;  ///< of the place of the definitions
  zEditLine* answerEdit = nullptr;
  RWCString answerText;
};
