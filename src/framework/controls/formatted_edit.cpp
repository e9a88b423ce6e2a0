#include "framework/controls/formatted_edit.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "framework/controls/widgets_xm.h"
#include "framework/core/event.h"
#include "framework/core/window_events_xm.h"

namespace {

constexpr const char* kLongPicture = "-##########";

std::string replaced(const RWCString& text, zTextRange range, std::string_view inserted) {
  std::string result = text.str();
  result.replace(static_cast<std::size_t>(range.from),
                 static_cast<std::size_t>(range.to - range.from), inserted);
  return result;
}

}  // namespace

zFormattedEdit::zFormattedEdit(zWindow* parent, zSizer* sizer, std::uint32_t style,
                               const char* initialText, int id,
                               std::unique_ptr<zNumFormatter> ownedFormatter)
    : zEditLine(parent, sizer, style, initialText, id), formatter(std::move(ownedFormatter)) {}

void zFormattedEdit::setText(const char* newText) {
  std::string shown;
  formatter->format(shown, newText, kNumShow);
  const ziAlive alive(this);
  zEditLine::setText(shown.c_str());
  if (alive) {
    XmTextSetInsertionPosition(widget(), formatter->caretAfter(shown));
  }
}

RWCString zFormattedEdit::formattedText(int flags) const {
  std::string made;
  formatter->format(made, text().view(), flags);
  return RWCString(std::move(made));
}

int zFormattedEdit::childrenValid() {
  if (zEditLine::childrenValid() == 0) {
    return 0;
  }
  zTextRange bad;
  valid = formatter->checkText(text().view(), bad) != 0;
  if (!valid) {
    setSelection(bad.from, bad.to);
  }
  return valid ? 1 : 0;
}

bool zFormattedEdit::verifyChange(zTextRange range, std::string_view inserted) {
  // A text that is wrong can always be made shorter.
  return inserted.empty() || formatter->fits(replaced(text(), range, inserted));
}

int zFormattedEdit::keyArrived(zEvent& event, bool typed) {
  const auto key = static_cast<long>(event.wparam);
  if (key == kKeyReturn || key == kKeyEscape || isCommandState(event.xevent->xkey.state)) {
    return zEditLine::keyArrived(event, typed);
  }
  const std::optional<zTextRange> selected = selectionRange();
  const bool removes = key == kKeyBackspace && selected.has_value();
  const int caret = insertionPosition();
  zTextRange range = selected.value_or(zTextRange{caret, caret});
  std::string changed = text().str();
  switch (formatter->editKey(
      changed, key, removes ? zNumFormatter::Edit::remove : zNumFormatter::Edit::insert, range)) {
    case kNumKeySwallowed:
      return 1;
    case kNumKeyReplaced: {
      const ziAlive alive(this);
      zEditLine::setText(changed.c_str());
      if (alive) {
        setSelection(range.from, range.to);
      }
      return 1;
    }
    default:
      return zEditLine::keyArrived(event, typed);
  }
}

zLongEdit::zLongEdit(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, long* value,
                     int flags)
    : zFormattedEdit(parent, sizer, style, "", id,
                     std::make_unique<zNumFormatter>(flags, kLongPicture)),
      formatFlags(flags),
      boundValue(value) {
  zLongEdit::showData();
}

int zLongEdit::storeData() {
  if (boundValue == nullptr) {
    return 0;
  }
  *boundValue = std::strtol(formattedText(formatFlags).c_str(), nullptr, 10);
  return 1;
}

int zLongEdit::showData() {
  if (boundValue == nullptr) {
    return 0;
  }
  // The formatter decides whether the plus sign is shown.
  const std::string sign = *boundValue < 0 ? "" : "+";
  const ziAlive alive(this);
  setText((sign + std::to_string(*boundValue)).c_str());
  if (alive) {
    selectForTyping();
  }
  return 1;
}
