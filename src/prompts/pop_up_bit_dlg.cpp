#include "prompts/pop_up_bit_dlg.h"

#include "framework/controls/multi_list.h"

namespace {

constexpr zDimension kStartSize = {350, 300};
constexpr std::uint32_t kMultipleListStyle = 0x50B10909;

}  // namespace

UIPopUpBitDlg::UIPopUpBitDlg(zWindow* parent, const RWCString& message, const PromptItems& items)
    : UIPopUpDlgBase(parent, kStartSize) {
  int y = addMessageText(message, gapY) + gapY;
  itemList = new zMultiList(this, rowAt(y, unitY * 20), kMultipleListStyle, nextId());
  itemList->setBoundList(&selection);
  itemList->setNotify(this, toHandler(&UIPopUpBitDlg::onDoubleClick), kListDoubleClick);
  itemList->addAll(items);
  setFirstFocus(*itemList);
  y += unitY * 20 + gapY;
  finish(y);
}

void UIPopUpBitDlg::makeAnswer() {
  storeData();
  answerList = std::make_unique<StringList>();
  for (const RWCString& chosen : selection) {
    answerList->append(chosen.view());
  }
}

int UIPopUpBitDlg::onOk(zEvent* /*event*/) {
  makeAnswer();
  return endWith(1);
}

int UIPopUpBitDlg::onDoubleClick(zEvent* /*event*/) {
  makeAnswer();
  endWith(1);
  return 0;
}

int UIPopUpBitDlg::onCancel(zEvent* /*event*/) {
  return endWith(0);
}
