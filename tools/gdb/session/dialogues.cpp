#include "gdb/session/dialogues.h"

#include <sstream>
#include <utility>

#include "support/text.h"

namespace gdb {

namespace {

using tester_link::Answer;
using tester_link::AnswerKind;

/// GDB writes a question at once; text that only looks like one goes on sooner.
constexpr std::chrono::milliseconds kQuietTime{60};

/// The lines of a menu that are choices: "[1] main.c:f(int)".
tester_link::Items choicesOf(const std::string& menu) {
  tester_link::Items choices;
  std::istringstream lines(menu);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('[') && line.find(']') != std::string::npos) {
      choices.push_back(line);
    }
  }
  return choices;
}

}  // namespace

Dialogues::Dialogues(tester_link::UserLink& userLink, Debugger& debuggerAsking,
                     OutputStore& outputStore)
    : user(userLink), debugger(debuggerAsking), output(outputStore) {}

void Dialogues::noteText(Clock::time_point now) {
  lookTime = now + kQuietTime;
}

void Dialogues::look(Clock::time_point now, bool isTargetRunning) {
  if (!lookTime || now < *lookTime) {
    return;
  }
  lookTime.reset();
  const Dialogue dialogue = debugger.dialogue();
  const bool isYesNo = dialogue == Dialogue::kYesNo || dialogue == Dialogue::kYesDefault ||
                       dialogue == Dialogue::kNoDefault;
  if (dialogue == Dialogue::kNone || (isTargetRunning && !isYesNo)) {
    return;
  }
  if (!user.isUserPresent()) {
    debugger.interrupt();
    return;
  }
  ask(dialogue);
}

void Dialogues::close() {
  lookTime.reset();
  ++question;
}

void Dialogues::ask(Dialogue dialogue) {
  output.flush();
  switch (dialogue) {
    case Dialogue::kNone:
      break;
    case Dialogue::kYesNo:
    case Dialogue::kYesDefault:
    case Dialogue::kNoDefault:
      askYesNo();
      break;
    case Dialogue::kMoreLines:
      askLine(headingOr("The next line for GDB; \"end\" ends:"));
      break;
    case Dialogue::kPython:
      askLine("The next line of Python:");
      break;
    case Dialogue::kMenu:
      askMenu();
      break;
    case Dialogue::kPager:
      // The log has its own way to ask.
      give("c");
      break;
  }
}

/// Goes on with the answer if the question is still the present one.
tester_link::AnswerHandler Dialogues::answer(tester_link::AnswerHandler handler) {
  return [this, present = ++question, handler = std::move(handler)](const Answer& reply) {
    if (present != question) {
      return;
    }
    if (reply.kind == AnswerKind::kCancelled || reply.kind == AnswerKind::kWrong ||
        reply.kind == AnswerKind::kTooLong) {
      debugger.interrupt();
    } else {
      handler(reply);
    }
  };
}

/// What a script wants to know, or what is asked when only GDB can have asked.
std::string Dialogues::headingOr(const std::string& text) const {
  const std::string heading = debugger.heading();
  return heading.empty() ? text : heading;
}

void Dialogues::askYesNo() {
  const std::string text = debugger.question();
  user.askYesNo(kBoxCaption, text.substr(0, text.rfind('(')), answer([this](const Answer& reply) {
                  give(reply.kind == AnswerKind::kYes ? "y" : "n");
                }));
}

void Dialogues::askLine(const std::string& text) {
  user.askText(text, answer([this](const Answer& reply) { give(singleLine(reply.text)); }));
}

void Dialogues::askMenu() {
  const tester_link::Items choices = choicesOf(debugger.question());
  if (choices.empty()) {
    askLine("The number of a choice above:");
    return;
  }
  user.askChoice(headingOr("Choose:"), choices, answer([this](const Answer& reply) {
                   give(reply.text.substr(1, reply.text.find(']') - 1));
                 }));
}

void Dialogues::give(const std::string& line) {
  output.addAnswer(line);
  debugger.answer(line);
}

}  // namespace gdb
