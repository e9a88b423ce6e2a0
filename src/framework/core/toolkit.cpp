// What the program does where the toolkit leaves it to do better.

#include "framework/core/toolkit_xm.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/core/resource_values.h"
#include "framework/core/x_settings.h"
#include "framework/draw/color.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/screen.h"

#include <X11/Intrinsic.h>
#include <X11/StringDefs.h>
#include <Xm/XmAll.h>

int XErrorReporter(Display* display, XErrorEvent* event) {
  constexpr int kTextLimit = 100;
  std::array<char, kTextLimit> text = {};
  XGetErrorText(display, event->error_code, text.data(), kTextLimit);
  zDebugOut("X Error of failed request: %s", text.data());
  zDebugOut("Opcode of failed request: %d, %d", event->request_code, event->minor_code);
  zDebugOut("Resource id in failed request: %d", static_cast<int>(event->resourceid));
  zDebugOut("Serial number of failed request: %d\n", static_cast<int>(event->serial));
  return 1;
}

void reportXtWarning(char* message) {
  zDebugOut("%s", message);
}

void reportXtError(char* message) {
  zDebugOut("%s", message);
  std::fflush(stdout);
  std::fprintf(stderr, "Error: %s\n", message);
  std::exit(EXIT_FAILURE);
}

// Over a network the start of a program takes as long as it waits for the server, so what is known
// beforehand is not asked for. Atoms are left to the toolkit: the library remembers 64 names only,
// and asking for some early pushes those out that each dialog needs.

namespace {

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

// A user who drags the corner of a window makes the server tell sizes faster than they can be laid
// out, and only the last one counts. So a ConfigureNotify that a newer one of its window follows in
// the queue is dropped, before any widget hears of it.

namespace {

// How far ahead a newer event is looked for, so that a long queue costs no more than a short one.
constexpr int kLookAhead = 256;

XtEventDispatchProc toolkitDispatcher = nullptr;

struct Search {
  const XConfigureEvent& event;
  int left;
  bool isFound;
};

// Takes no event out of the queue.
Bool look(Display* /*display*/, XEvent* queued, XPointer client) {
  auto& search = *reinterpret_cast<Search*>(client);
  if (search.left > 0 && !search.isFound) {
    --search.left;
    search.isFound = queued->type == ConfigureNotify &&
                     queued->xconfigure.event == search.event.event &&
                     queued->xconfigure.window == search.event.window;
  }
  return False;
}

bool isOld(XConfigureEvent& event) {
  Search search{event, kLookAhead, false};
  if (XEventsQueued(event.display, QueuedAfterReading) > 0) {
    XEvent none;
    XCheckIfEvent(event.display, &none, look, reinterpret_cast<XPointer>(&search));
  }
  return search.isFound;
}

// In its frame a shell knows its new size but not its place, which the toolkit would ask for twice.
void tellPlace(XConfigureEvent& event) {
  Widget widget = XtWindowToWidget(event.display, event.window);
  Window child = None;
  if (event.send_event == False && event.override_redirect == False && widget != nullptr &&
      XtIsShell(widget) && XtWindow(widget) == event.window &&
      XTranslateCoordinates(event.display, event.window, RootWindowOfScreen(XtScreen(widget)), 0, 0,
                            &event.x, &event.y, &child) != False) {
    event.send_event = True;
  }
}

Boolean dispatchConfigure(XEvent* event) {
  if (isOld(event->xconfigure)) {
    return True;
  }
  tellPlace(event->xconfigure);
  return toolkitDispatcher(event);
}

}  // namespace

void dropOldConfigureEvents(Display* display) {
  XtEventDispatchProc before = XtSetEventDispatcher(display, ConfigureNotify, dispatchConfigure);
  toolkitDispatcher = before == dispatchConfigure ? toolkitDispatcher : before;
}

namespace {

// The deepest path of names that a resource is looked for with.
constexpr std::size_t kLongestPath = 100;

/// An entry of the database as its functions take it.
struct FontEntry {
  std::vector<XrmBinding> bindings;
  std::vector<XrmQuark> names;
  std::string list;
};

Bool collect(XrmDatabase* /*database*/, XrmBindingList bindings, XrmQuarkList names,
             XrmRepresentation* /*type*/, XrmValue* value, XPointer entries) {
  const std::string_view text(value->addr, value->size > 0 ? value->size - 1 : 0);
  const auto nameOf = [](const zFontSpec& font) {
    return ziDrawCache::instance().fonts()->realize(font)->fullName.str();
  };
  if (const auto list = resolvedPoints(text, nameOf)) {
    std::size_t length = 0;
    while (names[length] != NULLQUARK) {
      ++length;
    }
    reinterpret_cast<std::vector<FontEntry>*>(entries)->push_back(
        {{bindings, bindings + length}, {names, names + length + 1}, *list});
  }
  return False;  // goes on
}

}  // namespace

void resolveFontPoints(Display* display) {
  std::vector<FontEntry> entries;
  XrmDatabase database = XtDatabase(display);
  std::array<XrmQuark, kLongestPath> anyPath{NULLQUARK};
  XrmEnumerateDatabase(database, anyPath.data(), anyPath.data(), XrmEnumAllLevels, collect,
                       reinterpret_cast<XPointer>(&entries));
  for (FontEntry& entry : entries) {
    XrmQPutStringResource(&database, entry.bindings.data(), entry.names.data(), entry.list.c_str());
  }
}
