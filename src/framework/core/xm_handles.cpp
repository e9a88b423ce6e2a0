#include <map>

#include "framework/core/xm_handles_xm.h"

XmFontList fontListOf(XFontStruct* font) {
  // Lives as long as the process, beyond its static objects.
  static auto& lists = *new std::map<XFontStruct*, XmFontList>;
  XmFontList& list = lists[font];
  if (list == nullptr) {
    XmFontListEntry entry =
        XmFontListEntryCreate(const_cast<char*>(XmFONTLIST_DEFAULT_TAG), XmFONT_IS_FONT, font);
    list = XmFontListAppendEntry(nullptr, entry);
    XmFontListEntryFree(&entry);
  }
  return list;
}
