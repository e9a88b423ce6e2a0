#pragma once

#include <Xm/XmAll.h>

#include "framework/core/xm_handles_xm.h"
#include "support/geometry.h"
#include "support/label_text.h"
#include "support/rwc_string.h"

/// Shows `text` on a label or button: mnemonic in the toolkit's form, tabs as blanks.
inline void showLabelText(Widget label, const RWCString& text) {
  const zLabelText parsed = takeMnemonic(text.view());
  const zXmString shown(expandTabs(parsed.text).c_str());
  XtVaSetValues(label, XmNlabelString, shown.get(), XmNmnemonic,
                static_cast<KeySym>(static_cast<unsigned char>(parsed.mnemonic)), nullptr);
}

/// Size of the text that a label or button shows.
inline zDimension labelTextSize(Widget label) {
  XmString shown = nullptr;
  XmFontList fonts = nullptr;
  XtVaGetValues(label, XmNlabelString, &shown, XmNfontList, &fonts, nullptr);
  const zDimension size = {XmStringWidth(fonts, shown), XmStringHeight(fonts, shown)};
  XmStringFree(shown);
  return size;
}
