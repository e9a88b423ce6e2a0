#include <map>

#include "framework/core/xm_handles_xm.h"

XmFontList fontListOf(XFontStruct* font) {
  static std::map<XFontStruct*, XmFontList> lists;
  XmFontList& list = lists[font];
  if (list == nullptr) {
    XmFontListEntry entry = XmFontListEntryCreate(const_cast<char*>(XmFONTLIST_DEFAULT_TAG),
                                                  XmFONT_IS_FONT, font);
    list = XmFontListAppendEntry(nullptr, entry);
    XtFree(reinterpret_cast<char*>(entry));
  }
  return list;
}
