#pragma once

#include <string>
#include <string_view>

#include <Xm/XmAll.h>

#include "framework/core/connect_xm.h"
#include "framework/draw/font.h"
#include "support/geometry.h"
#include "support/rwc_string.h"

/// What the controls do alike to the toolkit's widgets.

/// A text in the form of the toolkit's functions, which change none.
inline char* xmText(const char* text) {
  return const_cast<char*>(text);
}

/// Whether a tie to a widget is made or undone.
enum class Tie { made, undone };

/// Connects a callback or events, or disconnects them.
template <auto Member, class What>
void tie(Tie state, Widget widget, const What& what, ziTarget<Member>* target) {
  if (state == Tie::made) {
    connect<Member>(widget, what, target);
  } else {
    disconnect<Member>(widget, what, target);
  }
}

/// What a window's style says of its widget.
Boolean isTabStop(std::uint32_t style);
Dimension borderWidth(std::uint32_t style);

/// Shows text on a widget in `font`, where it has been loaded.
void showFont(Widget widget, const zFont* font);

// Labels and buttons.

/// Shows `text` on a label or button: mnemonic in the toolkit's form, tabs as blanks.
void showLabelText(Widget label, const RWCString& text);
/// Size of the text that a label or button shows.
zDimension labelTextSize(Widget label);
/// Shows the picture of the stock button `id` (OK, Cancel or Help) on `button`; any other id keeps
/// its text. The pictures are installed as images of the toolkit on first use.
void showStockImage(Widget button, int id);

// Text widgets of edit controls and combo boxes.

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
