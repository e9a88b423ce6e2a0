// A list may come in several messages: its prompt is made ready by the first and filled by as many
// as follow, so that the choice is made anew with every one of them until the dialog runs.
//
// In the prompt for the values of a signal the rows below the definitions stand in the lower part
// of their static text, as soon as there are more than one, and don't move when more definitions
// come: intended. What would be hidden by them is not lost: the definitions are then in a box with
// a scroll bar, which fills the part of the place that can be seen.

#include "prompts/pop_up_list_dlgs.h"

#include <algorithm>
#include <string>

#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/core/event.h"
#include "framework/draw/font.h"

namespace {

constexpr zDimension kListStartSize = {350, 300};
constexpr zDimension kSigParStartSize = {350, 200};
constexpr std::uint32_t kSortedListStyle = kStyleControlStop | kStyleBorder | kStyleBothScrolls |
                                           kListNotifies | kListSorted | kListAnyHeight;
constexpr std::uint32_t kMultipleListStyle = kStyleControlStop | kStyleBorder | kStyleBothScrolls |
                                             kListNotifies | kListMultiple | kListExtended |
                                             kListAnyHeight;

}  // namespace

UIPopUpListDlg::UIPopUpListDlg(zWindow* parent, const RWCString& message, const PromptItems& items,
                               bool readOnlyField)
    : UIPopUpDlgBase(parent, kListStartSize) {
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

int UIPopUpListDlg::onDoubleClick(zEvent* event) {
  return onOkClicked(event);
}

const RWCString& UIPopUpListDlg::answer() {
  shownEdit->storeData();
  return shownText;
}

UIPopUpBitDlg::UIPopUpBitDlg(zWindow* parent, const RWCString& message, const PromptItems& items)
    : UIPopUpDlgBase(parent, kListStartSize) {
  int y = addMessageText(message, gapY) + gapY;
  itemList = new zMultiList(this, rowAt(y, unitY * 20), kMultipleListStyle, nextId());
  itemList->setBoundList(&selection);
  itemList->setNotify(this, toHandler(&UIPopUpBitDlg::onDoubleClick), kListDoubleClick);
  itemList->addAll(items);
  setFirstFocus(*itemList);
  y += unitY * 20 + gapY;
  finish(y);
}

int UIPopUpBitDlg::storeData() {
  zFormDialog::storeData();
  answerList = std::make_unique<StringList>();
  for (const RWCString& chosen : selection) {
    answerList->append(chosen.view());
  }
  return status;
}

int UIPopUpBitDlg::onDoubleClick(zEvent* event) {
  onOkClicked(event);
  return 0;
}

UIPopUpSigParDlg::UIPopUpSigParDlg(zWindow* parent, const RWCString& message,
                                   const PromptItems& items)
    : UIPopUpDlgBase(parent, kSigParStartSize) {
  const int top = addMessageText(message, gapY) + gapY;
  const int count = static_cast<int>(items.size()) + 1;
  // The rows below take this many units; more definitions than the screen has room for scroll.
  constexpr int kOthers = 16;
  const int advance = std::min(unitY * count, roomForText(top + unitY * kOthers));
  visibleHeight = advance + gapY;
  const int y = top + visibleHeight;
  // Before the static text: of two siblings the one made first is in front.
  answerEdit = addEditLine(y, &answerText);
  setFirstFocus(*answerEdit);
  finish(y + unitY * 3 + gapY);
  addDefinitions(items, top);
}

int UIPopUpSigParDlg::addDefinitions(const PromptItems& items, int y) {
  std::string added;
  for (const RWCString& item : items) {
    added.append("  ").append(item.view()).append("\n");
  }
  definitions.append(added);
  const int count = static_cast<int>(items.size()) + 1;
  if (y != 0) {
    definitionText = addStaticText(definitions, y, unitY * count * 2);
  }
  showDefinitions();
  return count;
}

bool UIPopUpSigParDlg::isReadable() const {
  // A static text stands in the middle of its place; its last line is empty.
  const int lineHeight = fontObject()->measure("X", 1).height;
  const int lines = lineCount(definitions);
  const int above = (definitionText->sizer()->size().height - lines * lineHeight) / 2;
  return above >= 0 && above + (lines - 1) * lineHeight <= visibleHeight && linesFit(definitions);
}

void UIPopUpSigParDlg::showDefinitions() {
  definitionText->setText(withoutMnemonics(definitions).c_str());
  const bool isWhole = isReadable();
  definitionText->show(isWhole ? kShowNormal : kShowHide);
  if (!isWhole && definitionBox == nullptr) {
    const int y = definitionText->sizer()->pos().y;
    definitionBox = addTextBox(definitions, y, visibleHeight - unitY);
  } else if (!isWhole) {
    definitionBox->setText(definitions.c_str());
    definitionBox->setSelection(0, 0);
  }
}

const RWCString& UIPopUpSigParDlg::answer() {
  answerEdit->storeData();
  return answerText;
}
