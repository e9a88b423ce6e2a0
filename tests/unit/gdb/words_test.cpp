// The debugger's own words: from the line that the user types to the commands that GDB gets.

#include "gdb/words/words.h"

#include <gmock/gmock.h>

#include <map>
#include <sstream>

#include "gdb/mi/reader.h"
#include "gdb/words/choices.h"
#include "gdb/words/texts.h"
#include "link/message_numbers.h"
#include "tests/support/basics.h"

namespace gdb {
namespace {

using tester_link::Answer;
using tester_link::AnswerKind;
using tester_link::Items;
using tester_link::OutgoingMessage;
using tester_link::UserLink;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

std::string textOf(const std::string& text) {
  return text;
}
std::string textOf(std::int32_t number) {
  return std::to_string(number);
}
std::string textOf(const Items& items) {
  std::string text;
  for (const std::string& item : items) {
    text += (text.empty() ? "[" : " [") + item + ']';
  }
  return text;
}

Items piecesOf(const std::string& text, std::string_view separator) {
  Items pieces;
  for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + separator.size()) {
    end = text.find(separator, begin);
    pieces.push_back(text.substr(begin, end - begin));
  }
  return pieces;
}

/// "choice add" and so on.
Answer answerOf(const std::string& line) {
  static const std::map<std::string, AnswerKind> kinds = {
      {"file", AnswerKind::kFile},     {"directory", AnswerKind::kDirectory},
      {"choice", AnswerKind::kChoice}, {"number", AnswerKind::kNumber},
      {"text", AnswerKind::kText},     {"bits", AnswerKind::kBits},
      {"yes", AnswerKind::kYes},       {"no", AnswerKind::kNo}};
  const auto [kind, text] = splitWord(line);
  return {
      .kind = kinds.at(kind), .text = text, .items = text.empty() ? Items() : piecesOf(text, "|")};
}

/// A debugger that notes what happens, a line each, asks a table instead of GDB, and answers the
/// questions from a list.
class ScriptedControl : public Control {
 public:
  /// What comes of a line.
  std::string take(const std::string& line, std::vector<Answer> replies = {}) {
    events.clear();
    ends = 0;
    if (!takeWord(*this, line)) {
      return "GDB's\n";
    }
    do {
      if (const auto next = std::exchange(interrupted, {})) {
        next();
      }
      link.pump({}, [this](const OutgoingMessage& message) { return noteQuestion(message); });
      if (link.isAsking()) {
        const Answer reply = replies.empty() ? Answer{} : replies.front();
        replies.erase(replies.begin(), replies.begin() + (replies.empty() ? 0 : 1));
        events += reply.kind == AnswerKind::kCancelled ? "" : "=\n";
        link.takeAnswer(reply);
      }
    } while (link.isAsking() || interrupted);
    EXPECT_EQ(ends, 1) << line;
    return events;
  }

  UserLink& user() override { return link; }
  const Target& target() const override { return state; }
  WordMemory& memory() override { return kept; }
  void print(const std::string& line) override { events += line + '\n'; }
  void command(const std::string& line, std::function<void()> then) override {
    print("(gdb) " + line);
    then ? then() : finish();
  }
  void query(const std::string& line, std::function<void(const mi::Record&)> then) override {
    mi::Record result = mi::readLine("^error,msg=\"Unexpected.\"");
    std::string printed;
    for (const mi::Record& record : mi::Reader().feed(results[line])) {
      printed += record.kind == mi::Record::Kind::kConsole ? record.text : "";
      result = record;
    }
    result.text = printed;
    then(result);
  }
  tester_link::AnswerHandler then(tester_link::AnswerHandler handler) override {
    return [this, handler](const Answer& reply) {
      const bool isCancelled = reply.kind == AnswerKind::kCancelled;
      isCancelled || reply.kind == AnswerKind::kWrong
          ? refuse(isCancelled ? "Cancelled." : reply.text)
          : handler(reply);
    };
  }
  void finish() override {
    ++ends;
    link.confirm("");
  }
  void refuse(const std::string& sentence) override {
    ++ends;
    print("end: " + sentence);
  }
  void interrupt(std::function<void()> then) override {
    print("interrupt");
    const bool wasRunning = state.state == Target::State::kRunning;
    state.state = Target::State::kStopped;
    if (wasRunning) {
      interrupted = then;
    } else {
      then();
    }
  }
  void input(const std::string& bytes) override { print("input [" + bytes + ']'); }
  void endInput() override { print("end of input"); }
  void markOutput(bool isMarked) override { print(isMarked ? "mark" : "no mark"); }
  void setPageLength(std::size_t length) override { print("page " + std::to_string(length)); }
  void restartDebugger() override {}

  std::map<std::string, std::string> results;  ///< of queries
  Target state{.state = Target::State::kStopped};

