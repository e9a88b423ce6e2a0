#include "textarea/ret_edit_line.h"

#include "framework/layout/sizer.h"
#include "textarea/command_line_place.h"
#include "textarea/command_lines.h"
#include "textarea/command_queue.h"
#include "textarea/text_pane.h"

RetEditLine* theCommandLine = nullptr;

namespace {

constexpr std::uint32_t kEntryStyle = kStyleChild | kStyleBorder | kStyleVertScroll |
                                      kStyleTabStop | kComboDropDown | kComboFollowsAcross;

}  // namespace

RetEditLine::RetEditLine(zWindow* parent, zSizer* sizer, int id)
    : zComboBoxFull(parent, sizer, kEntryStyle, id) {
  addPlainHandler(this, toHandler(&RetEditLine::handle), kMsgKeyDown);
}

RetEditLine::~RetEditLine() {
  if (theCommandLine == this) {
    theCommandLine = nullptr;
  }
}

void RetEditLine::followWidth() {
  const int left = sizer()->pos().x;
  moveResize(left, 0, parent()->sizer()->size().width - left - kCommandLineMargin,
             kCommandLineHeight);
}

void RetEditLine::addToHistory(const RWCString& newest) {
  RWCString first;
  itemText(first, 0);
  if (first.view() == joinCommandLines(newest.view())) {
    return;
  }
  // What the user has begun to type stands in front of the confirmed command. Intended.
  insert(joinCommandLines((text() + newest).view()).c_str(), 0);
}

std::string RetEditLine::entryForm(std::string_view inserted, std::string_view before) const {
  return joinCommandLines(inserted, before);
}

int RetEditLine::handle(zEvent* event) {
  if (event->message == kMsgKeyDown) {
    return handleKey(event->wparam);
  }
  theTextPane->setControlHeld(false);
  return 0;
}

int RetEditLine::handleKey(std::intptr_t code) {
  switch (code) {
    case kKeyReturn:
      execute();
      return 1;
    case kKeyPageUp:
      theTextPane->controlHeld() ? theTextPane->scrollToTop() : theTextPane->pageUp();
      return 1;
    case kKeyPageDown:
      theTextPane->controlHeld() ? theTextPane->scrollToEnd() : theTextPane->pageDown();
      return 1;
    case kKeyLeftControl:
      theTextPane->setControlHeld(true);
      return 1;
    default:
      return 0;
  }
}

void RetEditLine::execute() {
  hideDropDown();
  const RWCString line = text();
  if (executeCommandLine(line.view())) {
    setCurSel(-1);
  }
}
