// The log's side of Find: the view, the selection and what the user is told.

#include "framework/core/message_box.h"
#include "textarea/find_text.h"
#include "textarea/text_pane.h"

namespace {

constexpr char kBoxCaption[] = "Korvane UI";
constexpr char kPatternErrorText[] = "Error in regular expression";
constexpr char kPatternErrorCaption[] = "ERR";

// Of the program and not of a log.
FindState lastFind;

// The pane may be gone after this call.
void tellNotFound(zWindow* over, const RWCString& wanted, bool regexp) {
  const RWCString text =
      RWCString(regexp ? "Regular expression\n'" : "Search string\n'") + wanted + "'\nnot found.";
  const zMessage box(over, text.c_str(), kBoxCaption, kBoxOk | kBoxWarning);
}

}  // namespace

void TextPane::findText(const RWCString& wanted, bool goOn, bool matchCase, bool regexp) {
  if (!goOn) {
    scrollToTop();
  }
  // The copy of the log is gone before a box opens.
  const FindResult result =
      findInLog(text().view(), {wanted.view(), goOn, matchCase, regexp}, lastFind);
  switch (result) {
    case FindResult::kFound: {
      // The insertion point goes along, and the view with it.
      const auto start = static_cast<int>(lastFind.lastFindOffset);
      setSelection(start, start + static_cast<int>(lastFind.lastFindLength));
      break;
    }
    case FindResult::kNotFound:
      tellNotFound(this, wanted, regexp);
      break;
    case FindResult::kPatternError: {
      const zMessage box(this, kPatternErrorText, kPatternErrorCaption, kBoxOk | kBoxStop);
      break;
    }
  }
}
