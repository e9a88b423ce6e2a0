#pragma once

#include <string>
#include <string_view>

#include <Xm/XmAll.h>

/// What edit controls and combo boxes do alike to the toolkit's text widget.

/// A text in the form of the toolkit's functions, which change none.
inline char* xmText(const char* text) {
  return const_cast<char*>(text);
}

/// Whether a change of the text is the character of a command key that means nothing to the
/// toolkit, which would put it into the text.
bool isStrayKey(const XmTextVerifyCallbackStruct& change);

/// What a change puts in; lives until it is replaced.
std::string_view insertedText(const XmTextVerifyCallbackStruct& change);
void replaceInserted(XmTextVerifyCallbackStruct& change, const std::string& text);

/// Selects the whole text, for the user to type over it, and moves the insertion point to its end.
/// The X selection stays with its owner: who has marked a text elsewhere can paste it here. While
/// the widget is not realized only the insertion point moves.
void selectForTyping(Widget text);
