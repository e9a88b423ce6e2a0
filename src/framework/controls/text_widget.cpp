#include "framework/controls/text_widget_xm.h"

#include <algorithm>

#include "framework/core/window_events_xm.h"
#include "support/line_text.h"

#include <Xm/TextP.h>
#include <Xm/TextStrSoP.h>

bool isStrayKey(const XmTextVerifyCallbackStruct& change) {
  const std::string_view inserted = insertedText(change);
  if (change.event == nullptr || change.event->type != KeyPress || inserted.size() != 1) {
    return false;
  }
  const char typed = inserted.front();
  if (isControlCharacter(typed) && typed != '\t' && typed != '\n') {
    return true;
  }
  // The same key may as well paste a character.
  return isCommandState(change.event->xkey.state) &&
         lookUpKey(change.event->xkey).character == typed;
}

std::string_view insertedText(const XmTextVerifyCallbackStruct& change) {
  if (change.text == nullptr || change.text->ptr == nullptr) {
    return {};
  }
  return {change.text->ptr, static_cast<std::size_t>(change.text->length)};
}

void replaceInserted(XmTextVerifyCallbackStruct& change, const std::string& text) {
  if (insertedText(change) == text) {
    return;
  }
  // The toolkit frees the characters that it finds here afterwards.
  const std::size_t size = text.size() + 1;
  char* const characters = XtMalloc(static_cast<Cardinal>(size));
  std::copy_n(text.c_str(), size, characters);
  XtFree(change.text->ptr);
  change.text->ptr = characters;
  change.text->length = static_cast<int>(text.size());
}

void selectForTyping(Widget text) {
  const XmTextPosition end = XmTextGetLastPosition(text);
  XmTextSetInsertionPosition(text, end);
  if (XtIsRealized(text) == False || end == 0) {
    return;
  }
  // All public ways of selecting take the X selection.
  XmSourceData source = reinterpret_cast<XmTextWidget>(text)->text.source->data;
  source->left = 0;
  source->right = end;
  source->hasselection = True;
  // What the user types in its place ends it by one more selection, of nothing.
  source->take_selection = False;
  XmTextSetHighlight(text, 0, end, XmHIGHLIGHT_SELECTED);
}
