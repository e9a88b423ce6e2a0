// The prompt for one item of a list. It is made ready by the first message and filled by as many as
// follow, so that the choice is made anew with every one of them until the dialog runs.

#include "prompts/pop_up_list_dlg.h"

#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/core/messages.h"

namespace {

constexpr zDimension kStartSize = {350, 300};
constexpr std::uint32_t kSortedListStyle = 0x50B10103;

}  // namespace

UIPopUpListDlg::UIPopUpListDlg(zWindow* parent, const RWCString& message, const PromptItems& items,
                               bool readOnlyField)
    : UIPopUpDlgBase(parent, kStartSize) {
  int y = addMessageText(message, gapY) + gapY;
  itemList = new zListBox(this, rowAt(y, unitY * 20), kSortedListStyle, nextId());
  itemList->setBoundString(&listText);
  itemList->setNotify(this, toHandler(&UIPopUpListDlg::onDoubleClick), kListDoubleClick);
  itemList->setNotify(this, toHandler(&UIPopUpListDlg::onSelect), kListSelectionChanged);
  itemList->addHandler(this, toHandler(&UIPopUpListDlg::onFocus), kMsgFocusIn);
  itemList->addHandler(this, toHandler(&UIPopUpListDlg::onFocus), kMsgFocusOut);
  y += unitY * 20 + gapY;
  addField(y, readOnlyField);
  addItems(items);
  setFirstFocus(*itemList);
  y += unitY * 3 + gapY;
  finish(y);
}

void UIPopUpListDlg::addField(int y, bool readOnlyField) {
  shownEdit = addEditLine(y, &shownText);
  shownEdit->setNotify(this, toHandler(&UIPopUpListDlg::onFieldFocus), kEditFocusGained);
  if (readOnlyField) {
    shownEdit->disable();
  }
}

void UIPopUpListDlg::addItems(const PromptItems& items) {
  itemList->addAll(items);
  if (!isRunning() || itemList->selection() < 0) {
    itemList->setCurSel(0);
  }
  // Sorting may have moved the row that is chosen.
  selectedIndex = itemList->selection();
  showChoice();
}

void UIPopUpListDlg::showChoice() {
  itemList->itemText(shownText, -1);
  shownEdit->showData();
}

int UIPopUpListDlg::onSelect(zEvent* /*event*/) {
  selectedIndex = itemList->selection();
  showChoice();
  return 0;
}

int UIPopUpListDlg::onFocus(zEvent* event) {
  if (event->message == kMsgFocusIn) {
    showChoice();
    itemList->setCurSel(selectedIndex);
  }
  return 0;
}

int UIPopUpListDlg::onFieldFocus(zEvent* /*event*/) {
  itemList->setCurSel(-1);
  shownEdit->setSelection(0, shownEdit->textLength());
  return 0;
}

int UIPopUpListDlg::onDoubleClick(zEvent* /*event*/) {
  storeData();
  return endWith(1);
}

int UIPopUpListDlg::onOk(zEvent* /*event*/) {
  shownEdit->storeData();
  shownEdit->showData();
  return endWith(1);
}

int UIPopUpListDlg::onCancel(zEvent* /*event*/) {
  return endWith(0);
}

const RWCString& UIPopUpListDlg::answer() {
  shownEdit->storeData();
  return shownText;
}
