// The parts of a session that need no GDB.

#include <gmock/gmock.h>

#include <filesystem>

#include "gdb/mi/reader.h"
#include "gdb/options/options.h"
#include "gdb/session/answer_watch.h"
#include "gdb/session/busy_sign.h"
#include "gdb/session/interrupt_ladder.h"
#include "gdb/session/output_store.h"
#include "gdb/session/query_queue.h"
#include "gdb/session/startup.h"
#include "gdb/session/target_watch.h"
#include "tester_link/button_folder.h"
#include "tests/support/basics.h"

namespace gdb {
namespace {

using namespace std::chrono_literals;
using tester_link::Answer;
using tester_link::AnswerKind;
using tester_link::OutgoingMessage;
using testing::ElementsAre;

using Clock = std::chrono::steady_clock;
const Clock::time_point kStart{1h};

class OutputStoreTest : public testing::Test {
 protected:
  /// All text since the last call, and "<question>" for each.
  std::string shown() {
    std::string all;
    store.flush();
    for (int i = 0; i < 2000; ++i) {
      now += 1s;
      user.pump(now, [&all](const OutgoingMessage& message) {
        all += message.tag == 2000 ? std::get<std::string>(message.parameters[0]) : "<question>";
        return tester_link::UserLink::SendResult::kSent;
      });
    }
    return all;
  }

