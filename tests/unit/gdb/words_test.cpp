// The words of the debugger, each from the line to the commands that GDB gets, with what GDB 13
// answered to the queries on the way.

#include "gdb/words/words.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <utility>

#include "gdb/mi/reader.h"
#include "gdb/words/choices.h"

namespace gdb {
namespace {

using tester_link::Answer;
using tester_link::AnswerKind;
using tester_link::OutgoingMessage;
using tester_link::UserLink;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Queries and what GDB wrote until their result; none of them is an error of GDB's.
using Answers = std::map<std::string, std::string>;

/// A debugger whose GDB answers from a table, and whose user from a list; both at once. It writes a
/// journal, a line for each thing that happened.
class ScriptedControl : public Control {
 public:
  /// Carries out a line and returns its journal, with the end of the word as the last line.
  std::string take(const std::string& line, std::vector<Answer> replies = {}) {
    answers = std::move(replies);
    journal.clear();
    if (!takeWord(*this, line)) {
      return "GDB's";
    }
    pump();
    return journal;
  }

  UserLink& user() override { return link; }
  const Target& target() const override { return state; }
  WordMemory& memory() override { return kept; }
  void print(const std::string& line) override { note("> " + line); }
  void command(const std::string& line, std::function<void()> then) override {
    note("(gdb) " + line);
    then ? then() : finish();
  }
  void query(const std::string& line, std::function<void(const mi::Record&)> then) override {
    const auto found = results.find(line);
    mi::Record result{.kind = mi::Record::Kind::kResult, .name = "error"};
    std::string printed;
    for (const mi::Record& record : mi::Reader().feed(
             found == results.end() ? "^error,msg=\"Unexpected.\"\n" : found->second)) {
      printed += record.kind == mi::Record::Kind::kConsole ? record.text : "";
      result = record.kind == mi::Record::Kind::kResult ? record : result;
    }
    result.text = printed;
    then(result);
  }
  tester_link::AnswerHandler then(tester_link::AnswerHandler handler) override {
    return [this, handler](const Answer& answer) {
      if (answer.kind == AnswerKind::kCancelled || answer.kind == AnswerKind::kWrong) {
        refuse("cancelled " + answer.text);
      } else {
        handler(answer);
      }
    };
  }
  void finish() override { note("end"); }
  void refuse(const std::string& sentence) override { note("end: " + sentence); }
  void openProgram(const std::string& path) override { note("program " + path); }
  void interrupt(std::function<void()> then) override {
    note("interrupt");
    state.state = Target::State::kStopped;
    then();
  }
  void input(const std::string& bytes) override { note("input [" + bytes + ']'); }
  void endInput() override { note("end of input"); }
  void markOutput(bool isMarked) override { note(isMarked ? "mark" : "no mark"); }
  void setPageLength(std::size_t lines) override { note("page " + std::to_string(lines)); }
  void restartDebugger() override { note("new GDB"); }

  Answers results;
  Target state{.state = Target::State::kStopped};
  WordMemory kept;

 private:
  void note(const std::string& line) { journal += line + '\n'; }
  /// "? 2005 Thread: [1  main][2  add]"
  void noteQuestion(const OutgoingMessage& message) {
    std::string text = "? " + std::to_string(message.tag);
    for (std::size_t i = 1; i < message.parameters.size(); ++i) {
      if (const auto* items = std::get_if<tester_link::Items>(&message.parameters[i])) {
        for (const std::string& item : *items) {
          text += '[' + item + ']';
        }
      } else if (const auto* words = std::get_if<std::string>(&message.parameters[i])) {
        text += ' ' + *words;
      } else {
        text += ' ' + std::to_string(std::get<std::int32_t>(message.parameters[i]));
      }
    }
    note(text);
  }
  void pump() {
    do {
      link.pump({}, [this](const OutgoingMessage& message) {
        noteQuestion(message);
        return UserLink::SendResult::kSent;
      });
      if (link.isAsking()) {
        const Answer next = answers.empty() ? Answer{} : answers.front();
        answers.erase(answers.begin(), answers.begin() + (answers.empty() ? 0 : 1));
        link.takeAnswer(next);
      }
    } while (link.isAsking());
  }

