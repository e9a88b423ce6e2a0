// A session with the stand-in tester, as its user reads it.

#include "tester/debugger.h"

#include <gmock/gmock.h>

#include "tests/unit/tester/message_text.h"

namespace tester {
namespace {

using tester_link::AnswerKind;
using testing::HasSubstr;

class DebuggerTest : public testing::Test {
 protected:
  /// Carries out a command; all that comes of it: texts as they are, other messages in brackets.
  std::string run(const std::string& command) {
    debugger.takeCommand(command);
    return result();
  }
  std::string result() {
    for (pump(); debugger.isWorking(); pump()) {
      debugger.work();
    }
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

TEST_F(DebuggerTest, CarriesOutASessionCommandByCommand) {
  const std::pair<const char*, const char*> rows[] = {
      {"list", "Ambiguous command \"list\", it may be: list-process, "},
      {"set-trace", "Too few arguments. Usage: set-trace <level>"},
      {"now then", "Too many arguments. Usage: now\n"},
      {"send Press Button:3", "There is no instance Button:3."},
      {"send Press Button:x", "No instance number in \"Button:x\"."},
      {"show-instance Pedestrian", "Process Pedestrian has 0 living instances."},
      {"proceed-until 1.2345", "\"1.2345\" is no time in seconds"},
      {"next-transition 0", "\"0\" is no whole number from 1 up."},
      {"set-breakpoint Button Amber", "Unknown state \"Amber\"."},
      {"send Arrive Button:1 1 2", "Signal Arrive(Integer) takes 1 parameter, given: 2."},
      {"send SetAspect TrafficLight:1 Blue", "must be one of Red, RedAmber, Green"},
      {"set-trace 2", "Trace level 2, processes: all\n"},
      {"mask-trace Pedestrian Button", "processes: Button, Pedestrian\n"},
      {"proceed-until 1", "Done; transitions: 10, now: 1.000.\n[2015]"},
      {"set-breakpoint Button:2 * Press", "Breakpoint 1: Button:2 in * at Press\n"},
      {"set-breakpoint Button:2 * Press", "Breakpoint 1: "},
      {"set-breakpoint * VehiclesAmber", "Breakpoint 2: * in VehiclesAmber at *\n"},
      {"send ARR button:1 2", "Arrive(2) sent to Button:1\n"},
      {"next-transition 3",
       "[2014]\n"
       "      1.000  Button:1           Idle: Arrive(2)              -> Idle\n"
       "               create Pedestrian:1\n"
       "      1.000  Pedestrian:1       start                        -> Waiting\n"
       "               output Press to Button:1\n"
       "      1.000  Button:1           Idle: Press                  -> Lit\n"
       "               output Request(1) to Controller:1\n"
       "Done; transitions: 3, now: 1.000.\n[2015]\n[2002|next-transition 3]\n"},
      {"send Press Button:2", "Press sent to Button:2\n"},
      {"list-queue Button:2", "Button:2 in Idle:\n  Press  from env\n"},
      {"go",
       "Breakpoint 1 (Button:2 in * at Press) before Button:2 in Idle at Press; transitions: "},
      {"go",
       "Breakpoint 2 (* in VehiclesAmber at *) before Controller:1 in VehiclesAmber at Phase"},
      {"show-instance Button:1",
       "Instance Button:1 in Lit\n"
       "  parent null, offspring Pedestrian:1, sender Pedestrian:1, queue 0\n"
       "  timer Reminder at 61.000\n"
       "  party          PId      Pedestrian:1\n"
       "  peopleCrossed  Integer  0\n"},
      {"remove-breakpoint *", "Removed: 2 breakpoints."},
      {"proceed-until 40",
       "Pedestrian:1       Crossing: Walking            -> stop\n"
       "               output Crossed(2) to Button:1\n"},
      {"assign-variable Button:1 party Pedestrian:7", "Button:1 party := Pedestrian:7\n"},
      {"send Join Button:1 1", "Join(1) sent to Button:1\n"},
      {"restart", "[2016|Korvane - Restart|Lost by the restart: 1 queued signal.]"},
  };
  for (const auto& [command, expected] : rows) {
    EXPECT_THAT(run(command), HasSubstr(expected));
    user.takeAnswer({AnswerKind::kAcknowledged});
  }
}

TEST_F(DebuggerTest, LooksAndSendsBesideARunWhichWaitsForAnswersOnly) {
  debugger.takeCommand("go");
  for (const char* beside : {"list-timer", "show-instance Controller", "send Press Button:1"}) {
    debugger.takeCommand(beside);
    EXPECT_TRUE(debugger.isWorking()) << beside;
  }
  debugger.takeCommand("send");
  EXPECT_FALSE(debugger.isWorking()) << "while it asks";
  user.takeAnswer({AnswerKind::kCancelled});
  EXPECT_TRUE(debugger.isWorking());
  EXPECT_THAT(run("stop"), HasSubstr("[2002|go]\n> stop\n[2002|stop]\n"));
}

TEST_F(DebuggerTest, TellsADynamicErrorAndGoesOnAfterItsAcknowledgement) {
  run("set-trace 0");
  run("proceed-until 1");
  run("assign-variable Button:1 party Pedestrian:7");
  run("send Arrive Button:1 2");
  const std::string error =
      "Dynamic error in Button:1 in Idle at Arrive, now 1.000:\nSignal Join is sent to "
      "Pedestrian:7, which does not live.";
  EXPECT_EQ(run("go"), "> go\n[2014]\n" + error +
                           "\nStopped; transitions: 1, now: 1.000.\n[2015]\n" +
                           "[2013|Korvane - Dynamic error|" + error + "]\n");
  user.takeAnswer({AnswerKind::kAcknowledged});
  EXPECT_EQ(result(), "[2002|go]\n");
}

}  // namespace
}  // namespace tester
