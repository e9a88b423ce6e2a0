// How GDB is started, read, written to and missed: with programs of the system in its place.

#include <gmock/gmock.h>

#include <poll.h>
#include <sys/wait.h>

#include <cerrno>

#include "gdb/process/channel.h"
#include "gdb/process/child.h"
#include "gdb/process/debugger_process.h"
#include "gdb/process/pty.h"
#include "tester_link/tester_tool.h"
#include "tests/support/scripted_postmaster.h"

namespace {

using namespace std::chrono_literals;
using gdb::Channel;
using gdb::Child;
using gdb::PtyUse;

constexpr int kLongestWait = 20000;  // milliseconds

/// A shell with a script on a terminal.
class Shell {
 public:
  explicit Shell(const std::string& script, PtyUse use = PtyUse::kConsole)
      : Shell(script, gdb::openPty(use)) {}

  /// All that it prints until `text` or its end.
  std::string readUntil(const std::string& text) {
    std::string all;
    while (!channel.hasEnded() && (text.empty() || all.find(text) == std::string::npos)) {
      const short events = channel.hasToWrite() ? POLLIN | POLLOUT : POLLIN;
      pollfd entry{channel.descriptor(), static_cast<short>(events), 0};
      if (poll(&entry, 1, kLongestWait) <= 0) {
        ADD_FAILURE() << "nothing came behind " << all;
        break;
      }
      channel.flush();
      all += channel.read(1 << 16);
    }
    return all;
  }

  Channel channel;
  Child child;

 private:
  Shell(const std::string& script, gdb::Pty pty)
      : channel(std::move(pty.master)),
        child({"/bin/sh", {"-c", script}, gdb::debuggerEnvironment(), pty.name}) {}
};

TEST(DebuggerProcess, IsStartedAsAProgramExpectsItOnATerminalThatControlsIt) {
  const gdb::ChildSignals signals;  // what is blocked and ignored here is not there
  const std::pair<const char*, const char*> rows[] = {
      {"test -t 0 && test -t 1 && test -t 2 && : </dev/tty && echo controlled", "controlled\n"},
      {"ls -m /proc/$$/fd; :", "0, 1, 2\n"},
      {"grep SigBlk /proc/self/status", "SigBlk:\t0000000000000000\n"},
      {"sh -c 'kill -PIPE $$; echo ignored'; echo $?", "141\n"},
      {"echo $TERM $LC_ALL; stty -a | grep -oE -- '-?(echo|opost|icanon|isig) ' | tr -d '\\n'",
       "dumb C.UTF-8\n-opost isig -icanon -echo "},
  };
  for (const auto& [script, expected] : rows) {
    Shell shell(script);
    EXPECT_EQ(shell.readUntil(""), expected) << script;
  }
}

TEST(DebuggerProcess, GetsItsInputAsItsTerminalIsFor) {
  const std::string longLine(300000, 'x');
  struct Row {
    PtyUse use;
    const char* script;
    std::string input;
    const char* expected;
  };
  const Row rows[] = {
      // A console line is not cut; a byte 3 interrupts.
      {PtyUse::kConsole, "head -n 1 | wc -c", longLine + '\n', "300001\n"},
      {PtyUse::kConsole, "trap 'echo interrupted; exit' INT; echo; while :; do sleep 1; done",
       "\x03", "interrupted\n"},
      {PtyUse::kMachine, "head -c 6 | od -An -tx1", "\x03\x04\x1a\x11\r\n", " 03 04 1a 11 0d 0a\n"},
      // The program's input ends by a byte 4, and goes on.
      {PtyUse::kProgram, "wc -c; wc -c",
       "ab\n\x04"
       "c\n\x04",
       "3\n2\n"},
  };
  for (const Row& row : rows) {
    Shell shell("echo ready;" + std::string(row.script), row.use);
    shell.readUntil(std::string(row.script).starts_with("trap") ? "ready\n\n" : "ready\n");
    shell.channel.write(row.input);
    EXPECT_EQ(shell.readUntil(""), row.expected);
  }
}

/// A tester with all that would end a link: a child that ends, a pipe that breaks, and an error
/// that is left behind.
class Careless : public tester_link::Tester {
 public:
  explicit Careless(tester_link::UserLink& userLink) : user(userLink) {}

  void start() override {
    signals.emplace();
    child.emplace(gdb::Launch{"/bin/sh", {"-c", "exit 7"}, {}, pty.name});
  }
  void greet() override {}
  void takeCommand(const std::string& command) override {
    user.print(command + '\n');
    user.confirm(command);
    errno = EPIPE;
  }
  void userLeft() override {}
  void search() override {}
  bool isWorking() const override { return false; }
  void work() override {}
  int wakeDescriptor() const override { return signals->descriptor(); }
  void onWake() override {
    signals->take();
    if (const auto status = child->ended()) {
      std::array<int, 2> ends{};
      EXPECT_EQ(pipe(ends.data()), 0);
      close(ends[0]);
      EXPECT_EQ(write(ends[1], "x", 1), -1);
      user.print("It ended with status " + std::to_string(WEXITSTATUS(*status)) + ".\n");
    }
  }

 private:
  tester_link::UserLink& user;
  gdb::Pty pty = gdb::openPty(PtyUse::kConsole);
  std::optional<gdb::ChildSignals> signals;
  std::optional<Child> child;
};

TEST(ChildSignals, KeepTheLinkAliveThroughTheEndOfAChildAndABrokenPipe) {
  ScriptedPostmaster postmaster;
  postmaster.start([] {
    tester_link::UserLink user;
    Careless tester(user);
    return tester_link::TesterTool(tester, user).run("careless");
  });
  postmaster.expectConnect();
  postmaster.accept();
  postmaster.expect(MSG_TOOL_READY);
  postmaster.expect(MSG_T_TEXT, "It ended with status 7.\n");
  postmaster.send(MSG_UI_COMMAND, "still there");
  postmaster.expect(MSG_T_TEXT, "still there\n");
  postmaster.expect(MSG_T_PROMPT, "still there");
}

}  // namespace