  tester_link::UserLink user;
  int pagings = 0;
  OutputStore store{user, [this] { ++pagings; }};
  tester_link::UserLink::Clock::time_point now{1h};
};

TEST_F(OutputStoreTest, MarksTheProgramsLinesAndGivesEachSourceLinesOfItsOwn) {
  store.addLine("(gdb) continue");
  store.addConsole("Contin", true);
  store.addConsole("uing.\n", true);
  store.addProgram("one\ntw");
  store.addProgram("o\n\nname? ");
  store.addConsole("\nBreakpoint 1\n", true);  // its empty line only is to end the other's
  store.addConsole("\nWatchpoint 2\n(y or n) ", true);
  store.addAnswer("y");
  store.addConsole("no end", true);
  store.addLine("(gdb) next");
  store.setMark(false);
  store.addProgram("plain");
  store.addLine("end");
  EXPECT_EQ(shown(),
            "(gdb) continue\nContinuing.\n> one\n> two\n> \n> name? \nBreakpoint 1\n\nWatchpoint "
            "2\n(y or n) y\nno end\n(gdb) next\nplain\nend\n");
  // A log knows lines and tabs; a return alone would go back over the line, and may come in parts.
  store.addConsole(std::string("a\tb\0c\x1b[1m\x7f\r", 11), true);
  store.addConsole("\nd\re\xc3\xa9\n", true);
  EXPECT_EQ(shown(), "a\tb.c.[1m.\nd\ne\xc3\xa9\n");
}

TEST_F(OutputStoreTest, AsksOnlyForWhatOneCommandSaysBeyondAPage) {
  const std::string three = "1\n2\n3\n";
  store.setPageLength(3);
  store.beginCommand();
  store.addConsole(three + three, false);  // of a run
  store.setPageLength(0);
  store.addConsole(three + three, true);
  store.setPageLength(3);
  store.beginCommand();
  store.addConsole(three, true);
  EXPECT_EQ(shown(), three + three + three + three + three) << "not before there is more";
  store.addConsole("4\n", true);
  EXPECT_EQ(shown(), "<question>");
  user.setUserPresent(false);
  store.forgetUser();
  EXPECT_EQ(pagings, 1) << "a question that nobody answers ends";
}

TEST_F(OutputStoreTest, KeepsWithinItsBoundAndTellsWhatItDropped) {
  const std::string line(999, 'x');
  EXPECT_TRUE(store.hasRoom());
  for (std::size_t i = 0; i < OutputStore::kMostWaiting / 1000 + 100; ++i) {
    store.addConsole(line + '\n', false);
  }
  EXPECT_FALSE(store.hasRoom()) << "the program waits";
  EXPECT_LE(user.waitingText(), OutputStore::kMostWaiting);
  EXPECT_LE(shown().size(), OutputStore::kMostWaiting);
  store.addConsole("next\n", false);
  EXPECT_THAT(shown(), testing::MatchesRegex("... 1?[0-9][0-9] lines dropped\nnext\n"));
  EXPECT_TRUE(store.hasRoom());
}

TEST_F(OutputStoreTest, ShowsTheBeginningAgainToOneWhoComesLater) {
  store.startKeeping();
  store.addLine("first");
  shown();
  EXPECT_TRUE(store.repeatKept());
  store.addLine("second");
  EXPECT_EQ(shown(), "first\nsecond\n");
  store.stopKeeping();
  EXPECT_FALSE(store.repeatKept());
}

TEST(TargetWatch, KnowsWhatTheTargetDoesByRecordsAlone) {
  TargetWatch watch;
  watch.takeGroups(
      mi::readLine(R"(1^done,groups=[{id="i1",type="process",executable="/d/prog"}])"));
  const std::pair<const char*, const char*> rows[] = {
      {"", "prog"},
      {R"(=thread-group-started,id="i1",pid="7")", "prog: stopped"},
      {R"(*running,thread-id="all")", "prog: running"},
      {R"(=breakpoint-modified,bkpt={number="1"})", "prog: running"},
      {R"(*stopped,reason="breakpoint-hit",frame={addr="0x1",func="main",file="/s/main.c",line="12"},thread-id="2")",
       "prog: stopped in main at main.c:12"},
      {R"(=thread-selected,id="3",frame={func="f",addr="0x2"})", "prog: stopped in f"},
      {R"(*stopped,reason="signal-received",signal-name="SIGSEGV",frame={addr="0x3"},thread-id="4")",
       "prog: stopped in 0x3"},
      // The end of one of two leaves the other; the last one's end has no "*stopped" as a rule.
      {R"(=thread-group-started,id="i2",pid="8")", "prog: stopped"},
      {R"(=thread-group-exited,id="i2",exit-code="07")", "prog: stopped"},
      {R"(=thread-group-exited,id="i1",exit-code="0106")", "prog"},
  };
  for (const auto& [line, title] : rows) {
    watch.take(mi::readLine(line));
    EXPECT_EQ(watch.title(), title) << line;
    if (watch.target().frame == "0x3") {
      EXPECT_EQ(watch.target().thread + watch.target().signal, "4SIGSEGV");
    }
  }
  EXPECT_TRUE(watch.takeBreakpointChange());
  EXPECT_FALSE(watch.takeBreakpointChange());
  EXPECT_THAT(watch.takeNotes(), ElementsAre("The program ended with status 70."));

  // A core file, and a remote target, whose records tell less.
  watch.takeGroups(
      mi::readLine(R"(^done,groups=[{id="i1",pid="7"},{id="i2",executable="/d/other"}])"));
  EXPECT_EQ(watch.title(), "other: stopped");
  watch.takeFrame(mi::readLine(R"(^done,frame={func="g",file="x.c",line="3"})"));
  EXPECT_EQ(watch.title(), "other: stopped in g at x.c:3");
  watch.takeConnections({.kind = mi::Record::Kind::kResult,
                         .text =
                             "  1    remote a:1 Remote target\n"
                             "* 2    extended-remote /dev/ttyS0 Extended remote serial target\n"});
  EXPECT_EQ(watch.target().remote, "/dev/ttyS0");
}

TEST(QueryQueue, AsksOneAfterTheOtherAndHoldsWhatARunningTargetDoesNotAnswer) {
  std::string written;
  std::string answers;
  QueryQueue queue([&written](const std::string& line) { written += line; });
  const auto keep = [&answers](const mi::Record& result) {
    answers += result.name + ' ' + result.results["msg"].string() + result.text + ';';
  };
  const auto take = [&](const char* line) {
    EXPECT_TRUE(queue.take(mi::readLine(line)));
    return std::exchange(written, {});
  };
  queue.ask("-one", keep);
  queue.ask("info \"x\"", [&](const mi::Record& result) {
    keep(result);
    queue.ask("-of-a-handler", keep);
  });
  queue.tell("-exec-interrupt");
  EXPECT_EQ(take(R"(~"a")"), "1-one\n-exec-interrupt\n");
  EXPECT_EQ(take("1^done"), "2-interpreter-exec console \"info \\\"x\\\"\"\n");
  queue.setHeld(true);
  queue.ask("-gdb-set prompt x", keep);
  EXPECT_EQ(take(R"(2^error,msg="no")"), "3-gdb-set prompt x\n") << "before the held one";
  EXPECT_EQ(take("3^done"), "");
  queue.setHeld(false);
  EXPECT_EQ(written, "4-of-a-handler\n");
  queue.ask("-late", keep);
  queue.fail("gone");
  EXPECT_EQ(answers, "done a;error no;done ;error gone;error gone;");
}

TEST(InterruptLadder, GoesFromTheTargetOverSignalsToTheUser) {
  const auto climb = [](bool isRunning) {
    std::string steps;
    InterruptLadder ladder;
    ladder.begin(kStart, isRunning);
    for (auto now = kStart; now < kStart + 20s; now += 100ms) {
      if (const auto step = ladder.step(now)) {
        steps += std::to_string((now - kStart) / 1s) + "TSPU"[static_cast<int>(*step)] + ' ';
      }
    }
    EXPECT_FALSE(ladder.isClimbing());
    return steps;
  };
  EXPECT_EQ(climb(true), "0T 1S 2P 3S 4S 5S 6S 7U ");
  EXPECT_EQ(climb(false), "0S 1S 2S 3S 4S 5U ");
}

TEST(AnswerWatch, FindsAnAnswerLateAfterItsTimeAndThenEverMoreSeldom) {
  AnswerWatch watch;
  const auto latenesses = [&] {
    std::string seconds;
    for (auto now = kStart; now < kStart + 20s; now += 1s) {
      const bool isDue = watch.deadline().value_or(now + 1s) <= now;
      seconds += watch.isLate(now) ? std::to_string((now - kStart) / 1s) + ' ' : isDue ? "? " : "";
    }
    return seconds;
  };
  watch.expect(kStart, 2s);
  EXPECT_EQ(latenesses(), "2 6 14 ");
  watch.expect(kStart, 10s);
  EXPECT_EQ(latenesses(), "10 ") << "a new answer has its own time";
  watch.expect(kStart, 2s);
  watch.end();
  EXPECT_EQ(latenesses(), "");
}

TEST(BusySign, IsShownAfterAMomentAndGoesAtOnce) {
  BusySign sign;
  // When, and whether something is busy; what the user sees then, and when the sign is due.
  const std::tuple<std::chrono::milliseconds, bool, const char*> rows[] = {
      {0ms, false, ""},         {100ms, true, "due 300"}, {299ms, true, "due 300"},
      {300ms, true, "on"},      {301ms, true, "shown"},   {400ms, false, "off"},
      {500ms, true, "due 700"}, {600ms, false, ""},       {700ms, true, "due 900"},
      {950ms, true, "on"}};
  for (const auto& [at, isBusy, expected] : rows) {
    const bool isChange = sign.update(isBusy, kStart + at);
    std::string seen = isChange ? sign.isShown() ? "on" : "off" : sign.isShown() ? "shown" : "";
    if (const auto due = sign.deadline()) {
      seen += "due " + std::to_string((*due - kStart) / 1ms);
    }
    EXPECT_EQ(seen, expected) << at.count();
  }
  sign.hide();
  EXPECT_TRUE(sign.update(true, kStart + 951ms)) << "for a new user";
}

/// The command line of nelgdb in words, and the commands with which GDB begins.
std::string beginning(std::vector<const char*> words) {
  words.insert(words.begin(), "nelgdb");
  const CommandLine line = parseCommandLine(static_cast<int>(words.size()), words.data());
  std::string all = line.text;
  if (line.options) {
    for (const std::string& command : firstCommands(*line.options)) {
      all += command + ';';
    }
  }
  return all;
}

TEST(StartOfASession, LoadsWhatTheCommandLineNames) {
  const std::filesystem::path here = std::filesystem::current_path();
  const std::pair<std::vector<const char*>, std::string> rows[] = {
      {{}, ""},
      {{"/p", "-x", "--core", "a b", "it's", "", "--"},
       "file /p;set args -x --core 'a b' 'it'\\''s' '' --;"},
      {{"--", "-p"}, "file " + (here / "-p").string() + ";"},
      {{"--cd", "/", "--core", "c", "--command", "x", "--command", "y", "a b"},
       "file \"" + (here / "a b").string() + "\";core-file " + (here / "c").string() + ";source " +
           (here / "x").string() + ";source " + (here / "y").string() + ";"},
      {{"--pid", "12"}, "attach 12;"},
      {{"--remote", "h:1"}, "target remote h:1;"},
      {{"--serial", "/dev/ttyS0:9600"}, "set serial baud 9600;target remote /dev/ttyS0;"},
      {{"--no-such", "p"}, "nelgdb: there is no option --no-such; try nelgdb --help\n"},
      {{"--cd", "/dev/null"}, "nelgdb: cannot enter /dev/null: Not a directory\n"},
  };
  for (const auto& [words, expected] : rows) {
    EXPECT_EQ(beginning(words), expected);
    std::filesystem::current_path(here);
  }
  for (const std::vector<const char*>& wrong : std::vector<std::vector<const char*>>{
           {"--pid", "x"}, {"--core"}, {"--remote", "a:1", "--serial", "/dev/x"}}) {
    EXPECT_THAT(beginning(wrong), testing::MatchesRegex("nelgdb: [^\n]*; try nelgdb --help\n"));
  }
}

TEST(StartOfASession, TakesTheGdbOfTheProgramsMachineAndTheNearestButtons) {
  const TemporaryFolder folder;
  const std::string program =
      folder.write("firmware.elf", "\x7f\x45LF\x01\x01\x01" + std::string(57, '\0'));
  EXPECT_EQ(debuggerFor({}, program), "gdb-multiarch");
  EXPECT_EQ(debuggerFor({.debugger = "/my/gdb"}, program), "/my/gdb");
  EXPECT_EQ(debuggerFor({}, "/proc/self/exe"), "gdb");
  EXPECT_EQ(debuggerFor({}, folder.path()), "gdb");
  EXPECT_EQ(buttonFolder({}, program), "");
  folder.write("nelkv.btn", ":A\n");
  EXPECT_EQ(buttonFolder({}, program), folder.path());
  EXPECT_EQ(buttonFolder({.buttons = folder.path()}, "/bin/sh"), folder.path());

  for (const char* list :
       {"bt", "backtrace full", "thread apply all bt 3", "where", "info threads"}) {
    EXPECT_THAT(frameSettingFor(list), testing::EndsWith(" auto")) << list;
  }
  for (const char* other : {"next", "up", "print bt1", ""}) {
    EXPECT_THAT(frameSettingFor(other), testing::EndsWith(" source-and-location")) << other;
  }
}

TEST(StartOfASession, KeepsACopyOfTheShippedButtonsUntilTheUserChangesIt) {
  const TemporaryFolder shipped;
  const TemporaryFolder home;
  const std::filesystem::path own = home.path() / "gdb";
  const auto copyOf = [&](const std::string& set) {
    shipped.write("nelkv.btn", set);
    EXPECT_EQ(tester_link::copiedButtons(shipped.path(), own), own);
    return readFile(own / "nelkv.btn");
  };
  EXPECT_EQ(copyOf("one"), "one");
  EXPECT_EQ(copyOf("two"), "two");
  home.write("gdb/nelkv.btn", "mine");
  EXPECT_EQ(copyOf("three"), "mine");
  std::filesystem::remove(own / "nelkv.btn");
  EXPECT_EQ(copyOf("three"), "three");
  EXPECT_EQ(tester_link::copiedButtons(shipped.path(), "/proc/none"), shipped.path());
}

}  // namespace
}  // namespace gdb
