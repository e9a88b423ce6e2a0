#pragma once

#include <map>
#include <string>
#include <utility>

#include <Xm/XmAll.h>

/// What Motif hands out, in safe hands.

/// A compound string.
class zXmString {
 public:
  zXmString() = default;
  /// From text with line feeds, in the default tag.
  explicit zXmString(const char* text)
      : string(XmStringCreateLtoR(const_cast<char*>(text),
                                  const_cast<char*>(XmFONTLIST_DEFAULT_TAG))) {}
  zXmString(zXmString&& other) noexcept : string(std::exchange(other.string, nullptr)) {}
  zXmString& operator=(zXmString&& other) noexcept {
    std::swap(string, other.string);
    return *this;
  }
  ~zXmString() {
    if (string != nullptr) {
      XmStringFree(string);
    }
  }
  XmString get() const { return string; }

 private:
  XmString string = nullptr;
};

/// The font list that shows text in `font` alone. Made once for a font, which stays loaded as long
/// as the program runs, and never freed: the toolkit loses a part of each list that it is given.
inline XmFontList fontListOf(XFontStruct* font) {
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

/// Text that Xt allocated, as a string of our own; null gives the empty string.
inline std::string takeXtText(char* text) {
  if (text == nullptr) {
    return {};
  }
  std::string copy(text);
  XtFree(text);
  return copy;
}
