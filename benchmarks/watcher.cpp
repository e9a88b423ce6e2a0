#include "benchmarks/watcher.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <utility>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

constexpr std::chrono::milliseconds kQuietTime{300};  // shorter than a text cursor blinks
constexpr int kTitleDepth = 4;

struct XDeleter {
  void operator()(void* memory) const { XFree(memory); }
};

struct ImageDeleter {
  void operator()(XImage* image) const { XDestroyImage(image); }
};

/// What a window shows, in short.
struct Look {
  std::uint64_t digest = 0;
  bool isBlank = true;
};

Look lookAt(const XImage& image) {
  constexpr std::uint64_t kStart = 14695981039346656037U;
  constexpr std::uint64_t kPrime = 1099511628211U;
  const auto bytes =
      static_cast<std::size_t>(image.bytes_per_line) * static_cast<std::size_t>(image.height);
  const std::span words(reinterpret_cast<const std::uint32_t*>(image.data),
                        bytes / sizeof(std::uint32_t));
  Look result;
  result.digest = kStart;
  for (const std::uint32_t word : words) {
    result.digest = (result.digest ^ word) * kPrime;
    result.isBlank = result.isBlank && word == words.front();
  }
  return result;
}

/// Pixels of the windows inside belong to the picture.
Look lookAt(const screen::Screen& screen, Window window) {
  const screen::ScreenArea area = screen.areaOf(window);
  if (area.width == 0) {
    return {};
  }
  const std::unique_ptr<XImage, ImageDeleter> image(
      XGetImage(screen.display(), window, 0, 0, static_cast<unsigned>(area.width),
                static_cast<unsigned>(area.height), AllPlanes, ZPixmap));
  return image == nullptr ? Look() : lookAt(*image);
}

/// Calls `visit` with each window directly inside, from the bottom of the stack up.
template <typename Visit>
void forEachInside(Display* display, Window parent, Visit visit) {
  Window root = None;
  Window above = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, parent, &root, &above, &children, &count) == 0) {
    return;
  }
  const std::unique_ptr<Window, XDeleter> owned(children);
  for (const Window child : std::span<const Window>(children, count)) {
    visit(child);
  }
}

bool isTitled(const screen::Screen& screen, Window window, std::string_view title) {
  char* name = nullptr;
  if (XFetchName(screen.display(), window, &name) == 0) {
    return false;
  }
  const std::unique_ptr<char, XDeleter> owned(name);
  return std::string_view(name).starts_with(title) && screen.isViewable(window);
}

/// What two areas have in common; without a size when that is nothing.
screen::ScreenArea common(const screen::ScreenArea& one, const screen::ScreenArea& other) {
  screen::ScreenArea result{std::max(one.x, other.x), std::max(one.y, other.y)};
  result.width = std::max(0, std::min(one.x + one.width, other.x + other.width) - result.x);
  result.height = std::max(0, std::min(one.y + one.height, other.y + other.height) - result.y);
  return result;
}

int ignoreXError(Display* /*display*/, XErrorEvent* /*error*/) {
  return 0;  // windows come and go while they are looked at
}

}  // namespace

Watcher::Watcher() : Screen(XOpenDisplay(nullptr)) {
  if (display() == nullptr) {
    throw std::runtime_error("no display");
  }
  XSetErrorHandler(ignoreXError);
}

Watcher::~Watcher() {
  XCloseDisplay(display());
}

Window Watcher::find(std::string_view title) const {
  return findBelow(DefaultRootWindow(display()), title, kTitleDepth);
}

Window Watcher::findBelow(Window parent, std::string_view title, int depth) const {
  Window found = None;
  forEachInside(display(), parent, [&](Window child) {
    if (found == None && isTitled(*this, child, title)) {
      found = child;
    } else if (found == None && depth > 1) {
      found = findBelow(child, title, depth - 1);
    }
  });
  return found;
}

Window Watcher::largestInside(Window window) const {
  return largest(window, areaOf(window)).window;
}

Watcher::Part Watcher::largest(Window window, const screen::ScreenArea& seen) const {
  Part found;
  forEachInside(display(), window, [&](Window child) {
    const screen::ScreenArea visible = common(seen, areaOf(child));
    if (isViewable(child) && visible.width > 0 && visible.height > 0) {
      const Part part = largest(child, visible);
      found = part.pixels > found.pixels ? part : found;
    }
  });
  return found.window != None ? found : Part{window, static_cast<long>(seen.width) * seen.height};
}

Watcher::Clock::time_point Watcher::awaitStill(Window window, const Pause& pause,
                                               std::chrono::seconds patience) const {
  std::uint64_t last = 0;
  Clock::time_point changed = Clock::now();
  for (const auto end = Clock::now() + patience; Clock::now() < end;) {
    const Look look = lookAt(*this, window);
    const auto now = Clock::now();
    if (std::exchange(last, look.digest) != look.digest) {
      changed = now;
    } else if (!look.isBlank && now - changed > kQuietTime) {
      return changed;
    }
    pause(kLookEvery);
  }
  throw std::runtime_error("the window goes on changing");
}
