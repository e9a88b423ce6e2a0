// The crossing as firmware, built, run by QEMU and debugged by GDB with the tester's words: where
// it does what the simulation does it must say so in the same words.

#include <gmock/gmock.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "link/message_numbers.h"
#include "tester/debugger.h"
#include "tests/support/child_process.h"

namespace {

using Lines = std::vector<std::string>;

Launch command(Lines words, const std::filesystem::path& folder = {}) {
  return {.program = "/usr/bin/env", .arguments = std::move(words), .workingFolder = folder};
}

/// What the simulation says to each word.
Lines simulated(const Lines& words) {
  using tester_link::UserLink;
  tester::SimulatedSystem system(tester::crossingModel());
  UserLink user;
  tester::Debugger debugger(system, user);
  std::string text;
  UserLink::Clock::time_point now;
  const auto pump = [&] {
    now += UserLink::kTextPeriod;
    user.pump(now, [&](const tester_link::OutgoingMessage& message) {
      if (message.tag == MSG_T_TEXT) {
        text += std::get<std::string>(message.parameters[0]);
      }
      return UserLink::SendResult::kSent;
    });
  };
  Lines answers;
  for (const std::string& word : words) {
    debugger.takeCommand(word);
    while (debugger.isWorking()) {
      debugger.work();
      pump();
    }
    user.takeAnswer({.kind = tester_link::AnswerKind::kAcknowledged});  // a box of an error
    pump();
    answers.push_back(text.substr(text.find('\n') + 1));  // behind the word itself
    text.clear();
  }
  return answers;
}

/// The commands of the button set that need neither the user nor the tester on GDB.
Lines buttonCommands() {
  const Lines others = {"stop", "restart", "send Arrive Button:2", "remove-breakpoint"};
  std::ifstream file(NEL_EXAMPLES "/crossing.btn");
  Lines commands;
  bool isLabel = false;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#' || line[0] == ':') {
      continue;
    }
    isLabel = !isLabel;
    if (!isLabel && line != "separator" && !std::count(others.begin(), others.end(), line)) {
      std::istringstream pieces(line);
      for (std::string piece; std::getline(pieces, piece, ';');) {
        commands.push_back(piece);
      }
    }
  }
  return commands;
}

class CrossingArm : public testing::Test {
 protected:
  static void SetUpTestSuite() { folder = std::make_unique<TemporaryFolder>(); }

  void SetUp() override {
    for (const char* tool : {"make", "arm-none-eabi-gcc", "qemu-system-arm", "gdb-multiarch"}) {
      if (ChildProcess(command({"which", tool})).exitStatus() != 0) {
        GTEST_SKIP() << "there is no " << tool << "; \"scripts/setup arm\" installs it";
      }
    }
    if (!std::filesystem::exists(build() + "/crossing.elf")) {
      ChildProcess make(command(
          {"make", "-j2", "-C", std::string(NEL_EXAMPLES) + "/crossing-arm", "BUILD=" + build()}));
      ASSERT_EQ(make.exitStatus(), 0) << make.report();
    }
  }

  static void TearDownTestSuite() { folder.reset(); }

  static std::string build() { return *folder / "build"; }

  /// What GDB says to each word at a target that has just been reset. It is interrupted as soon as
  /// it says `moment`.
  Lines debugged(const Lines& words, const std::string& moment = "") {
    std::filesystem::remove(build() + "/q");
    ChildProcess qemu(
        command({"qemu-system-arm", "-M", "mps2-an385", "-nographic", "-serial", "null", "-monitor",
                 "none", "-S", "-gdb", "unix:q,server=on,wait=off", "-kernel", "crossing.elf"},
                build()));
    EXPECT_TRUE(waitUntil([] { return std::filesystem::exists(build() + "/q"); })) << qemu.report();
    Lines commands = {"sh",
                      "-c",
                      "exec \"$@\" 2>&1",
                      "sh",
                      "gdb-multiarch",
                      "-nx",
                      "-q",
                      "-batch",
                      "crossing.elf",
                      "-ex",
                      "source crossing.gdb",
                      "-ex",
                      "target remote q",
                      "-ex",
                      "echo \\036"};
    for (const std::string& word : words) {
      commands.insert(commands.end(), {"-ex", word, "-ex", "echo \\036"});
    }
    ChildProcess gdb(command(commands, build()));
    if (!moment.empty()) {
      gdb.expectText(moment);
      gdb.signal(SIGINT);
    }
    gdb.exitStatus();
    std::istringstream output(gdb.output());
    Lines answers;
    std::string answer;
    std::getline(output, answer, '\x1e');  // of the connection
    while (std::getline(output, answer, '\x1e')) {
      answers.push_back(answer);
    }
    EXPECT_GE(answers.size(), words.size()) << gdb.report();
    answers.resize(words.size());
    return answers;
  }

