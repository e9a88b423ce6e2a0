#pragma once

#include <string>
#include <utility>

#include <Xm/XmAll.h>

/// Owners of what Motif hands out.

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

/// A font list of one font.
class zXmFontList {
 public:
  explicit zXmFontList(XFontStruct* font) {
    XmFontListEntry entry = XmFontListEntryCreate(const_cast<char*>(XmFONTLIST_DEFAULT_TAG),
                                                  XmFONT_IS_FONT, font);
    list = XmFontListAppendEntry(nullptr, entry);
    XtFree(reinterpret_cast<char*>(entry));
  }
  zXmFontList(const zXmFontList&) = delete;
  zXmFontList& operator=(const zXmFontList&) = delete;
  ~zXmFontList() { XmFontListFree(list); }
  XmFontList get() const { return list; }

 private:
  XmFontList list = nullptr;
};

/// Text that Xt allocated, as a string of our own; null gives the empty string.
inline std::string takeXtText(char* text) {
  if (text == nullptr) {
    return {};
  }
  std::string copy(text);
  XtFree(text);
  return copy;
}
