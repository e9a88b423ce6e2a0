// Input by the XTEST extension on the one connection: it is in the queue of events once the server
// has answered, so handling all events after each piece of input is enough. Only clicks may come
// later: into a window without the focus they go through the window manager first.

#include "tests/ui/support/ui_test.h"

#include <cstdlib>

#include "framework/core/application.h"

#include <X11/Xlib.h>
#include <Xm/XmAll.h>

namespace ui {

namespace {

/// How long a step of a test waits. Only a failing test waits it out.
constexpr Milliseconds kWaitTime{3000};
constexpr Milliseconds kClickTime{200};
constexpr Milliseconds kTick{10};

class UserInside : public screen::User {
 public:
  UserInside() : User(ui::display(), kWaitTime) {}

 protected:
  void settle() override { drain(); }
  /// The next thing, whatever it is; it comes soon, since the guard of the tests ticks.
  void pause() override { XtAppProcessEvent(context(), XtIMAll); }
};

int releasesSeen = 0;
XtEventDispatchProc usualDispatcher = nullptr;

Boolean countRelease(XEvent* event) {
  ++releasesSeen;
  return usualDispatcher(event);
}

/// Clicks where the pointer is, and handles events until the release has come, or for a short
/// while: it may have hit a window of another program.
void clickHere(MouseButton button) {
  if (usualDispatcher == nullptr) {
    usualDispatcher = XtSetEventDispatcher(display(), ButtonRelease, countRelease);
  }
  const int before = releasesSeen;
  pressButton(button);
  releaseButton(button);
  for (const Deadline deadline(kClickTime); releasesSeen == before && !deadline.hasPassed();) {
    ::usleep(1000);
    drain();
  }
}

}  // namespace

Display* display() {
  return zApp::instance()->display();
}

XtAppContext context() {
  return zApp::instance()->context();
}

screen::User& user() {
  static UserInside inside;
  return inside;
}

void drain() {
  // A request can cause events whose handling causes further ones; three rounds settle them.
  for (int round = 0; round < 3; ++round) {
    XSync(display(), False);
    while ((XtAppPending(context()) & XtIMXEvent) != 0) {
      XtAppProcessEvent(context(), XtIMXEvent);
    }
  }
}

Window windowOf(Widget widget) {
  return widget != nullptr ? XtWindowOfObject(widget) : None;
}

Place::Place(Widget widget) : Place(windowOf(widget)) {
  if (!XtIsWidget(widget)) {
    x += static_cast<Position>(resource(widget, XmNx));
    y += static_cast<Position>(resource(widget, XmNy));
    width = resource(widget, XmNwidth);
    height = resource(widget, XmNheight);
  }
}

void bringUp(zFrameWin& frame, SourceLine where) {
  frame.show();
  waitForDialog(frame.getCaption(), where);
  drain();
}

bool isViewable(Widget widget) {
  return widget != nullptr && (XtIsShell(widget) || XtIsManaged(widget)) &&
         isViewable(windowOf(widget));
}

bool focusIs(Widget widget) {
  Widget holder = XtWindowToWidget(display(), user().inputFocus());
  return holder != nullptr && XmGetFocusWidget(holder) == widget;
}

void waitForFocus(Widget widget, SourceLine where) {
  waitFor([&] { return focusIs(widget); }, std::string("the focus at ") + XtName(widget), where);
}

void focus(zWindow& window, SourceLine where) {
  window.takeFocus();
  waitForFocus(window.innerWidget() != nullptr ? window.innerWidget() : window.widget(), where);
}

void click(const Place& place, int x, int y, MouseButton button) {
  moveTo(place, x, y);
  clickHere(button);
}

void click(const Place& place, MouseButton button) {
  click(place, place.width / 2, place.height / 2, button);
}

Ticker::Ticker(Milliseconds interval, std::function<void()> function)
    : period(interval), tick(std::move(function)) {
  fired(this, nullptr);
}

Ticker::~Ticker() {
  // The timers of a context that was replaced are gone.
  if (armedIn == context()) {
    XtRemoveTimeOut(id);
  }
}

void Ticker::fired(void* ticker, unsigned long* id) {
  auto* const self = static_cast<Ticker*>(ticker);
  self->armedIn = context();
  self->id = XtAppAddTimeOut(context(), static_cast<unsigned long>(self->period.count()),
                             &Ticker::fired, self);
  if (id != nullptr) {
    self->tick();
  }
}

// The steps run from a timer, which fires in whatever loop the modal call runs. A step counts as
// done before it acts, since its action may open the loop in which the next step is due. While an
// action waits by waitFor, the next step stays back.

ModalScript& ModalScript::onDialog(const std::string& title, Action action) {
  return when([title] { return hasInputFocus(windowWithTitle(title)); },
              "a window \"" + title + "\" with the focus",
              [action = std::move(action)] {
                drain();
                action();
              });
}

ModalScript& ModalScript::onDialog(const std::string& title, KeySymbol key, unsigned modifiers) {
  return onDialog(title, [key, modifiers] { pressKey(key, modifiers); });
}

ModalScript& ModalScript::when(Condition condition, const std::string& what, Action action) {
  steps.push_back({std::move(condition), what, std::move(action)});
  return *this;
}

void ModalScript::begin() {
  when([] { return false; }, "the end of the modal call", {});
  baseDepth = user().awaited().size();
  deadline.emplace(kWaitTime);
  ticker.emplace(kTick, [this] { tick(); });
}

void ModalScript::finish() {
  ticker.reset();
  EXPECT_GE(next + 1, steps.size())
      << "the modal call returned before there was " << steps[next].what;
  steps.pop_back();
}

void ModalScript::tick() noexcept {
  if (user().awaited().size() > baseDepth) {
    return;
  }
  if (steps[next].condition()) {
    deadline.emplace(kWaitTime);
    steps[next++].action();
  } else if (deadline->hasPassed()) {
    endHangingTest("  " + steps[next].what);
  }
}

}  // namespace ui