  /// Of all the tests: the firmware is built once.
  static inline std::unique_ptr<TemporaryFolder> folder;
};

// Words that change the system, and wrong ones.
const char* const kFurtherWords[] = {
    // Signals wait in the order in which they came; what the state saves stays.
    "set-trace 3",
    "send Press Button:1",
    "send arr button:1 2",
    "list-queue",
    "next-transition 2",
    "assign-variable Controller:1 requests 41",
    "set-breakpoint Controller Clearance",
    "go",
    "send Request Controller 7",
    "list-queue Controller",
    "next-transition",
    "show-instance Controller",
    "go",
    // Breakpoints by instance, state and start; of any process.
    "remove-breakpoint 4",
    "set-breakpoint * start",
    "set-breakpoint Button:2 lit",
    "set-breakpoint * Broken Fail",
    "send Fail TrafficLight:1",
    "send Arrive Button:2 1",
    "go",
    "go",
    "set-breakpoint TrafficLight:2",
    "go",
    "remove-breakpoint *",
    "set-breakpoint *",
    "next-transition 3",
    "go",
    "remove-breakpoint *",
    // What ends at an instance that does not live is told, and the system goes on.
    "assign-variable Button:2 party Pedestrian:77",
    "assign-variable Button:1 party null",
    "send Served Button:2",
    "proceed-until 1000.5",
    "mask-trace Supervisor but",
    "set-trace 2",
    "next-transition 40",
    "list-trace",
    "proceed-until 20000",
    "list-process",
    "list-timer",
    // Wrong words.
    "list-process foo",
    "send Noise Button:1",
    "send Lamp Button:1 1 Purple",
    "show-instance Button:3",
    "proceed-until 1.2345",
    "assign-variable Button:1 peopleCrossed many",
    "set-breakpoint Button Waiting",
    "show-instance Button:1",
};

TEST_F(CrossingArm, SaysAndDoesWhatTheSimulationDoes) {
  Lines words = {"list-definition", "list-signal", "set-breakpoint Controller AllRed Phase"};
  const Lines buttons = buttonCommands();
  words.insert(words.end(), buttons.begin(), buttons.end());
  words.insert(words.end(), std::begin(kFurtherWords), std::end(kFurtherWords));
  // More parties than there may be; then the place of one that left is taken.
  words.emplace_back("set-trace 2");
  for (int i = 0; i < 22; ++i) {
    words.insert(words.end(), {"assign-variable Button:1 party null", "send Arrive Button:1 1",
                               "next-transition 3"});
    if (i == 20) {
      words.insert(words.end(), {"send Cross Pedestrian:5", "proceed-until 20020"});
    }
  }
  words.emplace_back("list-process");
  const Lines expected = simulated(words);
  const Lines answers = debugged(words);
  for (std::size_t i = 0; i < words.size(); ++i) {
    EXPECT_EQ(answers[i], expected[i]) << words[i];
  }
}

struct OwnWord {
  std::string word;
  std::string answer;  ///< a regular expression for the end of what is said
};

