#pragma once

#include "prompts/pop_up_dlg_base.h"
#include "prompts/prompt_items.h"

class zListBox;

/// Asks for one item of a sorted list. The field below it shows the choice; it is the answer.
class UIPopUpListDlg : public UIPopUpDlgBase {
 public:
  /// With `readOnlyField` the user can only choose, otherwise also type.
  UIPopUpListDlg(zWindow* parent, const RWCString& message, const PromptItems& items,
                 bool readOnlyField);

  /// Adds further items. Before the dialog runs the first item of all is chosen; after that the
  /// user's choice stays.
  void addItems(const PromptItems& items);

  int onOk(zEvent* event) override;
  int onCancel(zEvent* event) override;
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
