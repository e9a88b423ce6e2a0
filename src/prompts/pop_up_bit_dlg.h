#pragma once

#include <vector>

#include "link/tool_message.h"
#include "prompts/pop_up_dlg_base.h"
#include "prompts/prompt_items.h"

class zMultiList;

/// Asks for any number of items, also none, of a list in the order in which it came.
class UIPopUpBitDlg : public UIPopUpDlgBase {
 public:
  UIPopUpBitDlg(zWindow* parent, const RWCString& message, const PromptItems& items);

  int onOk(zEvent* event) override;
  int onCancel(zEvent* event) override;
  /// The chosen items in the form of a message, null when none was chosen. The dialog's own.
  const StringListNode* answer() const { return answerList->head(); }

 private:
  int onDoubleClick(zEvent* event);
  void makeAnswer();

  zMultiList* itemList = nullptr;
  std::vector<RWCString> selection;
  std::unique_ptr<StringList> answerList = std::make_unique<StringList>();
};