// What the simulation has not, or does otherwise.
const OwnWord kOwnWords[] = {
    {"list-process", "^The system is not started: \"next-transition\" or \"go\" starts it.\n"},
    {"proceed-until 3", "Done; transitions: 10, now: 3.000.\n"},
    {"list-history 2",
     "^      0.000  TrafficLight:1 [^\n]*\n      0.000  TrafficLight:2 [^\n]* -> Green\n"},
    // Lamps are lit at the board.
    {"x/wx 0x40028000", "0x00000003\n"},
    // Timers, and nothing left to do.
    {"set-timer Button:1 Reminder 5", "^Button:1 Reminder set to 8.000\n"},
    {"reset-timer Controller phase", "^Controller:1 Phase reset\n"},
    {"reset-timer Supervisor Watchdog", "^Supervisor:1 Watchdog reset\n"},
    {"list-timer", "^Button:1  Reminder  at 8.000\n"},
    {"go", "discarded\nNothing to do until a signal comes: [^\n]*; transitions: 1, now: 8.000.\n"},
    // GDB's own breakpoint in the middle of a transition.
    {"tbreak request", ""},
    {"send Press Button:1", "^Press sent to Button:1\n"},
    {"go", "request \\(self=.*\nStopped; transitions: 0, now: 8.000.\n"},
    {"send Press Button:2", "^Press sent to Button:2 when the transition has ended\n"},
    {"send Press Button:2", "^The mailbox is full: let the transition end first.\n"},
    {"next-transition", "^      8.000  Button:1           Idle: Press                  -> Lit\n"},
    {"next-transition 2", "Button:2           Idle: Press                  -> Lit\nDone; [^\n]*\n"},
    // A timer that has expired is reset like one that has not; the next input is a new one.
    {"set-breakpoint PedestrianLight:2 Blinking", ""},
    {"send Walk PedestrianLight:2", ""},
    {"send DontWalk PedestrianLight:2", ""},
    {"go", "before PedestrianLight:2 in Blinking at Blink; [^\n]*\n"},
    {"reset-timer PedestrianLight:2 Blink", "^PedestrianLight:2 Blink reset\n"},
    {"send Walk PedestrianLight:2", ""},
    {"go", "^Breakpoint 1 [^\n]* before PedestrianLight:2 in Blinking at Walk; [^\n]*\n"},
    {"remove-breakpoint 1", ""},
    // A full queue: of the environment, in a transition, of a timer.
    {"restart-target", "^The system stands at its start again.\n"},
    {"send Press Button:1", ""},
    {"set-breakpoint PedestrianLight * DontWalk", ""},
    {"go", "Breakpoint 2 .* before PedestrianLight:1 in GreenMan at DontWalk; .* now: 28.000.\n"},
    {"python for i in range(8): gdb.execute('send Request Controller 1')", "Controller:1\n"},
    {"send Request Controller 1", "^The queue of Controller:1 is full.\n"},
    {"remove-breakpoint *", "^Removed: 1 breakpoint.\n"},
    {"set-trace 2", ""},
    {"go",
     "output Ping\\(3\\) to Controller:1: lost, its queue is full\n"
     "Dynamic error in Supervisor:1 in Watching at Watchdog, now 30.000:\n"
     "Signal Ping is lost: the queue of Controller:1 is full.\nStopped; transitions: [0-9]+, "
     "[^\n]*\n"},
    {"print sdl_error_count", "= 1\n"},
    {"set variable sdl_processes[1].queue[0].type = 200", ""},
    {"list-queue Controller", "The system's tables in the target make no sense; [^\n]*\n"},
    {"restart-target",
     "^The system stands at its start again.\nLost by the restart: 10 queued signals.\n"},
    // The clock.
    {"set variable sdl_simulates_time = 0", ""},
    {"proceed-until 0.2", "\nDone; transitions: 10, now: (0.[2-9]|[1-9])[0-9.]*\n"},
    {"set variable sdl_simulates_time = 1", ""},
    {"set-trace 1", ""},
    {"go", "\nInterrupted; transitions: [0-9]+, now: [0-9.]+.\n"},
    // A reset by somebody else; what is no target that stands.
    {"monitor system_reset", ""},
    {"maintenance flush register-cache", ""},
    {"now", "^now = 0.000\n"},
    {"disconnect", ""},
    {"now", "^There is no target: \"target remote HOST:PORT\" connects to one.\n"},
    {"target remote q", ""},
    {"continue &", ""},
    {"go", "^The target is running: stop it first.\n"},
};

TEST_F(CrossingArm, TellsWhatATargetAloneCanDo) {
  Lines words;
  for (const OwnWord& each : kOwnWords) {
    words.push_back(each.word);
  }
  const Lines answers = debugged(words, "Ping(50)");
  for (std::size_t i = 0; i < words.size(); ++i) {
    EXPECT_THAT(answers[i], testing::ContainsRegex(kOwnWords[i].answer)) << words[i];
  }
}

}  // namespace
