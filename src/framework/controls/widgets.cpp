#include "framework/controls/widgets_xm.h"

#include <algorithm>

#include "framework/core/application.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "framework/draw/x_font_xm.h"
#include "resources/styles.h"
#include "support/text.h"

#include <Xm/TextP.h>
#include <Xm/TextStrSoP.h>

Boolean isTabStop(std::uint32_t style) {
  return (style & kStyleTabStop) != 0 ? True : False;
}

Dimension borderWidth(std::uint32_t style) {
  return (style & kStyleBorder) != 0 ? 1 : 0;
}

void showFont(Widget widget, const zFont* font) {
  if (font != nullptr && font->xFont() != nullptr) {
    XtVaSetValues(widget, XmNfontList, fontListOf(font->xFont()->get()), nullptr);
  }
}

void showLabelText(Widget label, const RWCString& text) {
  const zLabelText parsed = takeMnemonic(text.view());
  const zXmString shown(expandTabs(parsed.text).c_str());
  XtVaSetValues(label, XmNlabelString, shown.get(), XmNmnemonic,
                static_cast<KeySym>(static_cast<unsigned char>(parsed.mnemonic)), nullptr);
}

zDimension labelTextSize(Widget label) {
  XmString shown = nullptr;
  XmFontList fonts = nullptr;
  XtVaGetValues(label, XmNlabelString, &shown, XmNfontList, &fonts, nullptr);
  const zDimension size = {XmStringWidth(fonts, shown), XmStringHeight(fonts, shown)};
  XmStringFree(shown);
  return size;
}

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
