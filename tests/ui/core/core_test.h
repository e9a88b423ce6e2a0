#pragma once

#include "framework/core/application.h"
#include "framework/core/pane.h"
#include "framework/layout/sizers.h"
#include "tests/ui/support/ui_test.h"

/// What the tests of the window framework share.

/// What handlers and operations wrote down, a word each. Tests compare it whole.
inline std::string journal;
inline void note(const std::string& word) {
  journal += word + " ";
}
/// Takes it, so that the next action starts with none.
inline std::string noted() {
  return std::exchange(journal, {});
}

inline std::string asText(const zRect& rect) {
  return ui::placeView({rect.left, rect.top, rect.width(), rect.height()});
}

/// Notes what `event` has reached.
inline int reached(const std::string& target, const zEvent& event) {
  note(target + ":" + std::to_string(event.message) + ":" + std::to_string(event.wparam));
  return 0;
}

/// An event target with handlers to bind, and an owner of timers and idle handlers. It does what it
/// is told and answers `taken`.
struct Recorder : zEvH {
  explicit Recorder(std::string name) : ownName(std::move(name)) {}
  explicit Recorder(std::function<void()> does) : action(std::move(does)) {}

  /// The handler to register with an owner.
  static int run(zEvH* owner) {
    auto* self = static_cast<Recorder*>(owner);
    ++self->runs;
    self->action();
    return self->taken;
  }
  int first(zEvent* event) { return handled("1", *event); }
  int second(zEvent* event) { return handled("2", *event); }
  int handled(const char* handler, const zEvent& event) {
    reached(ownName + handler, event);
    return run(this);
  }

  std::string ownName;
  std::function<void()> action = [] {};
  int taken = 0;
  int runs = 0;
};
inline const zHandler kFirst = toHandler(&Recorder::first);
inline const zHandler kSecond = toHandler(&Recorder::second);

/// A pane that notes its paints and counts them.
struct RecordingPane : zPane {
  explicit RecordingPane(zWindow* parent, zSizer* sizer = nullptr, std::uint32_t style = 0,
                         int id = 1)
      : zPane(parent, sizer, style, id) {
    show();
  }
  int draw(zEvent* /*event*/) override {
    ++paints;
    display()->clipBounds(lastPaint);
    onPaint();
    return 0;
  }

  int paints = 0;
  zRect lastPaint;
  std::function<void()> onPaint = [] {};
};

/// A main window that notes requests to close it.
struct TestFrame : zAppFrame {
  explicit TestFrame(zSizer* sizer = new zSizer(100, 100, 400, 300))
      : zAppFrame(nullptr, sizer, kStyleMainWindow, "Frame") {
    addPlainHandler(&handler, kFirst, kMsgClose);
  }
  int close(zEvent* event) override {
    reached("close", *event);
    return closeAnswer;
  }
  zSizer* fill() { return new zGravSizer(kGravityFill, 0, sizer()); }
  zRect exterior() {
    zRect rect;
    getExterior(rect);
    return rect;
  }

  Recorder handler{"handler"};
  int closeAnswer = 1;
};
