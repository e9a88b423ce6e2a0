// The log's side of Find: the view, the selection and what the user is told.

#include <string_view>

#include "framework/core/busy_scope.h"
#include "framework/core/message_box.h"
#include "textarea/text_pane.h"

namespace {

constexpr char kBoxCaption[] = "Korvane UI";
constexpr char kNotFoundText[] = "not found.";
constexpr char kNotFoundFromHereText[] = "not found.\nSearch from the start?";
constexpr char kGaveUpText[] = "is too complex for this text. The search gave up.";
constexpr char kPatternErrorText[] = "Error in regular expression";
constexpr char kPatternErrorCaption[] = "ERR";

// Of the program and not of a log.
FindState lastFind;

// Lines below a hit that are brought into view with it.
constexpr int kContextLines = 3;

RWCString quoted(const RWCString& wanted, bool regexp, const char* verdict) {
  return RWCString(regexp ? "Regular expression\n'" : "Search string\n'") + wanted + "'\n" +
         verdict;
}

// The start of a line some lines below `hit`, or of the last one.
std::size_t lineBelow(std::string_view log, std::size_t hit) {
  for (int line = 0; line < kContextLines; ++line) {
    const std::size_t feed = log.find('\n', hit);
    if (feed == std::string_view::npos) {
      break;
    }
    hit = feed + 1;
  }
  return hit;
}

}  // namespace

FindResult TextPane::selectNextHit(const FindRequest& request) {
  zBusyScope busy;
  const RWCString log = text();
  const FindResult result =
      findInLog(log.view(), request, lastFind, [&busy] { return busy.mayGoOn(); });
  if (result == FindResult::kFound) {
    const std::size_t end = lastFind.lastFindOffset + lastFind.lastFindLength;
    // The insertion point goes along, and the view with it.
    setSelection(static_cast<int>(lastFind.lastFindOffset), static_cast<int>(end));
    bringIntoView(static_cast<int>(lineBelow(log.view(), end)));
    bringIntoView(static_cast<int>(end));
  }
  return result;
}

void TextPane::findText(const RWCString& wanted, bool goOn, bool matchCase, bool regexp) {
  if (!goOn) {
    scrollToTop();
  }
  // The copy of the log is gone before a box opens.
  switch (selectNextHit({wanted.view(), goOn, matchCase, regexp})) {
    case FindResult::kFound:
    case FindResult::kStopped:
      break;
    case FindResult::kNotFound:
      tellNotFound(wanted, goOn, matchCase, regexp);
      break;
    case FindResult::kPatternError: {
      const zMessage box(this, kPatternErrorText, kPatternErrorCaption, kBoxOk | kBoxStop);
      break;
    }
    case FindResult::kGaveUp: {
      const RWCString told = quoted(wanted, regexp, kGaveUpText);
      const zMessage box(this, told.c_str(), kBoxCaption, kBoxOk | kBoxWarning);
      break;
    }
  }
}

void TextPane::tellNotFound(const RWCString& wanted, bool goOn, bool matchCase, bool regexp) {
  const ziAlive alive(this);
  const RWCString told = quoted(wanted, regexp, goOn ? kNotFoundFromHereText : kNotFoundText);
  const zMessage box(this, told.c_str(), kBoxCaption, (goOn ? kBoxOkCancel : kBoxOk) | kBoxWarning);
  if (goOn && box.isOk() && alive) {
    findText(wanted, false, matchCase, regexp);
  }
}
