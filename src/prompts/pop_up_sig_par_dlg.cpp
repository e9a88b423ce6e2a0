// The prompt for the values of a signal. The rows below the definitions stand in the lower part of
// their static text, as soon as there are more than one, and don't move when more definitions come:
// intended. What would be hidden by them is not lost: the definitions are then in a box with a
// scroll bar, which fills the part of the place that can be seen.

#include "prompts/pop_up_sig_par_dlg.h"

#include <algorithm>
#include <string>

#include "framework/controls/edit.h"
#include "framework/controls/static_text.h"
#include "framework/draw/font.h"

namespace {

constexpr zDimension kStartSize = {350, 200};

}  // namespace

UIPopUpSigParDlg::UIPopUpSigParDlg(zWindow* parent, const RWCString& message,
                                   const PromptItems& items)
    : UIPopUpDlgBase(parent, kStartSize) {
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

int UIPopUpSigParDlg::onOk(zEvent* /*event*/) {
  answerEdit->storeData();
  answerEdit->showData();
  return endWith(1);
}

int UIPopUpSigParDlg::onCancel(zEvent* /*event*/) {
  return endWith(0);
}

const RWCString& UIPopUpSigParDlg::answer() {
  answerEdit->storeData();
  return answerText;
}
