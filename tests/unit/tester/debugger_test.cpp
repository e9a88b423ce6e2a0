// Commands of the stand-in tester: what the user reads of them.

#include "tester/debugger.h"

#include <gmock/gmock.h>

#include "tester/commands.h"
#include "tests/support/temporary_folder.h"
#include "tests/unit/tester/message_text.h"

namespace tester {
namespace {

using tester_link::Answer;
using tester_link::AnswerKind;
using testing::HasSubstr;

class DebuggerTest : public testing::Test {
 protected:
  /// Carries out a command; all that comes of it: texts as they are, other messages in brackets.
  std::string run(const std::string& command) {
    debugger.takeCommand(command);
    return result();
  }
  std::string answer(const Answer& reply) {
    user.takeAnswer(reply);
    return result();
  }
  std::string result() {
    while (debugger.isWorking()) {
      pump();
      debugger.work();
    }
    pump();
    return std::exchange(told, {});
  }
  void pump() {
    now += tester_link::UserLink::kTextPeriod;
    user.pump(now, [this](const tester_link::OutgoingMessage& message) {
      const std::string text = messageText(message);
      told += text.starts_with("2000|") ? text.substr(5) : '[' + text + "]\n";
      return tester_link::UserLink::SendResult::kSent;
    });
  }

