#include "tests/ui/support/wait.h"

#include <utility>

#include "tests/support/script_failure.h"
#include "tests/ui/support/test_application.h"

#include <X11/Intrinsic.h>

namespace ui {

namespace {

/// A request can cause events whose handling causes further ones; this many rounds settle them.
constexpr int kDrainRounds = 3;
constexpr Milliseconds kPause{2};

std::vector<std::string>& awaited() {
  static std::vector<std::string> stack;
  return stack;
}

int currentDepth = 0;

class DepthScope {
 public:
  DepthScope() { ++currentDepth; }
  DepthScope(const DepthScope&) = delete;
  DepthScope& operator=(const DepthScope&) = delete;
  ~DepthScope() { --currentDepth; }
};

/// Wakes the loop shortly, so that handling "the next thing" never blocks for long.
class Pulse {
 public:
  Pulse() : id(XtAppAddTimeOut(context(), kPause.count(), &Pulse::fired, this)) {}
  Pulse(const Pulse&) = delete;
  Pulse& operator=(const Pulse&) = delete;
  ~Pulse() {
    if (id != 0) {
      XtRemoveTimeOut(id);
    }
  }

 private:
  static void fired(XtPointer pulse, XtIntervalId* /*id*/) { static_cast<Pulse*>(pulse)->id = 0; }

  XtIntervalId id;
};

}  // namespace

void drain() {
  for (int round = 0; round < kDrainRounds; ++round) {
    XSync(display(), False);
    while ((XtAppPending(context()) & XtIMXEvent) != 0) {
      XtAppProcessEvent(context(), XtIMXEvent);
    }
  }
}

void waitFor(const std::function<bool()>& condition, std::string_view what, Milliseconds limit,
             SourceLine where) {
  const Awaiting awaiting{std::string(what)};
  const DepthScope depth;
  const Deadline deadline(limit);
  for (;;) {
    drain();
    if (condition()) {
      return;
    }
    if (deadline.hasPassed()) {
      failScript("awaited in vain:\n" + Awaiting::describe(), where);
    }
    const Pulse pulse;
    XtAppProcessEvent(context(), XtIMAll);
  }
}

Awaiting::Awaiting(std::string what) {
  awaited().push_back(std::move(what));
}

Awaiting::~Awaiting() {
  awaited().pop_back();
}

std::string Awaiting::describe() {
  std::string text;
  for (const std::string& what : awaited()) {
    text += "  " + what + "\n";
  }
  return text.empty() ? "  nothing in particular\n" : text;
}

int waitDepth() {
  return currentDepth;
}

}  // namespace ui
