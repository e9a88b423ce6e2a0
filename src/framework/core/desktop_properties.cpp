#include "framework/core/desktop_properties.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <span>

#include <X11/Intrinsic.h>
#include <X11/Xatom.h>
#include <X11/Xutil.h>

namespace {

constexpr int kByteBits = 8;
constexpr int kWordBits = 32;

// Of UTF-8.
constexpr unsigned kFirstAboveAscii = 0x80;
constexpr unsigned kContinuationMask = 0xC0;
constexpr unsigned kContinuationBits = 6;
constexpr unsigned kTwoByteLead = 0xC0;

unsigned byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

// Lead bytes, bits of the character in them, and the least character that may be written so.
struct SequenceKind {
  std::size_t length;
  unsigned leadMask;
  unsigned lead;
  std::uint32_t least;
};
constexpr SequenceKind kSequences[] = {
    {1, 0x80, 0x00, 0x0}, {2, 0xE0, 0xC0, 0x80}, {3, 0xF0, 0xE0, 0x800}, {4, 0xF8, 0xF0, 0x10000}};

bool isCharacter(std::uint32_t value) {
  constexpr std::uint32_t kFirstSurrogate = 0xD800;
  constexpr std::uint32_t kLastSurrogate = 0xDFFF;
  constexpr std::uint32_t kLastCharacter = 0x10FFFF;
  return value <= kLastCharacter && (value < kFirstSurrogate || value > kLastSurrogate);
}

// Bytes of the well-formed character at the start of `text`; 0 if there is none.
std::size_t characterLength(std::string_view text) {
  for (const SequenceKind& kind : kSequences) {
    if ((byteAt(text, 0) & kind.leadMask) != kind.lead || text.size() < kind.length) {
      continue;
    }
    std::uint32_t value = byteAt(text, 0) & ~kind.leadMask;
    for (std::size_t i = 1; i < kind.length; ++i) {
      if ((byteAt(text, i) & kContinuationMask) != kFirstAboveAscii) {
        return 0;
      }
      value = (value << kContinuationBits) | (byteAt(text, i) & ~kContinuationMask);
    }
    return value >= kind.least && isCharacter(value) ? kind.length : 0;
  }
  return 0;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

Atom atomOf(Widget shell, const char* name) {
  return XInternAtom(XtDisplay(shell), name, False);
}

void setProperty(Widget shell, const char* name, Atom type, std::string_view bytes) {
  XChangeProperty(XtDisplay(shell), XtWindow(shell), atomOf(shell, name), type, kByteBits,
                  PropModeReplace, reinterpret_cast<const unsigned char*>(bytes.data()),
                  static_cast<int>(bytes.size()));
}

// Xlib takes 32-bit items as longs.
void setProperty(Widget shell, const char* name, Atom type, std::span<const unsigned long> words) {
  XChangeProperty(XtDisplay(shell), XtWindow(shell), atomOf(shell, name), type, kWordBits,
                  PropModeReplace, reinterpret_cast<const unsigned char*>(words.data()),
                  static_cast<int>(words.size()));
}

}  // namespace

void announceWindow(Widget shell, ziWindowType type, const char* title) {
  if (!XtIsRealized(shell)) {
    return;
  }
  const unsigned long process[] = {static_cast<unsigned long>(getpid())};
  setProperty(shell, "_NET_WM_PID", XA_CARDINAL, process);
  const unsigned long types[] = {atomOf(shell, type == ziWindowType::dialog
                                                   ? "_NET_WM_WINDOW_TYPE_DIALOG"
                                                   : "_NET_WM_WINDOW_TYPE_NORMAL")};
  setProperty(shell, "_NET_WM_WINDOW_TYPE", XA_ATOM, types);
  announceTitle(shell, title);
}

void announceTitle(Widget shell, const char* title) {
  if (XtIsRealized(shell)) {
    setProperty(shell, "_NET_WM_NAME", atomOf(shell, "UTF8_STRING"), titleInUtf8(title));
  }
}

bool isIconic(Widget shell) {
  if (!XtIsRealized(shell)) {
    return false;
  }
  const Atom state = atomOf(shell, "WM_STATE");
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(XtDisplay(shell), XtWindow(shell), state, 0, 1, False, state, &type, &format,
                     &count, &left, &data);
  const bool result = count == 1 && format == kWordBits &&
                      *reinterpret_cast<const unsigned long*>(data) == IconicState;
  if (data != nullptr) {
    XFree(data);
  }
  return result;
}

void demandAttention(Widget shell, bool wanted) {
  if (!XtIsRealized(shell)) {
    return;
  }
  Display* display = XtDisplay(shell);
  const Window window = XtWindow(shell);
  if (XWMHints* hints = XGetWMHints(display, window); hints != nullptr) {
    hints->flags = wanted ? hints->flags | XUrgencyHint : hints->flags & ~XUrgencyHint;
    XSetWMHints(display, window, hints);
    XFree(hints);
  }
  // The state of a mapped window is the window manager's to change.
  constexpr long kByApplication = 1;
  XEvent request = {};
  request.xclient.type = ClientMessage;
  request.xclient.window = window;
  request.xclient.message_type = atomOf(shell, "_NET_WM_STATE");
  request.xclient.format = kWordBits;
  request.xclient.data.l[0] = wanted ? 1 : 0;
  request.xclient.data.l[1] = static_cast<long>(atomOf(shell, "_NET_WM_STATE_DEMANDS_ATTENTION"));
  request.xclient.data.l[3] = kByApplication;
  XSendEvent(display, RootWindowOfScreen(XtScreen(shell)), False,
             SubstructureNotifyMask | SubstructureRedirectMask, &request);
}

void announceIcon(Widget shell, const std::vector<unsigned long>& pixels) {
  if (!XtIsRealized(shell)) {
    return;
  }
  if (pixels.empty()) {
    XDeleteProperty(XtDisplay(shell), XtWindow(shell), atomOf(shell, "_NET_WM_ICON"));
  } else {
    setProperty(shell, "_NET_WM_ICON", XA_CARDINAL, pixels);
  }
}

std::string titleInUtf8(std::string_view title) {
  if (isUtf8(title)) {
    return std::string(title);
  }
  std::string result;
  for (std::size_t i = 0; i < title.size(); ++i) {
    const unsigned c = byteAt(title, i);
    if (c < kFirstAboveAscii) {
      result += title[i];
    } else {
      result += static_cast<char>(kTwoByteLead | (c >> kContinuationBits));
      result += static_cast<char>(kFirstAboveAscii | (c & ~kContinuationMask));
    }
  }
  return result;
}
