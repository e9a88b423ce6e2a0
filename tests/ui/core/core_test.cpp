#include "tests/ui/core/core_test.h"

#include <dlfcn.h>

#include <memory>

#include "framework/core/toolkit_xm.h"

#include <Xm/XmAll.h>

namespace {

Boolean streamDispatched(XEvent* /*event*/) {
  EventStream::handled();
  return True;
}

struct WrappedWork {
  XtWorkProc procedure;
  XtPointer data;
};

Boolean countingWork(XtPointer data) {
  const auto* wrapped = static_cast<const WrappedWork*>(data);
  ++workProcs().passes;
  const Boolean isDone = wrapped->procedure(wrapped->data);
  workProcs().dropped += isDone ? 1 : 0;
  return isDone;
}

}  // namespace

bool runLoopUntil(const std::function<bool()>& condition) {
  constexpr unsigned long kTick = 5;
  Owner nobody;
  // Idle passes alone do not make the loop look at its condition.
  const zTimer tick(&nobody, &Owner::run, kTick);
  const Deadline deadline(kAnswerTime);
  zApp::instance()->pumpWhile([&] { return !condition() && !deadline.hasPassed(); });
  return condition();
}

EventStream::EventStream(std::function<void()> does)
    : window(XCreateSimpleWindow(ui::display(), DefaultRootWindow(ui::display()), 0, 0, 1, 1, 0, 0,
                                 0)) {
  handled = std::move(does);
  XtSetEventDispatcher(ui::display(), ClientMessage, streamDispatched);
}

EventStream::~EventStream() {
  XtSetEventDispatcher(ui::display(), ClientMessage, nullptr);
  XDestroyWindow(ui::display(), window);
}

void EventStream::post() const {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.format = 8;
  XSendEvent(ui::display(), window, False, NoEventMask, &event);
  XSync(ui::display(), False);
}

WorkProcs& workProcs() {
  static WorkProcs counters;
  return counters;
}

// Takes the place of the toolkit's function in this program and calls it.
XtWorkProcId XtAppAddWorkProc(XtAppContext context, XtWorkProc procedure, XtPointer data) {
  static std::vector<std::unique_ptr<WrappedWork>> all;
  static auto* const original =
      reinterpret_cast<decltype(&XtAppAddWorkProc)>(dlsym(RTLD_NEXT, "XtAppAddWorkProc"));
  all.push_back(std::make_unique<WrappedWork>(WrappedWork{procedure, data}));
  ++workProcs().added;
  return original(context, countingWork, all.back().get());
}

bool isTimerPending(bool asInput) {
  return (XtAppPending(ui::context()) & (asInput ? XtIMAlternateInput : XtIMTimer)) != 0;
}

void setXResource(const std::string& name, const std::string& value) {
  XrmDatabase database = XtDatabase(zApp::instance()->display());
  XrmPutStringResource(&database, name.c_str(), value.c_str());
}

unsigned long atomNamed(const char* name) {
  return XInternAtom(ui::display(), name, False);
}

std::vector<unsigned long> propertyOf(Window window, const char* name) {
  constexpr long kAll = 100000;
  constexpr unsigned long kWord = 0xFFFFFFFF;  // Xlib extends signs
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(ui::display(), window, atomNamed(name), 0, kAll, False, AnyPropertyType, &type,
                     &format, &count, &left, &data);
  std::vector<unsigned long> items(data, data + (format == 8 ? count : 0));
  for (unsigned long i = 0; format == 32 && i < count; ++i) {
    items.push_back(reinterpret_cast<unsigned long*>(data)[i] & kWord);
  }
  XFree(data);
  return items;
}

int Recorder::note(const char* handler, const zEvent& event) {
  events.push_back(ownName + "." + handler + " " + std::to_string(event.message));
  action();
  return taken;
}

int RecordingPane::draw(zEvent* /*event*/) {
  ++paints;
  display()->clipBounds(lastPaint);
  onPaint();
  return 0;
}

int RecordingPane::size(zEvent* event) {
  zPane::size(event);
  ++sizes;
  return 0;
}

int RecordingPane::childFocusChanged(zWindow* previous, zWindow* current) {
  const std::string from = previous == nullptr ? "none" : std::to_string(previous->id());
  events.push_back(std::to_string(id()) + ": " + from + " to " + std::to_string(current->id()));
  return 1;
}

int RecordingPane::note(const char* operation, const zEvent* event) {
  events.push_back(std::string(operation) + " " + std::to_string(event->message) + " " +
                   std::to_string(event->wparam));
  return 0;
}

int TestFrame::close(zEvent* event) {
  seen.push_back("close " + std::to_string(event->message));
  return closeAnswer;
}

int TestFrame::onClose(zEvent* event) {
  seen.push_back("handler " + std::to_string(event->message));
  return handlerAnswer;
}

int TestFrame::activate(zEvent* event) {
  seen.push_back(event->wparam != 0 ? "in" : "out");
  return 0;
}

void TestFrame::bringUp(int state) {
  show(state);
  ui::waitFor([&] { return ui::isViewable(shell()); }, "the frame on the screen");
}

zRect TestFrame::exterior() {
  zRect rect;
  getExterior(rect);
  return rect;
}
