#include "tests/ui/controls/label_view.h"

#include "framework/core/xm_handles_xm.h"

LabelView viewOf(Widget label) {
  XmString string = nullptr;
  XmFontList fonts = nullptr;
  KeySym mnemonic = NoSymbol;
  Dimension height = 0;
  Dimension shadow = 0;
  Dimension highlight = 0;
  Dimension margin = 0;
  unsigned char type = XmSTRING;
  XtVaGetValues(label, XmNlabelString, &string, XmNfontList, &fonts, XmNmnemonic, &mnemonic,
                XmNheight, &height, XmNshadowThickness, &shadow, XmNhighlightThickness, &highlight,
                XmNmarginHeight, &margin, XmNlabelType, &type, nullptr);
  char* text = nullptr;
  XmStringGetLtoR(string, const_cast<char*>(XmFONTLIST_DEFAULT_TAG), &text);
  LabelView view{takeXtText(text),
                 mnemonic,
                 XmStringHeight(fonts, string),
                 height - 2 * (shadow + highlight + margin),
                 type == XmPIXMAP,
                 highlight > 0};
  XmStringFree(string);
  return view;
}
