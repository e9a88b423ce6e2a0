#include "tests/unit/tester/debugger_fixture.h"
#include "tests/unit/tester/toy_system.h"

namespace tester {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ToyDebuggerTest : public DebuggerTest {
 protected:
  ToyDebuggerTest() : DebuggerTest(toyModel()) {}
};

TEST_F(DebuggerTest, NamesWhatItDoesNotUnderstand) {
  const std::pair<const char*, const char*> rows[] = {
      {"list", "Ambiguous command \"list\", it may be: list-process, "},
      {"set-trace", "Too few arguments. Usage: set-trace <level>"},
      {"now then", "Too many arguments. Usage: now\n"},
      {"send \"Press Button", "A quoted text is not closed."},
      {"send Press Button:3", "There is no instance Button:3."},
      {"send Press Button:x", "No instance number in \"Button:x\"."},
      {"send Zzz Button:1", "Unknown signal \"Zzz\"."},
      {"send Arrive Button:1 1 2", "Arrive(Integer) takes 1 parameters"},
      {"send Arrive Button:1 many", "Parameter 1 of Arrive(Integer) must be a whole number"},
      {"send SetAspect TrafficLight:1 Blue", "one of Red, RedAmber, Green"},
      {"set-timer Controller Phase -1", "\"-1\" is no time in seconds"},
      {"next-transition 0", "\"0\" is no whole number from 1 up."},
      {"set-trace 4", "from 0 to 3"},
      {"remove-breakpoint 1", "no breakpoint \"1\""},
      {"help fly", "Unknown command"},
  };
  for (const auto& [command, answer] : rows) {
    EXPECT_THAT(run(command), HasSubstr(answer));
  }
}

TEST_F(DebuggerTest, TakesAbbreviationsInAnyCase) {
  EXPECT_EQ(run("l-p super"), "Supervisor:1  start  queue 0\n");
  EXPECT_EQ(run("LIST-PR Super"), "Supervisor:1  start  queue 0\n");
  EXPECT_EQ(run("output pr button:2"), "Press sent to Button:2\n");
  EXPECT_THAT(run("l-q button:2"), HasSubstr("Press  from env"));
  EXPECT_THAT(run("n-t"), HasSubstr("Supervisor:1       start                        -> Watching"));
  // A whole name is never ambiguous, though others begin with it.
  EXPECT_THAT(run("show TrafficL:1 aspect"), HasSubstr("aspect  Aspect  Dark"));
}

TEST_F(DebuggerTest, ListsEveryCommandAndExplainsEachOne) {
  const std::string list = run("?\?");
  for (const CommandRow& row : testerCommands().all()) {
    EXPECT_THAT(list, HasSubstr(usageText(row)));
    EXPECT_THAT(run("help " + std::string(row.name)), HasSubstr(usageText(row)));
    EXPECT_EQ(*testerCommands().find(row.name).value, &row);
  }
  EXPECT_THAT(run("help send"), HasSubstr("Also called output."));
}

TEST_F(DebuggerTest, ShowsAndChangesAnInstance) {
  run("proceed-until 1");
  EXPECT_EQ(run("assign-variable Controller minimum true"), "Controller:1 minimumOver := true\n");
  EXPECT_THAT(run("assign Controller cycles x"), HasSubstr("must be a whole number, not \"x\""));
  EXPECT_THAT(run("print Controller"), HasSubstr("minimumOver  Boolean  true"));
  EXPECT_EQ(run("reset-timer Controller Ph"), "Timer Phase of Controller:1 is reset\n");
  EXPECT_EQ(run("set-timer Controller Phase 2.5"),
            "Timer Phase of Controller:1 expires at 3.500\n");
  EXPECT_EQ(run("list-timer"),
            "Controller:1  Phase     at 3.500\nSupervisor:1  Watchdog  at 10.000\n");
  EXPECT_THAT(run("list-definition Controller"), HasSubstr("timers: Phase"));
  EXPECT_EQ(run("list-signal lamp"), "Lamp(Integer, Aspect)\n");
}

TEST_F(DebuggerTest, StopsBeforeATransitionThatABreakpointDescribesAndGoesOnFromThere) {
  run("set-trace 0");
  EXPECT_EQ(run("set-breakpoint Button:2 * Press"), "Breakpoint 1: Button:2 in * at Press\n");
  EXPECT_EQ(run("breakpoint Button:2 * Press"), "Breakpoint 1: Button:2 in * at Press\n");
  EXPECT_EQ(run("set-breakpoint * VehiclesAmber"), "Breakpoint 2: * in VehiclesAmber at *\n");
  EXPECT_THAT(run("set-breakpoint Button VehiclesAmber"), HasSubstr("Unknown state"));
  run("proceed-until 1");
  // The breakpoint counts although the transition is the first of the run.
  run("send Press Button:2");
  EXPECT_THAT(run("go"),
              HasSubstr("Breakpoint 1 (Button:2 in * at Press) before Button:2 in Idle at "
                        "Press; transitions: 0, now: 1.000."));
  EXPECT_EQ(system.instance({"Button", 2})->state, "Idle");
  EXPECT_THAT(run("go"), HasSubstr("Breakpoint 2 (* in VehiclesAmber at *) before Controller:1 in "
                                   "VehiclesAmber at Phase;"));
  EXPECT_EQ(system.instance({"Button", 2})->state, "Lit");
  EXPECT_EQ(system.now(), 18 * kSecond);
  EXPECT_EQ(run("next-transition"), "");
  EXPECT_EQ(system.instance({"Controller", 1})->state, "AllRed");
  run("remove-breakpoint 2");
  EXPECT_EQ(run("list-breakpoint"), "1  Button:2 in * at Press\n");
  EXPECT_THAT(run("proceed-until 100"), HasSubstr("now: 100.000."));
}

TEST_F(DebuggerTest, PausesARunWhileItsTextIsNotTaken) {
  dialogue.takesTrace = false;
  debugger.execute("next-transition 3");
  debugger.runSlice();
  EXPECT_TRUE(debugger.isRunning());
  EXPECT_EQ(system.ready().size(), 8U);
  dialogue.takesTrace = true;
  debugger.runSlice();
  // The third one, a traffic light's, found a signal waiting behind its start.
  EXPECT_EQ(system.ready().size(), 6U);
  EXPECT_THAT(dialogue.text, HasSubstr("Done; transitions: 3, now: 0.000."));
}

TEST_F(DebuggerTest, LooksAndSendsBesideARunWhichWaitsForAnswersOnly) {
  run("set-trace 0");
  debugger.execute("go");
  debugger.runSlice();
  EXPECT_EQ(dialogue.title, "Pedestrian Crossing, running");
  for (const char* beside :
       {"list-timer", "show-instance Controller", "now", "send Press Button:1"}) {
    debugger.execute(beside);
    EXPECT_TRUE(debugger.isRunning()) << beside;
    EXPECT_EQ(dialogue.confirmed.back(), beside);
  }
  debugger.execute("send");
  EXPECT_FALSE(debugger.isRunning()) << "while it asks";
  debugger.takeAnswer({AnswerKind::kCancelled});
  EXPECT_TRUE(debugger.isRunning());
  debugger.execute("stop");
  EXPECT_FALSE(debugger.isRunning());
  EXPECT_THAT(dialogue.text, HasSubstr("Interrupted; transitions: 500"));
  EXPECT_THAT(dialogue.confirmed, testing::Contains("go"));
}

TEST_F(DebuggerTest, EndsACommandWhoseQuestionCannotBeAsked) {
  run("mask-trace");
  debugger.dropQuestion();
  EXPECT_THAT(dialogue.text, HasSubstr("too long for a message.\nThe command ends here"));
  EXPECT_EQ(dialogue.confirmed.back(), "mask-trace");
}

TEST_F(DebuggerTest, TracesAsMuchAsAskedForEachProcess) {
  run("set-trace 0");
  run("set-trace 2 Pedestrian");
  EXPECT_THAT(run("list-trace"), HasSubstr("Pedestrian       2"));
  run("send Arrive Button:1 2");
  EXPECT_EQ(run("proceed-until 1"),
            "      0.000  Pedestrian:1       start                        -> Waiting\n"
            "               output Press to Button:1\n"
            "Done; transitions: 14, now: 1.000.\n");
  run("set-trace 3");
  EXPECT_THAT(run("proceed-until 30"), HasSubstr("               set Walking to 26.000\n"));
}

TEST_F(DebuggerTest, BeginsAnewOnRestartAndKeepsBreakpoints) {
  run("set-trace 0");
  run("set-breakpoint Supervisor start");
  run("next-transition 50");
  run("restart");
  EXPECT_EQ(system.now(), 0);
  EXPECT_THAT(run("go"), HasSubstr("Breakpoint 1 (Supervisor in start at *) before Supervisor:1 in "
                                   "start; transitions: 0"));
}

TEST_F(ToyDebuggerTest, SaysWhenNothingIsLeftToDo) {
  EXPECT_THAT(run("go"), HasSubstr("Nothing to do until a signal comes: no transition is ready, no "
                                   "timer is active; transitions: 2, now: 0.000."));
  run("send Add Clerk:1 7");
  EXPECT_EQ(run("list-queue"), "Clerk:1 in Closed:\n  Add(7)  from env  saved\n");
  EXPECT_EQ(run("list-queue Clerk:2"), "The queue of Clerk:2 is empty.\n");
  EXPECT_THAT(run("list-ready"), HasSubstr("No transition is ready"));
  EXPECT_EQ(run("list-timer"), "No timer is active.\n");
  EXPECT_THAT(run("proceed-until 7"), HasSubstr("Done; transitions: 0, now: 7.000."));
  EXPECT_THAT(run("proceed-until 6"), HasSubstr("This time is over: it is 7.000."));
}

TEST(NamesTest, SplitsWordsAtBlanksOutsideQuotes) {
  EXPECT_THAT(*splitWords(" a  \"b c\"'d e'\tf '' ").value, ElementsAre("a", "b cd e", "f", ""));
  EXPECT_THAT(*splitWords("  ").value, IsEmpty());
  EXPECT_FALSE(splitWords("a 'b"));
}

TEST(NamesTest, AbbreviatesPartByPart) {
  EXPECT_TRUE(abbreviates("l-p", "list-process"));
  EXPECT_TRUE(abbreviates("list", "list-process"));
  EXPECT_TRUE(abbreviates("list-", "list-process"));
  EXPECT_FALSE(abbreviates("l-p-x", "list-process"));
  EXPECT_FALSE(abbreviates("listp", "list-process"));
  EXPECT_EQ(*findName("go", {"go-on", "go"}, "command").value, "go");
  EXPECT_FALSE(findName("", {"go"}, "command"));
}

}  // namespace
}  // namespace tester
