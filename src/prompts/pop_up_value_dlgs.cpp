#include "prompts/pop_up_value_dlgs.h"

#include <algorithm>
#include <limits>

#include "framework/controls/button.h"
#include "framework/controls/formatted_edit.h"

namespace {

// Only the height counts, until the buttons are there.
constexpr zDimension kValueSize = {350, 200};
constexpr std::uint32_t kNumberStyle = kStyleControlStop | kStyleBorder | kEditFollowsAcross;
constexpr std::uint32_t kCheckStyle = kStyleControlStop;

}  // namespace

UIPopUpStringDlg::UIPopUpStringDlg(zWindow* parent, const RWCString& message)
    : UIPopUpDlgBase(parent, kValueSize) {
  int y = addMessageText(message, gapY) + gapY;
  answerEdit = addEditLine(y, &answerText);
  setFirstFocus(*answerEdit);
  y += unitY * 3 + gapY;
  finish(y);
}

const RWCString& UIPopUpStringDlg::answer() {
  answerEdit->storeData();
  return answerText;
}

ziPopUpNumberDlg::ziPopUpNumberDlg(zWindow* parent, const RWCString& message, long low, long high)
    : UIPopUpDlgBase(parent, kValueSize), lowLimit(low), highLimit(high) {
  const int y = addMessageText(message, gapY) + gapY;
  answerEdit =
      new zLongEdit(this, rowAt(y, unitY * 3), kNumberStyle, nextId(), &answerValue, kNumShow);
  answerEdit->setNotify(this, toHandler(&ziPopUpNumberDlg::onFocusGained), kEditFocusGained);
  setFirstFocus(*answerEdit);
  below = y + unitY * 3 + gapY;
}

int ziPopUpNumberDlg::onFocusGained(zEvent* /*event*/) {
  // What is typed replaces the number that was there.
  answerEdit->selectForTyping();
  return 0;
}

RWCString ziPopUpNumberDlg::answer() const {
  return answerEdit->formattedText(kNumRead);
}

int ziPopUpNumberDlg::onOk(zEvent* /*event*/) {
  answerEdit->storeData();
  const bool isLegal = lowLimit <= answerValue && answerValue <= highLimit;
  if (!isLegal) {
    answerValue = 0;
  }
  answerEdit->showData();
  return isLegal ? endWith(1) : 1;
}

UIPopUpIntegerDlg::UIPopUpIntegerDlg(zWindow* parent, const RWCString& message)
    : ziPopUpNumberDlg(parent, message, std::numeric_limits<long>::min(),
                       std::numeric_limits<long>::max()) {
  finish(below);
}

UIPopUpIntegerLimitDlg::UIPopUpIntegerLimitDlg(zWindow* parent, const RWCString& message, long low,
                                               long high)
    : ziPopUpNumberDlg(parent, message, std::max(low, 0L), high) {
  if (low < 0) {
    allCheck = new zCheckBox(this, rowAt(below, unitY * 3), kCheckStyle, "All", nextId());
    below += unitY * 3 + gapY;
  }
  finish(below);
}

RWCString UIPopUpIntegerLimitDlg::answer() const {
  return allCheck != nullptr && allCheck->checked() ? RWCString(kAll) : ziPopUpNumberDlg::answer();
}
