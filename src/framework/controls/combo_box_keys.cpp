// Keys in the entry of a combo box that are its own. They come here when no handler and no
// accelerator took them; what is taken here doesn't reach the text widget.

#include <algorithm>
#include <optional>
#include <utility>

#include "framework/controls/combo_box.h"
#include "framework/controls/widgets_xm.h"
#include "framework/core/window_events_xm.h"
#include "support/text.h"

namespace {

// Motif's virtual keys, to which the user's bindings map the keys of the keyboard.
enum VirtualKey : unsigned long {
  kVirtualPageUp = 0x1004FF41,
  kVirtualPageDown = 0x1004FF42,
  kVirtualUp = 0x1004FF52,
  kVirtualDown = 0x1004FF54,
  kVirtualEndLine = 0x1004FF57,
  kVirtualBeginLine = 0x1004FF58,
  kVirtualCancel = 0x1004FF69,
};

KeySym virtualKey(XKeyEvent& press) {
  Modifiers used = 0;
  KeySym keysym = NoSymbol;
  XtTranslateKeycode(press.display, static_cast<KeyCode>(press.keycode), press.state, &used,
                     &keysym);
  return keysym;
}

bool isCancel(KeySym keysym) {
  return keysym == kVirtualCancel || keysym == XK_Escape;
}

bool isReturn(KeySym keysym) {
  return keysym == XK_Return || keysym == XK_KP_Enter;
}

bool startsWith(const std::string& text, char letter) {
  return !text.empty() && isSameLetter(text.front(), letter);
}

}  // namespace

int zComboBoxBase::keyArrived(zEvent& event, bool typed) {
  // The caret of the last choice is due now: later it would select what this key types.
  if (caretWork != 0) {
    XtRemoveWorkProc(std::exchange(caretWork, 0));
    placeCaret();
  }
  XKeyEvent& press = event.xevent->xkey;
  const KeySym key = virtualKey(press);
  if (isAltDown(press.state) && key == kVirtualDown) {
    toggleDropDown();
    return 1;
  }
  if (isDropDownShown() && (isCancel(key) || isReturn(key))) {
    hideDropDown();
    return 1;
  }
  if (isCommandState(press.state)) {
    return 0;
  }
  const int current = rows.keyboardRow();
  std::optional<int> row;
  if ((press.state & ShiftMask) == 0) {
    row = rowForKey(key, current);
  }
  // Tab, Return and Escape have a character too, but it begins no text: they go on.
  const auto letter = static_cast<char>(event.wparam);
  if (!row && typed && entryKind == Entry::fixed && !isControlCharacter(letter)) {
    row = rowForLetter(letter, current);
  }
  if (!row) {
    return 0;
  }
  if (*row >= 0 && *row < count() && *row != current) {
    selectByKey(*row, event.xevent);
    return 1;
  }
  // At the ends of the list these two are left to move the caret.
  return key == kVirtualBeginLine || key == kVirtualEndLine ? 0 : 1;
}

// Nothing for a key that moves in no list. The row need not be there.
std::optional<int> zComboBoxBase::rowForKey(unsigned long key, int current) const {
  const int last = count() - 1;
  switch (key) {
    case kVirtualUp:
      return current - 1;
    case kVirtualDown:
      return current + 1;
    case kVirtualPageUp:
      return current > 0 ? std::max(0, current - rows.pageSize()) : current;
    case kVirtualPageDown:
      return std::min(last, current + rows.pageSize());
    case kVirtualBeginLine:
    case kVirtualEndLine:
      // Next to a list that is always shown an editable entry keeps these for the caret.
      if (isSimple() && entryKind == Entry::editable) {
        return std::nullopt;
      }
      return key == kVirtualBeginLine ? 0 : last;
    default:
      return std::nullopt;
  }
}

// The next row behind `current`, round the end, that begins with the letter.
int zComboBoxBase::rowForLetter(char letter, int current) const {
  const int all = count();
  for (int step = 1; step <= all; ++step) {
    const int row = (current + step) % all;
    if (startsWith(rows.text(row).str(), letter)) {
      return row;
    }
  }
  return ziListRows::kNone;
}

void zComboBoxBase::selectByKey(int row, XEvent* xevent) {
  setCurSel(row);
  // Again later: what handlers do to the entry in the same event must not leave the caret
  // elsewhere.
  if (caretWork == 0) {
    caretWork =
        connectWork<&zComboBoxBase::caretWorkDue>(XtWidgetToApplicationContext(widget()), this);
  }
  notifyParent(kComboSelectionChanged, xevent);
}

bool zComboBoxBase::caretWorkDue() {
  caretWork = 0;
  placeCaret();
  return true;
}