  SimulatedSystem system{crossingModel()};
  tester_link::UserLink user;
  Debugger debugger{system, user};
  tester_link::UserLink::Clock::time_point now{std::chrono::hours(1)};
  std::string told;
};

TEST_F(DebuggerTest, NamesWhatItDoesNotUnderstand) {
  const std::pair<const char*, const char*> rows[] = {
      {"list", "Ambiguous command \"list\", it may be: list-process, "},
      {"fly", "Unknown command \"fly\". \"?\?\" lists the commands."},
      {"set-trace", "Too few arguments. Usage: set-trace <level>"},
      {"now then", "Too many arguments. Usage: now\n"},
      {"send Press Button:3", "There is no instance Button:3."},
      {"send Press Button:x", "No instance number in \"Button:x\"."},
      {"send Zzz Button:1", "Unknown signal \"Zzz\"."},
      {"list-process Zzz", "Unknown process \"Zzz\"."},
      {"show-instance Pedestrian", "Process Pedestrian has no living instance."},
      {"proceed-until -1", "\"-1\" is no time in seconds"},
      {"proceed-until 1.2345", "\"1.2345\" is no time in seconds"},
      {"next-transition 0", "\"0\" is no whole number from 1 up."},
      {"set-trace 4", "from 0 to 3"},
      {"set-page-length -1", "\"-1\" is no whole number from 0 up."},
      {"remove-breakpoint 1", "no breakpoint \"1\""},
      {"set-breakpoint Button Amber", "Unknown state \"Amber\"."},
      {"assign-variable Controller cycle x",
       "[2013|Korvane - Refused|Variable cycles must be a whole"},
      {"send Arrive Button:1 1 2", "[2013|Korvane - Refused|Signal Arrive(Integer) takes 1 param"},
      {"send SetAspect TrafficLight:1 Blue", "must be one of Red, RedAmber, Green"},
      {"system /x/y", "[2013|Korvane - Refused|The file /x/y cannot be read.]"},
  };
  for (const auto& [command, expected] : rows) {
    EXPECT_THAT(run(command), HasSubstr(expected));
    answer({AnswerKind::kAcknowledged});
  }
}

TEST_F(DebuggerTest, ListsEveryCommandAndFindsEachByItsName) {
  const std::string list = run("?\?");
  for (const CommandRow& row : allCommands()) {
    EXPECT_THAT(list, HasSubstr(usageText(row)));
    EXPECT_EQ(*findCommand(row.name).value, &row);
  }
}

TEST_F(DebuggerTest, TracesARunAndShowsWhatItLeft) {
  run("set-trace 2");
  run("mask-trace Pedestrian Button");
  run("proceed-until 1");
  run("send ARR button:1 2");
  EXPECT_EQ(run("next-transition 3"),
            "> next-transition 3\n[2014]\n"
            "      1.000  Button:1           Idle: Arrive(2)              -> Idle\n"
            "               create Pedestrian:1\n"
            "      1.000  Pedestrian:1       start                        -> Waiting\n"
            "               output Press to Button:1\n"
            "      1.000  Button:1           Idle: Press                  -> Lit\n"
            "               output Request(1) to Controller:1\n"
            "Done; transitions: 3, now: 1.000.\n[2015]\n[2002|next-transition 3]\n");
  EXPECT_EQ(run("show-instance Button:1"),
            "> show-instance Button:1\n"
            "Instance Button:1 in Lit\n"
            "  parent null, offspring Pedestrian:1, sender Pedestrian:1, queue 0\n"
            "  timer Reminder at 61.000\n"
            "  party          PId      Pedestrian:1\n"
            "  peopleCrossed  Integer  0\n"
            "[2002|show-instance Button:1]\n");
  EXPECT_THAT(run("list-timer"), HasSubstr("Supervisor:1  Watchdog  at 10.000\n"
                                           "Controller:1  Phase     at 15.000\n"));
  EXPECT_THAT(run("proceed-until 40"),
              HasSubstr("Pedestrian:1       Crossing: Walking            -> stop\n"
                        "               output Crossed(2) to Button:1\n"));
  EXPECT_THAT(run("show-instance Button:1"), HasSubstr("peopleCrossed  Integer  2\n"));
  EXPECT_THAT(run("restart"),
              HasSubstr("stands at its start again.\n[2008|Pedestrian Crossing, now 0.000]"));
  run("send Press Button:2");
  EXPECT_THAT(run("restart"),
              HasSubstr("[2016|Korvane - Restart|Lost by the restart: 1 queued signal.]"));
}

TEST_F(DebuggerTest, StopsBeforeATransitionThatABreakpointDescribesAndGoesOnFromThere) {
  run("set-trace 0");
  EXPECT_THAT(run("set-breakpoint Button:2 * Press"),
              HasSubstr("Breakpoint 1: Button:2 in * at Press\n"));
  EXPECT_THAT(run("set-breakpoint Button:2 * Press"),
              HasSubstr("Breakpoint 1: Button:2 in * at Press\n"));
  run("set-breakpoint * VehiclesAmber");
  run("proceed-until 1");
  run("send Press Button:2");
  EXPECT_THAT(run("go"), HasSubstr("Breakpoint 1 (Button:2 in * at Press) before Button:2 in Idle "
                                   "at Press; transitions: 0, now: 1.000.\n"));
  EXPECT_THAT(run("go"), HasSubstr("Breakpoint 2 (* in VehiclesAmber at *) before Controller:1 in "
                                   "VehiclesAmber at Phase; transitions: "));
  run("next-transition");
  EXPECT_EQ(system.find({"Controller", 1})->state, "AllRed");
  run("remove-breakpoint 2");
  EXPECT_THAT(run("list-breakpoint"), HasSubstr("\n1  Button:2 in * at Press\n[2002"));
  EXPECT_THAT(run("proceed-until 100"), HasSubstr("now: 100.000.\n"));
}

TEST_F(DebuggerTest, LooksAndSendsBesideARunWhichWaitsForAnswersOnly) {
  run("set-trace 0");
  debugger.takeCommand("go");
  pump();
  debugger.work();
  for (const char* beside :
       {"list-timer", "show-instance Controller", "now", "send Press Button:1"}) {
    debugger.takeCommand(beside);
    EXPECT_TRUE(debugger.isWorking()) << beside;
  }
  debugger.takeCommand("send");
  EXPECT_FALSE(debugger.isWorking()) << "while it asks";
  user.takeAnswer({AnswerKind::kCancelled});
  EXPECT_TRUE(debugger.isWorking());
  EXPECT_THAT(run("stop"), testing::AllOf(HasSubstr("Interrupted; transitions: 500"),
                                          HasSubstr("[2002|go]\n> stop\n[2002|stop]\n")));
}

TEST_F(DebuggerTest, AsksAfterEachPageWhetherToShowTheNext) {
  run("set-page-length 7");
  EXPECT_THAT(run("list-signal"), HasSubstr("\nLamp(Integer, Aspect)\nAlarm(AlarmCause)\n"
                                            "[2001|Korvane - Page file|More lines: "));
  answer({AnswerKind::kYes});
  EXPECT_THAT(answer({AnswerKind::kNo}), HasSubstr("Stopped; lines not shown: "));
  run("set-page-length 0");
  EXPECT_THAT(run("list-signal"), testing::EndsWith("Fault(Integer)\n[2002|list-signal]\n"));
}

TEST_F(DebuggerTest, TellsADynamicErrorAndGoesOnAfterItsAcknowledgement) {
  run("set-trace 0");
  run("proceed-until 1");
  run("assign-variable Button:1 party Pedestrian:7");
  run("send Arrive Button:1 2");
  const std::string error =
      "Dynamic error in Button:1 in Idle at Arrive, now 1.000:\nSignal Join is "
      "sent to Pedestrian:7, which does not live.";
  EXPECT_EQ(run("go"), "> go\n[2014]\n" + error +
                           "\nStopped; transitions: 1, now: 1.000.\n[2015]\n" +
                           "[2013|Korvane - Dynamic error|" + error + "]\n");
  EXPECT_EQ(answer({AnswerKind::kAcknowledged}), "[2002|go]\n");
}

TEST_F(DebuggerTest, OpensASystemInItsDirectory) {
  const TemporaryFolder folder;
  const std::string path = folder.path().string();
  EXPECT_THAT(run("system " + folder.write("c.sym", "system Lift\n").string()),
              HasSubstr("c.sym describes the system \"Lift\"."));
  answer({AnswerKind::kAcknowledged});
  EXPECT_THAT(run("system " + folder.write("a 'b.sym", "system Pedestrian crossing\n").string()),
              testing::AllOf(HasSubstr("[2012|" + path + "|Pedestrian Crossing]"),
                             HasSubstr("[2008|Pedestrian Crossing (a 'b.sym), now 0.000]")));
  EXPECT_THAT(run("change-directory ."), HasSubstr("Source directory: " + path + '\n'));
}

}  // namespace
}  // namespace tester