  UserLink link;
  std::vector<Answer> answers;
  std::string journal;
};

Answer choice(const std::string& text) {
  return {AnswerKind::kChoice, text};
}
Answer text(const std::string& text) {
  return {AnswerKind::kText, text};
}
Answer bits(const tester_link::Items& items) {
  return {AnswerKind::kBits, "", items};
}

const Answers kStoppedProgram = {
    {"-environment-pwd", "^done,cwd=\"/home/a b\"\n"},
    {"-list-thread-groups",
     "^done,groups=[{id=\"i1\",type=\"process\",executable=\"/home/a b/say \\\"hi\\\"\"}]\n"},
    {"-interpreter-exec console \"info threads\"",
     "~\"  Id   Target Id                               Frame \\n\"\n"
     "~\"* 1.1  Thread 0x7ffff7dcd740 (LWP 19629) \\\"thr\\\" puts (str=0x5556 \\\"a\\\\n\\\") at "
     "ioputs.c:35\\n\"\n"
     "~\"35\\tin ./libio/ioputs.c\\n\"\n"
     "~\"  2.1  Thread 0x7ffff7dcd740 (LWP 19651) \\\"thr\\\" 0x7ff in pause () at p.c:29\\n\"\n"
     "^done\n"},
    {"-stack-info-depth 10000", "^done,depth=\"12\"\n"},
    {"-stack-list-frames 0 9",
     "^done,stack=[frame={level=\"0\",addr=\"0x1163\",func=\"add\",file=\"../src/prog.c\","
     "line=\"7\"},frame={level=\"1\",addr=\"0x7ff\",func=\"__libc_start\",from=\"/lib/libc.so.6\"},"
     "frame={level=\"2\",addr=\"0x0001\"}]\n"},
    {"-break-list",
     "^done,BreakpointTable={nr_rows=\"5\",nr_cols=\"6\",hdr=[{width=\"7\",col_name=\"number\"}],"
     "body=[bkpt={number=\"1\",type=\"breakpoint\",disp=\"keep\",enabled=\"y\",addr=\"0x1163\","
     "func=\"add\",file=\"prog.c\",line=\"7\",cond=\"left > 1\",times=\"0\"},"
     "bkpt={number=\"2\",type=\"hw watchpoint\",disp=\"keep\",enabled=\"n\",what=\"counter\"},"
     "bkpt={number=\"3\",type=\"breakpoint\",disp=\"del\",enabled=\"y\",addr=\"<MULTIPLE>\","
     "original-location=\"twice\",locations=[{number=\"3.1\",enabled=\"y\"}]},"
     "bkpt={number=\"4\",type=\"breakpoint\",disp=\"keep\",enabled=\"n\",addr=\"<PENDING>\","
     "pending=\"later.c:9\"}]}\n"},
    {"-interpreter-exec console \"info signals\"",
     "~\"Signal        Stop\\tPrint\\tPass to program\\tDescription\\n\"\n~\"\\n\"\n"
     "~\"SIGTRAP       Yes\\tYes\\tNo\\t\\tTrace/breakpoint trap\\n\"\n"
     "~\"SIGSEGV       Yes\\tYes\\tYes\\t\\tSegmentation fault\\n\"\n"
     "~\"SIGUSR1       No\\tYes\\tYes\\t\\tUser defined signal 1\\n\"\n"
     "~\"SIGALRM       No\\tNo\\tYes\\t\\tAlarm clock\\n\"\n^done\n"},
    {"-stack-list-variables --all-values",
     "^done,variables=[{name=\"x\",value=\"16\"},{name=\"x\",value=\"1\"},"
     "{name=\"name\",arg=\"1\",value=\"0x5556 \\\"a;\\\\\\\"b\\\\\\\"\\\\n\\\"\"}]\n"},
    {"-data-evaluate-expression \"x\"", "^done,value=\"16\"\n"},
    {"-data-evaluate-expression \"y\"", "^error,msg=\"No symbol \\\"y\\\" in current context.\"\n"},
    {"-data-list-register-names", "^done,register-names=[\"rax\",\"\",\"rip\"]\n"},
    {"-gdb-set max-completions 200", "^done\n"},
    {"-complete \"break are\"",
     "^done,completion=\"break area(\",matches=[\"break area(double, double)\","
     "\"break area(int)\"],max_completions_reached=\"0\"\n"},
    {"-complete \"break main\"",
     "^done,completion=\"break main\",matches=[\"break main\"],max_completions_reached=\"0\"\n"},
    {"-complete \"break a\"",
     "^done,completion=\"break a\",matches=[\"break a1\",\"break "
     "a2\"],max_completions_reached=\"1\"\n"},
    {"-complete \"break \\\"\"", "^done,matches=[],max_completions_reached=\"0\"\n"},
    {"-thread-info",
     "^done,threads=[{id=\"1\",target-id=\"Thread 0x7ff (LWP "
     "5)\",name=\"prog\",frame={level=\"0\"},"
     "state=\"stopped\"},{id=\"2\",target-id=\"Thread 0x7fe (LWP 6)\"}],current-thread-id=\"1\"\n"},
};

struct Case {
  const char* line;
  std::vector<Answer> answers;
  const char* journal;
};

void expectJournals(ScriptedControl& control, const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    EXPECT_EQ(control.take(each.line, each.answers), each.journal) << each.line;
  }
}

TEST(Words, MakeACommandOfWhatStandsInTheLineOrIsAskedFor) {
  ScriptedControl control;
  control.results = kStoppedProgram;
  const Answer file{AnswerKind::kFile, "/home/a b/say \"hi\""};
  const Answer directory{AnswerKind::kDirectory, "/home/a \\b"};
  expectJournals(
      control,
      {
          {"open-program",
           {file},
           "? 2009 /home/a b \\?* All Files\n(gdb) file \"/home/a b/say \\\"hi\\\"\"\n"
           "program /home/a b/say \"hi\"\nend\n"},
          {"SYSTEM \"/other/no such file\"", {}, "(gdb) file \"/other/no such file\"\nend\n"},
          {"open-core",
           {file},
           "? 2009 /home/a b \\?* All Files\n(gdb) core-file /home/a b/say \"hi\"\nend\n"},
          {"symbol-file-of a b", {}, "(gdb) symbol-file \"a b\"\nend\n"},
          {"source-directory",
           {directory},
           "? 2011 /home/a b\n(gdb) directory \"/home/a \\\\b\"\nend\n"},
          {"Change-Directory", {directory}, "? 2011 /home/a b\n(gdb) cd /home/a \\b\nend\n"},
          {"change-directory  ..  ", {}, "(gdb) cd ..\nend\n"},
          {"choose-thread",
           {choice("2.1  \"thr\" 0x7ff in pause () at p.c:29")},
           "? 2005 Thread: 0[1.1* \"thr\" puts (str=0x5556 \"a\\n\") at ioputs.c:35]"
           "[2.1  \"thr\" 0x7ff in pause () at p.c:29]\n(gdb) thread 2.1\nend\n"},
          {"choose-frame",
           {{AnswerKind::kNumber, "11"}},
           "? 2019 Number of the frame, 0 to 11:\n#0  add at prog.c:7\n#1  __libc_start at "
           "libc.so.6\n"
           "#2  0x0001 0 11\n(gdb) frame 11\nend\n"},
          {"choose-frame 1", {}, "(gdb) frame 1\nend\n"},
          {"choose-breakpoints",
           {bits({"2  off  hw watchpoint counter", "3  on   twice (once)"})},
           "? 2010 Breakpoints that are to be on; the others go off:[1  on   add at prog.c:7 if "
           "left > 1]"
           "[2  off  hw watchpoint counter][3  on   twice (once)][4  off  later.c:9]\n"
           "(gdb) enable 2\n(gdb) disable 1\nend\n"},
          {"choose-breakpoints",
           {bits({})},
           "? 2010 Breakpoints that are to be on; the others go off:[1  on   add at prog.c:7 if "
           "left > 1]"
           "[2  off  hw watchpoint counter][3  on   twice (once)][4  off  later.c:9]\n"
           "(gdb) disable 1 3\nend\n"},
          {"set-signals",
           {bits({"SIGSEGV  stops  Segmentation fault", "SIGALRM  passes  Alarm clock"})},
           "? 2010 Signals that are to stop the program;\nthe others pass:"
           "[SIGSEGV  stops  Segmentation fault][SIGUSR1  passes  User defined signal 1]"
           "[SIGALRM  passes  Alarm clock]\n(gdb) handle SIGALRM stop print pass\nend\n"},
          {"set-variable",
           {choice("x = 16"), text(" 17 ")},
           "? 2005 Variable: 0[x = 16][name = 0x5556 \"a;\\\"b\\\"\\n\"]\n"
           "? 2003 New value of x, now 16:\n(gdb) set var x = 17\nend\n"},
          {"set-variable x",
           {text("")},
           "? 2003 New value of x, now 16:\nend: No value was given.\n"},
          {"set-variable y", {}, "end: y has no value: No symbol \"y\" in current context.\n"},
          {"set-variable p->x  a = 1", {}, "(gdb) set var p->x = a = 1\nend\n"},
          {"show-register",
           {choice("rip")},
           "? 2005 Register: 0[rax][rip]\n(gdb) info registers rip\nend\n"},
          {"attach-to 12", {}, "(gdb) attach 12\nend\n"},
          {"break-at",
           {text("a"), text("are"), choice("area(int)")},
           "? 2003 Beginning of the function's name, or FILE:LINE:\n"
           "? 2003 More than 200 functions begin with \"a\".\nA longer beginning:\n"
           "? 2005 Breakpoint at: 0[area(double, double)][area(int)]\n(gdb) break "
           "area(int)\nend\n"},
          {"break-at main", {}, "(gdb) break main\nend\n"},
          {"break-at prog.c:12", {}, "(gdb) break prog.c:12\nend\n"},
          {"break-at *0x8000", {}, "(gdb) break *0x8000\nend\n"},
          {"break-at \"", {}, "end: No function begins with \"\"\".\n"},
          {"break-at",
           {text(" ")},
           "? 2003 Beginning of the function's name, or FILE:LINE:\n"
           "end: There are too many functions to list them all; a beginning is needed.\n"},
      });
}

TEST(Words, RememberWhatWasConnectedToAndTakeNoAnswerForTheLast) {
  ScriptedControl control;
  const std::string question =
      "? 2003 Address, as localhost:3333 for OpenOCD,\n"
      "localhost:1234 for QEMU, a device, a socket:";
  EXPECT_EQ(control.take("connect", {text("")}), question + "\nend: No address was given.\n");
  EXPECT_EQ(control.take("connect board:3333"), "(gdb) target remote board:3333\nend\n");
  EXPECT_EQ(control.take("connect", {text("")}),
            question + "\nWithout an answer: board:3333\n(gdb) target remote board:3333\nend\n");
}

TEST(Words, EndWithASentenceWhenThereIsNothingToAskOrTheUserCancels) {
  ScriptedControl control;
  for (const char* word : {"choose-thread", "choose-frame", "choose-breakpoints", "set-signals",
                           "set-variable", "show-register"}) {
    EXPECT_THAT(control.take(word), StartsWith("end: ")) << word;
    EXPECT_THAT(control.take(word), HasSubstr(": Unexpected.")) << word;
  }
  control.results = kStoppedProgram;
  for (const char* word :
       {"open-program", "open-core", "symbol-file-of", "source-directory", "change-directory",
        "connect", "break-at", "choose-thread", "choose-frame", "choose-breakpoints", "set-signals",
        "set-variable", "show-register", "attach-to"}) {
    EXPECT_THAT(control.take(word), HasSubstr("end: cancelled")) << word;
  }
  EXPECT_THAT(control.take("set-signals", {bits({"SIGSEGV  stops  Segmentation fault"})}),
              EndsWith("\nend: Nothing was changed.\n"));
  for (const char* line : {"open-program a\tb", "source-directory a\x03", "break-at a\x1e",
                           "set-variable x \x03", "set-variable x\x03", "connect \x1a"}) {
    EXPECT_THAT(control.take(line), testing::MatchesRegex("end: [^\n]*\n")) << line;
  }
}

TEST(Words, LeaveARunAloneUnlessTheyNeedItsEnd) {
  ScriptedControl control;
  control.results = kStoppedProgram;
  const auto takeRunning = [&control](const std::string& line) {
    control.state.state = Target::State::kRunning;
    return control.take(line);
  };
  EXPECT_EQ(takeRunning("stop"), "interrupt\nend\n");
  EXPECT_EQ(control.take("Stop"), "interrupt\n> Nothing is running.\nend\n");
  EXPECT_EQ(takeRunning("choose-frame 1"), "interrupt\n(gdb) frame 1\nend\n");
  EXPECT_EQ(takeRunning("restart"), "interrupt\n(gdb) server run\nend\n");
  EXPECT_EQ(takeRunning("input  two  words "), "input [ two  words \n]\nend\n");
  EXPECT_EQ(takeRunning("  INPUT"), "input [\n]\nend\n");
  EXPECT_EQ(takeRunning("end-input"), "end of input\nend\n");
  EXPECT_EQ(takeRunning("mark-output On"), "mark\nend\n");
  EXPECT_EQ(takeRunning("mark-output off"), "no mark\nend\n");
  EXPECT_EQ(takeRunning("set-page-length 50"), "page 50\nend\n");
  EXPECT_EQ(takeRunning("restart-gdb"), "new GDB\n");
  EXPECT_EQ(takeRunning("exit"), "end\n");
  for (const char* line :
       {"mark-output", "mark-output maybe", "set-page-length", "set-page-length 5x",
        "set-page-length -1", "set-page-length 99999999999999999999", "stop now", "quit 3", "",
        " \t "}) {
    EXPECT_THAT(takeRunning(line), StartsWith("end: ")) << line;
  }
  control.state.remote = "localhost:1";
  EXPECT_THAT(control.take("input x"), StartsWith("end: "));
  control.state = {};
  EXPECT_THAT(control.take("end-input"), StartsWith("end: "));
}

TEST(Words, RestartAProgramAsItsSideDoes) {
  struct Restart {
    const char* remote;
    const char* query;
    const char* result;
    const char* journal;
  };
  const char* attached =
      "-interpreter-exec console \"python print(gdb.selected_inferior().was_attached)\"";
  const char* packet = "-interpreter-exec console \"maintenance packet qqemu.sstepbits\"";
  const char* connections = "-interpreter-exec console \"info connections\"";
  for (const Restart& each : {
           Restart{"", attached, "~\"False\\n\"\n^done\n", "(gdb) server run\nend\n"},
           Restart{"", attached, "~\"True\\n\"\n^done\n", "? 2001 The debugger was attached"},
           Restart{"q.sock", packet,
                   "~\"received: \\\"ENABLE=1,NOIRQ=2,NOTIMER=4\\\"\\n\"\n^done\n",
                   "(gdb) monitor system_reset\n(gdb) maintenance flush register-cache\nend\n"},
           Restart{"h:1", connections,
                   "~\"* 1    extended-remote h:1  Extended remote\\n\"\n^done\n",
                   "(gdb) server run\nend\n"},
           Restart{"h:1", connections, "~\"* 1    remote h:1  Remote target\\n\"\n^done\n",
                   "end: The other end"},
       }) {
    ScriptedControl control;
    control.state.remote = each.remote;
    control.results = {{each.query, each.result}};
    EXPECT_THAT(control.take("restart", {{AnswerKind::kNo}}), StartsWith(each.journal));
  }
}

TEST(Words, KeepFromGdbWhatWouldTakeItsConsoleAndNothingElse) {
  ScriptedControl control;
  for (const char* line : {"shell",
                           "she",
                           " ! ",
                           "edit",
                           "ed prog.c:7",
                           "pi",
                           "python-interactive",
                           "python-i",
                           "gr",
                           "tui enable",
                           "tu e",
                           "layout src",
                           "la",
                           "new-ui mi /dev/tty",
                           "set prompt x",
                           "set prom",
                           "set extended-prompt x",
                           "set editing",
                           "set editing on",
                           "set pagination on",
                           "set pa 1",
                           "set pagination",
                           "set height 10",
                           "set he=3",
                           "set annotate 1",
                           "set logging redirect on",
                           "set log red"}) {
    EXPECT_THAT(control.take(line), testing::MatchesRegex("end: [^\n]*\\.\n")) << line;
  }
  for (const char* line : {"shell ls",
                           "!ls",
                           "sh",
                           "echo",
                           "pi 1+1",
                           "python",
                           "python print(1)",
                           "show prompt",
                           "set var prompt = 1",
                           "set editing off",
                           "set pagination off",
                           "set height 0",
                           "set annotate 0",
                           "set logging redirect off",
                           "set logging enabled on",
                           "set print pretty",
                           "new",
                           "next",
                           "stopx",
                           "sto",
                           "break main",
                           "list",
                           "help break",
                           "help",
                           "# stop",
                           "exit-code",
                           "tbreak main",
                           "edition",
                           "restart_"}) {
    EXPECT_EQ(control.take(line), std::string(line) == "new" ? control.take("new-ui") : "GDB's")
        << line;
  }
}

TEST(Words, AreAllListedAndExplained) {
  ScriptedControl control;
  const std::string list = control.take("?\?");
  EXPECT_EQ(control.take("Help Nelgdb"), list);
  std::set<std::string> names;
  std::istringstream lines(list);
  for (std::string mark, name; lines >> mark >> name && mark == ">"; lines.ignore(999, '\n')) {
    if (name != "What" && name != "?\?") {
      EXPECT_THAT(control.take("help " + name),
                  testing::MatchesRegex("> [^\n]*\n>   [^\n]*\\.\nend\n"));
      names.insert(name);
    }
  }
  EXPECT_GT(names.size(), 20U);
  EXPECT_TRUE(names.contains("stop") && names.contains("set-signals"));
}

TEST(Words, OfferTheUsersOtherProcessesInTheirOrder) {
  char pattern[] = "/tmp/processes.XXXXXX";
  const std::filesystem::path folder = mkdtemp(pattern);
  const auto add = [&folder](int pid, int parent, const std::string& command) {
    const auto process = folder / std::to_string(pid);
    std::filesystem::create_directory(process);
    std::ofstream(process / "cmdline") << command;
    std::ofstream(process / "stat") << pid << " (a) b) S " << parent << " 7 7 0";
  };
  using namespace std::string_literals;
  add(9, 1, "/bin/early\0-x\0"s);
  add(10, 1, "evil\x1b[2J\n\0two  words\0"s);
  add(11, 1, "");           // a thread of the kernel
  add(50, 40, "/bin/gdb");  // ours
  add(40, 30, "nelgdb");
  add(30, 1, "nelmpm");
  add(31, 30, "nelkvui");
  add(60, 50, "/debugged/" + std::string(500, 'x') + "/end");
  std::filesystem::create_directory(folder / "sys");
  const Choices choices = processesIn(folder, 40, 30);
  std::filesystem::remove_all(folder);
  ASSERT_EQ(choices.size(), 3U);
  EXPECT_THAT(choices[2].item, testing::MatchesRegex("60  /debugged/x+\\.\\.\\.x+/end"));
  EXPECT_LT(choices[2].item.size(), 250U);
  EXPECT_EQ(choices[1].item, "10  evil?[2J? two  words");
  EXPECT_EQ(choices[0].item + '|' + choices[0].value, " 9  /bin/early -x|9");
  EXPECT_THAT(processesIn("/no such folder", 1, 2), IsEmpty());
}

TEST(Words, OfferThreadsSignalsAndBreakpointsToSearchFor) {
  ScriptedControl control;
  control.results = kStoppedProgram;
  control.state.signal = "SIG34";
  const auto collect = [&control] {
    tester_link::SearchLists lists;
    collectSearchLists(control, [&lists](const auto& found) { lists = found; });
    return lists;
  };
  const tester_link::SearchLists stopped = collect();
  EXPECT_THAT(stopped.processes,
              testing::ElementsAre("Thread 0x7ff (LWP 5)", "Thread 0x7fe (LWP 6)"));
  EXPECT_THAT(stopped.signals, testing::IsSupersetOf({"SIGSEGV", "SIG34"}));
  EXPECT_THAT(stopped.timers, testing::ElementsAre("add", "prog.c:7", "twice"));
  control.state.state = Target::State::kRunning;
  EXPECT_THAT(collect().processes, IsEmpty());
  EXPECT_EQ(collect().signals, stopped.signals);
}

}  // namespace
}  // namespace gdb
