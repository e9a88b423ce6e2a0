// Over a network the start of a program takes as long as it waits for the server, so what is known
// beforehand is not asked for. Atoms are left to the toolkit: the library remembers 64 names only,
// and asking for some early pushes those out that each dialog needs.

#include "framework/core/known_colours_xm.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

#include "framework/draw/color.h"

#include <X11/StringDefs.h>
#include <Xm/XmAll.h>

namespace {

// "#rrggbb", the form of all colours in the resource file that comes with the program.
std::optional<zColor> hexColour(std::string_view text) {
  constexpr std::size_t kLength = 7;
  constexpr int kHex = 16;
  std::uint32_t rgb = 0;
  if (text.size() != kLength || text.front() != '#') {
    return std::nullopt;
  }
  const char* end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data() + 1, end, rgb, kHex);
  return error == std::errc() && stopped == end ? std::optional(zColor(rgb)) : std::nullopt;
}

Boolean convertColour(Display* display, XrmValue* arguments, Cardinal* count, XrmValue* from,
                      XrmValue* to, XtPointer* data) {
  static Pixel pixel;
  const auto text = std::string_view(reinterpret_cast<const char*>(from->addr));
  const std::optional<zColor> colour = hexColour(text);
  const auto known = colour && *count == 2 &&
                             *reinterpret_cast<Colormap*>(arguments[1].addr) ==
                                 DefaultColormap(display, DefaultScreen(display))
                         ? zColorCache::computed(display, colour->x())
                         : std::nullopt;
  if (!known || (to->addr != nullptr && to->size < sizeof pixel)) {
    return XtCvtStringToPixel(display, arguments, count, from, to, data);
  }
  pixel = known->pixel;
  if (to->addr != nullptr) {
    *reinterpret_cast<Pixel*>(to->addr) = pixel;
  } else {
    to->addr = reinterpret_cast<XPointer>(&pixel);
  }
  to->size = sizeof pixel;
  return True;
}

Status allocateColour(Display* display, Colormap map, XColor* colour) {
  const auto known =
      map == DefaultColormap(display, DefaultScreen(display))
          ? zColorCache::computed(display, {colour->red, colour->green, colour->blue})
          : std::nullopt;
  if (!known) {
    return XAllocColor(display, map, colour);
  }
  colour->pixel = known->pixel;
  colour->red = known->x.red;
  colour->green = known->x.green;
  colour->blue = known->x.blue;
  return 1;
}

}  // namespace

void computeResourceColours() {
  XtSetTypeConverter(XtRString, XtRPixel, convertColour,
                     const_cast<XtConvertArgRec*>(colorConvertArgs), 2, XtCacheByDisplay, nullptr);
}

void computeShadowColours(Widget shell) {
  XtVaSetValues(XmGetXmScreen(XtScreen(shell)), XmNcolorAllocationProc, allocateColour, nullptr);
}
