#pragma once

#include <string>
#include <vector>

#include "framework/core/frame.h"
#include "framework/core/pane.h"
#include "framework/layout/sizers.h"

/// Windows of these tests: they write down what reaches them.

using Journal = std::vector<std::string>;

/// An event target with four handlers to bind; `taken` says what they answer.
class Recorder : public zEvH {
 public:
  Recorder(Journal& journal, std::string name) : events(journal), ownName(std::move(name)) {}

  int first(zEvent* event) { return note("first", *event); }
  int second(zEvent* event) { return note("second", *event); }

  int taken = 0;

 private:
  int note(const char* handler, const zEvent& event) {
    events.push_back(ownName + "." + handler + " " + std::to_string(event.message));
    return taken;
  }

  Journal& events;
  std::string ownName;
};

class RecordingPane : public zPane {
 public:
  RecordingPane(zWindow* parent, zSizer* sizer, Journal& journal, std::uint32_t style = 0,
                int id = 1)
      : zPane(parent, sizer, style, id), events(journal) {
    show();
  }

  int draw(zEvent* /*event*/) override {
    ++paints;
    display()->clipBounds(lastPaint);
    return 0;
  }
  void displayReady() override { ++readies; }
  int size(zEvent* event) override {
    zPane::size(event);
    ++sizes;
    return 0;
  }
  int command(zEvent* event) override { return note("command", event); }
  int character(zEvent* event) override { return note("character", event); }
  int mouseButtonDown(zEvent* event) override { return note("down", event); }
  int mouseButtonUp(zEvent* event) override { return note("up", event); }
  int focus(zEvent* event) override { return note("focus", event); }

  int paints = 0;
  int readies = 0;
  int sizes = 0;
  zRect lastPaint;

 private:
  int note(const char* operation, const zEvent* event) {
    events.push_back(std::string(operation) + " " + std::to_string(event->message) + " " +
                     std::to_string(event->wparam));
    return 0;
  }

  Journal& events;
};

class TestFrame : public zAppFrame {
 public:
  static constexpr std::uint32_t kStyle = 0xCF0000;

  explicit TestFrame(zSizer* sizer = new zSizer(100, 100, 400, 300), const char* title = "Frame")
      : zAppFrame(nullptr, sizer, kStyle, title) {}

  int close(zEvent* /*event*/) override {
    ++closes;
    return closeAnswer;
  }
  int activate(zEvent* event) override {
    activations.push_back(event->wparam != 0 ? "in" : "out");
    return 0;
  }

  int closes = 0;
  int closeAnswer = 1;
  Journal activations;
};
