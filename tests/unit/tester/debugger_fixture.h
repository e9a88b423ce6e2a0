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
  void showSystem(const std::string& directory, const std::string& name) override {
    note("system", directory, {name});
  }
  void askText(const std::string& question) override { note("text", question, {}); }
  void askNumber(const std::string& question) override { note("number", question, {}); }
  void askNumberInRange(const std::string& question, const NumberRange& range) override {
    note("range", question, {std::to_string(range.low), std::to_string(range.high)});
    EXPECT_TRUE(range.isAllAllowed);
  }
  void askChoice(const std::string& question, const Words& items) override {
    note("choice", question, items);
  }
  void askBits(const std::string& question, const Words& items) override {
    note("bits", question, items);
  }
  void askParameters(const std::string& question, const Words& definitions) override {
    note("parameters", question, definitions);
  }
  void askFile(const FileFilter& filter, const std::string& directory) override {
    note("file", filter.title, {directory, filter.extension, filter.label});
  }
  void askDirectory(const std::string& directory) override { note("directory", directory, {}); }
  void offerSearch(const SearchLists& lists) override {
    note("search", joinNames(lists.processes), {joinNames(lists.signals), joinNames(lists.timers)});
  }
  void askToExit() override { exitAsked = true; }

  std::string text;
  std::string title;
  std::vector<std::string> confirmed;
  std::vector<std::string> boxes;
  bool busy = false;
  bool takesTrace = true;
  bool exitAsked = false;

 private:
  void show(const std::string& lines) override { text += lines; }
  void note(const std::string& kind, const std::string& question, const Words& items) {
    boxes.push_back(kind + ' ' + question);
    for (const std::string& item : items) {
      boxes.back() += '|' + item;
    }
  }
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
