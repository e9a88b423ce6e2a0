// The frame of all prompts.
//
// The tester decides how long a text is. As long as it fits, the text is a static one and the
// dialog grows with it; a text of which the user could not see all - more lines than the screen has
// room for, or longer ones than the dialog is wide - is put into a read-only box with a scroll bar
// instead, so that the dialog with its buttons stays on the screen and every word can be read.

#include "prompts/pop_up_dlg_base.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/draw/res_id.h"
#include "framework/draw/screen.h"
#include "framework/layout/sizers.h"
#include "link/tool_message.h"
#include "link/wire.h"
#include "resources/dialogs.h"
#include "resources/resource_ids.h"
#include "support/text.h"

RWCString popUpTitle("Korvane Select");

namespace {

constexpr std::uint32_t kPromptStyle = kStyleDialog;
constexpr std::uint32_t kTextStyle = kStyleControl;
constexpr std::uint32_t kTextBoxStyle =
    kStyleControlStop | kStyleBorder | kStyleVertScroll | kEditMultiLine | kEditReadOnly;
constexpr std::uint32_t kEditStyle =
    kStyleControlStop | kStyleBorder | kStyleSystemMenu | kEditFollowsAcross;
constexpr std::uint32_t kSeparatorStyle = kStyleVisible;
constexpr std::uint32_t kPushStyle = kStyleControlStop;

constexpr int kPromptFont = 12;
constexpr int kUnit = 4;
constexpr int kSeparatorHeight = 2;
constexpr int kClicked = 0;

// What a static text leaves free at its two sides together, pixels.
constexpr int kLabelMargins = 8;
// Kept free on the screen for the window manager's decoration, pixels.
constexpr int kDecoration = 48;
constexpr int kFewLines = 4;

// A line feed at the very end opens no line.
RWCString withoutLastLineFeed(const RWCString& text) {
  std::string_view shown = text.c_str();  // ends at the first NUL
  if (!shown.empty() && shown.back() == '\n') {
    shown.remove_suffix(1);
  }
  return shown;
}

}  // namespace

PromptItems promptItems(const StringListNode* head) {
  PromptItems items;
  for (const StringListNode* node = head; node != nullptr; node = node->next) {
    items.emplace_back(node->text);
  }
  return items;
}

int lineCount(const RWCString& text) {
  const std::string_view lines = text.view();
  return 1 + static_cast<int>(std::count(lines.begin(), lines.end(), '\n'));
}

RWCString withoutMnemonics(const RWCString& text) {
  std::string shown;
  for (const char c : text.view()) {
    shown.append(c == '&' ? 2 : 1, c);
  }
  return RWCString(std::move(shown));
}

UIPopUpDlgBase::UIPopUpDlgBase(zWindow* parent, const zDimension& size)
    : zFormDialog(parent, new zSizer(0, 0, size.width, size.height), kPromptStyle) {
  const zRCFont promptFont(kPromptFont);
  units = std::make_unique<zDialogUnit>(kUnit, kUnit, *promptFont.font());
  setCaption(popUpTitle);
  setIcon(zResId(kIconMain));
  setFont(promptFont, 0);
  unitX = units->width();
  unitY = units->height();
  gapY = unitY * 2;
  marginX = unitX * 4;
  // The width that is given is not used. Intended.
  zDialogFrame::moveResize(0, 0, unitX * 50, size.height);
  getInterior(clientRect);
}

int UIPopUpDlgBase::onOk(zEvent* /*event*/) {
  return 0;
}

int UIPopUpDlgBase::onCancel(zEvent* /*event*/) {
  return 0;
}

void UIPopUpDlgBase::setup(int flags) {
  zFormDialog::setup(flags);
  // The newest handler is asked first.
  okButton->addCtrlHandler(this, toHandler(&UIPopUpDlgBase::onOk), kClicked);
  cancelButton->addCtrlHandler(this, toHandler(&UIPopUpDlgBase::onCancel), kClicked);
}

zSizer* UIPopUpDlgBase::rowAt(int y, int height) const {
  return new zLeafSizer(marginX, y, rowWidth(), height);
}

bool UIPopUpDlgBase::linesFit(const RWCString& wording) const {
  std::istringstream lines(expandTabs(wording.view()));
  for (std::string line; std::getline(lines, line);) {
    const zDimension size = fontObject()->measure(line.c_str(), static_cast<int>(line.size()));
    if (size.width > rowWidth() - kLabelMargins) {
      return false;
    }
  }
  return true;
}

zStaticText* UIPopUpDlgBase::addStaticText(const RWCString& wording, int y, int height) {
  return new zStaticText(this, rowAt(y, height), kTextStyle, withoutMnemonics(wording).c_str(),
                         nextId());
}

zEditBox* UIPopUpDlgBase::addTextBox(const RWCString& wording, int y, int height) {
  return new zEditBox(this, rowAt(y, height), kTextBoxStyle, wording.c_str(), nextId());
}

int UIPopUpDlgBase::roomForText(int others) const {
  const int room = theScreen().screenHeight - kDecoration - others;
  return std::max(room, unitY * 2 * kFewLines);
}

void UIPopUpDlgBase::fitRows(int rows) {
  // Lower than this a button cuts its letters.
  const int lowest = (unitY * 3 + 3) / 4;
  unitY = std::clamp((theScreen().screenHeight - kDecoration) / rows, lowest, unitY);
  gapY = unitY * 2;
}

int UIPopUpDlgBase::addMessageText(const RWCString& wording, int y) {
  const RWCString shown = withoutLastLineFeed(wording);
  // The tallest prompt, that with a list, has this many rows' units beside its text.
  constexpr int kOthers = 38;
  const int room = roomForText(y + unitY * kOthers);
  const int wanted = unitY * lineCount(shown) * 2;
  if (wanted <= room && linesFit(shown)) {
    messageText = addStaticText(shown, y, wanted);
    return y + wanted;
  }
  const int height = std::clamp(wanted, unitY * 2 * kFewLines, room);
  messageText = addTextBox(shown, y, height);
  return y + height;
}

zEditLine* UIPopUpDlgBase::addEditLine(int y, RWCString* bound) {
  auto* edit = new zEditLine(this, rowAt(y, unitY * 3), kEditStyle, "", nextId());
  edit->setBoundString(bound);
  edit->setMaxLength(kMaxSentText);
  return edit;
}

void UIPopUpDlgBase::addButtonRow(int y) {
  const int height = unitY * 3;
  const int buttonY = height + y + kSeparatorHeight;
  const int buttonWidth = unitX * 12;
  const int width = clientRect.width();
  separator = new zGroupBox(this, new zLeafSizer(0, y, width, kSeparatorHeight), kSeparatorStyle,
                            "", nextId());
  okButton = new zPushButton(this, new zLeafSizer(marginX * 2, buttonY, buttonWidth, height),
                             kPushStyle, "OK", kDialogOk);
  cancelButton = new zPushButton(
      this, new zLeafSizer(width - 2 * (unitX * 6 + marginX), buttonY, buttonWidth, height),
      kPushStyle, "Cancel", kDialogCancel);
  zRect outer;
  getExterior(outer);
  const int decoration = outer.height() - clientRect.height();
  moveResize(0, 0, outer.width(), 3 * height + y + decoration + kSeparatorHeight);
}

void UIPopUpDlgBase::finish(int y) {
  addButtonRow(y);
  centre(true);
  setup(1);
}
