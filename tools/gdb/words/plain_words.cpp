#include <algorithm>
#include <charconv>
#include <memory>

#include "gdb/words/texts.h"
#include "gdb/words/word_table.h"
#include "support/text.h"

namespace gdb {

namespace {

using tester_link::UserLink;

void leave(Control& control, UserLink::Leave how) {
  control.user().askToLeave(how);
  control.finish();
}

/// Why nothing can be written to the program's input; empty when it can.
std::string inputProblem(const Target& target) {
  if (target.state == Target::State::kNone) {
    return "No program is there to read it.";
  }
  return target.remote.empty() ? "" : "A remote program has its input at the other end.";
}

}  // namespace

void listWords(Control& control, const std::string& /*argument*/) {
  std::vector<const WordHelp*> words;
  std::size_t width = 0;
  const auto add = [&](const auto& rows) {
    for (const auto& row : rows) {
      words.push_back(&row.help);
      width = std::max(width, row.help.name.size() + row.help.arguments.size() + 1);
    }
  };
  add(plainWords());
  add(questionWords());
  for (const WordHelp* word : words) {
    std::string line = std::string(word->name) + ' ' + std::string(word->arguments);
    line.resize(width + 2, ' ');
    control.print(line + std::string(word->summary));
  }
  control.print(
      "What is left out is asked for. All else is a command of GDB; \"help\" tells more.");
  control.finish();
}

void stopTarget(Control& control, const std::string& /*argument*/) {
  // Where there is nothing to interrupt it goes on at once.
  const auto isLater = std::make_shared<bool>(false);
  control.interrupt([&control, isLater] {
    if (!*isLater) {
      control.print("Nothing is running.");
    }
    control.finish();
  });
  *isLater = true;
}

void inputText(Control& control, const std::string& argument) {
  const std::string problem = inputProblem(control.target());
  if (!problem.empty()) {
    control.refuse(problem);
    return;
  }
  control.input(argument + '\n');
  control.finish();
}

void endInput(Control& control, const std::string& /*argument*/) {
  const std::string problem = inputProblem(control.target());
  if (!problem.empty()) {
    control.refuse(problem);
    return;
  }
  control.endInput();
  control.finish();
}

void markOutput(Control& control, const std::string& argument) {
  const bool isOn = equalIgnoringCase(argument, "on");
  if (!isOn && !equalIgnoringCase(argument, "off")) {
    control.refuse("It is either on or off.");
    return;
  }
  control.markOutput(isOn);
  control.finish();
}

void setPageLength(Control& control, const std::string& argument) {
  std::size_t lines = 0;
  const char* end = argument.data() + argument.size();
  const auto [stop, error] = std::from_chars(argument.data(), end, lines);
  if (error != std::errc() || stop != end) {
    control.refuse('"' + shownItem(argument) + "\" is no number of lines.");
    return;
  }
  control.setPageLength(lines);
  control.finish();
}

void restartDebugger(Control& control, const std::string& /*argument*/) {
  control.restartDebugger();
}

void leaveAfterSaving(Control& control, const std::string& /*argument*/) {
  leave(control, UserLink::Leave::kAfterSaving);
}

void leaveAtOnce(Control& control, const std::string& /*argument*/) {
  leave(control, UserLink::Leave::kAtOnce);
}

}  // namespace gdb
