#pragma once

#include <gmock/gmock.h>

#include "tester/commands/debugger.h"
#include "tester/engine/crossing_model.h"
#include "tester/engine/simulated_system.h"

/// A debugger whose user is a recorder.
namespace tester {

/// Keeps what a command shows.
class DialogueRecorder : public Dialogue {
 public:
  void print(const std::string& lines) override { text += lines; }
  bool acceptsTrace() const override { return takesTrace; }
  void confirm(const std::string& command) override { confirmed.push_back(command); }
  void showBusy(bool isBusy) override { busy = isBusy; }
  void showTitle(const std::string& newTitle) override { title = newTitle; }
  void askYesNo(const std::string& caption, const std::string& question) override {
    boxes.push_back("? " + caption + '|' + question);
  }
  void showError(const std::string& caption, const std::string& error) override {
    boxes.push_back("! " + caption + '|' + error);
  }
  void showWarning(const std::string& caption, const std::string& warning) override {
    boxes.push_back("- " + caption + '|' + warning);
  }
  void askToExit() override { exitAsked = true; }

  std::string text;
  std::string title;
  std::vector<std::string> confirmed;
  std::vector<std::string> boxes;
  bool busy = false;
  bool takesTrace = true;
  bool exitAsked = false;
};

class DebuggerTest : public testing::Test {
 protected:
  explicit DebuggerTest(SystemModel model = crossingModel()) : system(std::move(model)) {}

  /// Carries out a command to its end and returns what it printed after its prompt line.
  std::string run(const std::string& command) {
    dialogue.text.clear();
    debugger.execute(command);
    while (debugger.isRunning()) {
      debugger.runSlice();
    }
    EXPECT_EQ(dialogue.text.substr(0, 2), "> ");
    return dialogue.text.substr(dialogue.text.find('\n') + 1);
  }

  SimulatedSystem system;
  DialogueRecorder dialogue;
  Debugger debugger{system, dialogue, testerCommands()};
};

}  // namespace tester
