#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/pane.h"
#include "framework/layout/sizers.h"
#include "tests/ui/support/ui_test.h"

/// What the tests of the window framework share.

using Journal = std::vector<std::string>;
using testing::ElementsAre;
using testing::IsEmpty;

/// An owner of timers and idle handlers that does what it is told.
struct Owner : zEvH {
  explicit Owner(
      std::function<void()> does = [] {}, int answers = 0)
      : action(std::move(does)), answer(answers) {}

  /// The handler to register with this owner.
  static int run(zEvH* owner) {
    auto* self = static_cast<Owner*>(owner);
    ++self->runs;
    self->action();
    return self->answer;
  }

  std::function<void()> action;
  int answer;
  int runs = 0;
};

/// Runs the real event loop until `condition` holds; false when that takes too long.
bool runLoopUntil(const std::function<bool()>& condition);

/// Events of this process's own making, told from all others. One may live at a time.
struct EventStream {
  /// `does` is called for each event when the loop comes to it.
  explicit EventStream(std::function<void()> does);
  ~EventStream();

  /// Puts one event into the queue; it is there when this returns.
  void post() const;

  static inline std::function<void()> handled;
  Window window;
};

/// What this process did with Xt work procedures so far. The test program puts a counting wrapper
/// round each that is added.
struct WorkProcs {
  int added = 0;
  int dropped = 0;  ///< asked Xt to be dropped at the end of a pass
  int passes = 0;

  int inUse() const { return added - dropped; }
};
WorkProcs& workProcs();

/// Whether a timer waits to be handled: an input of the application context, else a time-out.
bool isTimerPending(bool asInput);
/// Sets a resource in the display's database.
void setXResource(const std::string& name, const std::string& value);
/// Bytes or words of a property; none if it is not there.
std::vector<unsigned long> propertyOf(Window window, const char* name);
unsigned long atomNamed(const char* name);

/// An event target with handlers to bind; `taken` says what they answer.
class Recorder : public zEvH {
 public:
  Recorder(Journal& journal, std::string name) : events(journal), ownName(std::move(name)) {}

  int first(zEvent* event) { return note("first", *event); }
  int second(zEvent* event) { return note("second", *event); }

  int taken = 0;
  std::function<void()> action = [] {};

 private:
  int note(const char* handler, const zEvent& event);

  Journal& events;
  std::string ownName;
};

/// Writes down what reaches it.
class RecordingPane : public zPane {
 public:
  RecordingPane(zWindow* parent, zSizer* sizer, Journal& journal, std::uint32_t style = 0,
                int id = 1)
      : zPane(parent, sizer, style, id), events(journal) {
    show();
  }

  int draw(zEvent* event) override;
  void displayReady() override { ++readies; }
  int size(zEvent* event) override;
  int move(zEvent* /*event*/) override { return ++moves; }
  int command(zEvent* event) override { return note("command", event); }
  int character(zEvent* event) override { return note("character", event); }
  int mouseButtonDown(zEvent* event) override { return note("down", event); }
  int mouseButtonUp(zEvent* event) override { return note("up", event); }
  int mouseMove(zEvent* event) override { return note("moved", event); }
  int focus(zEvent* event) override { return note("focus", event); }
  int childFocusChanged(zWindow* previous, zWindow* current) override;

  int paints = 0;
  int readies = 0;
  int sizes = 0;
  int moves = 0;
  zRect lastPaint;
  std::function<void()> onPaint = [] {};

 private:
  int note(const char* operation, const zEvent* event);

  Journal& events;
};

class TestFrame : public zAppFrame {
 public:
  explicit TestFrame(zSizer* sizer = new zSizer(100, 100, 400, 300), const char* title = "Frame",
                     std::uint32_t style = kStyleMainWindow)
      : zAppFrame(nullptr, sizer, style, title) {
    addPlainHandler(this, toHandler(&TestFrame::onClose), kMsgClose);
  }

  int close(zEvent* event) override;
  int activate(zEvent* event) override;
  /// Shows it and waits until it is on the screen.
  void bringUp(int state = kShowNormal);
  zSizer* fill() { return new zGravSizer(kGravityFill, 0, sizer()); }
  zRect exterior();

  Journal seen;
  int handlerAnswer = 0;
  int closeAnswer = 1;

 private:
  int onClose(zEvent* event);
};