 private:
  UserLink::SendResult noteQuestion(const OutgoingMessage& message) {
    if (message.tag == MSG_T_PROMPT) {
      return UserLink::SendResult::kSent;
    }
    events += "? " + std::to_string(message.tag);
    for (std::size_t i = 1; i < message.parameters.size(); ++i) {
      events +=
          ' ' + std::visit([](const auto& value) { return textOf(value); }, message.parameters[i]);
    }
    events += '\n';
    return UserLink::SendResult::kSent;
  }

  UserLink link;
  WordMemory kept;
  std::function<void()> interrupted;
  std::string events;
  int ends = 0;  ///< of the last line
};

/// Holds the conversations of the file, and hands each line and what it should bring to `check`.
template <typename Check>
void hold(ScriptedControl& control, const Check& check) {
  const std::string file = readFile(NEL_CONVERSATION) + '\n';
  for (std::size_t begin = 0, end = 0; (end = file.find("\n\n", begin)) != std::string::npos;
       begin = end + 2) {
    std::istringstream lines(file.substr(begin, end - begin));
    std::string first;
    std::getline(lines, first);
    std::string rest;
    std::vector<Answer> answers;
    for (std::string next; std::getline(lines, next); rest += next + '\n') {
      if (next.starts_with("= ")) {
        answers.push_back(answerOf(next.substr(2)));
        next = '=';
      }
    }
    const std::string subject = first.substr(std::min<std::size_t>(2, first.size()));
    if (first.starts_with(':')) {
      control.results[subject] = rest;
    } else if (first.starts_with('!')) {
      const auto [state, address] = splitWord(subject);
      control.state.state = state == "none"      ? Target::State::kNone
                            : state == "running" ? Target::State::kRunning
                                                 : Target::State::kStopped;
      control.state.remote = address;
    } else if (first.starts_with('>')) {
      for (const std::string& each : piecesOf(subject, " | ")) {
        check(each, rest, answers);
      }
    }
  }
}

TEST(Words, BringWhatTheConversationsTell) {
  ScriptedControl control;
  int count = 0;
  hold(control, [&](const std::string& line, const std::string& told, const auto& answers) {
    EXPECT_EQ(control.take(line, answers), told) << line;
    ++count;
  });
  EXPECT_GT(count, 80);
}

TEST(Words, OfferTheUsersOtherProcessesInTheirOrder) {
  for (const pid_t part : {getpid(), getppid()}) {
    EXPECT_THAT(ScriptedControl().take("att " + std::to_string(part)),
                MatchesRegex("end: That is a part .*"));
  }
  using namespace std::string_literals;
  const TemporaryFolder folder;
  struct Process {
    std::string pid;
    const char* parent;
    std::string command;
  };
  for (const Process& each : {Process{"9", "1", "/bin/early\0-x\0"s},
                              {"10", "1", "evil\x1b[2J\n\0two  words\0"s},
                              {"50", "40", "/bin/gdb"},
                              {"40", "30", "nelgdb"},
                              {"30", "1", "nelmpm"},
                              {"31", "30", "nelkvui"},
                              {"60", "50", "/debugged/" + std::string(500, 'x') + "/end"},
                              {"61", "1", "/bin/" + std::string(500, '\xa9') + "/end"}}) {
    std::filesystem::create_directory(folder / each.pid);
    folder.write(each.pid + "/cmdline", each.command);
    folder.write(each.pid + "/stat", each.pid + " (a) b) S " + each.parent + " 7 7 0");
  }
  std::filesystem::create_directory(folder / "sys");
  EXPECT_THAT(itemsOf(processesIn(folder.path(), 40, 30)),
              ElementsAre(" 9  /bin/early -x", "10  evil?[2J? two  words",
                          MatchesRegex("60  /debugged/x{100,110}\\.\\.\\.x{110,120}/end"),
                          "61  /bin.../end"));
  EXPECT_THAT(processesIn("/no such folder", 1, 2), IsEmpty());
}

TEST(Words, OfferThreadsSignalsAndBreakpointsToSearchFor) {
  ScriptedControl control;
  hold(control, [](const auto&, const auto&, const auto&) {});
  control.state = {.state = Target::State::kStopped, .signal = "SIG34"};
  tester_link::SearchLists lists;
  const auto keep = [&lists](const auto& found) { lists = found; };
  collectSearchLists(control, keep);
  EXPECT_THAT(lists.processes, ElementsAre("Thread 0x7ff (LWP 5)", "Thread 0x7fe (LWP 6)"));
  EXPECT_THAT(lists.signals, testing::IsSupersetOf({"SIGSEGV", "SIG34"}));
  EXPECT_THAT(lists.timers, ElementsAre("add", "prog.c:7", "twice", "later.c:9"));
}

}  // namespace
}  // namespace gdb
