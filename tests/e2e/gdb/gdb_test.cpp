// A developer debugs real programs from the window: the words and their dialogs, what GDB says, and
// the title. The tests go by the transcript, which has each text as soon as it was sent.

#include <gtest/gtest.h>

#include <sys/ptrace.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "postmaster/processes.h"
#include "tests/e2e/app/user.h"
#include "tests/support/child_process.h"
#include "tests/support/rendezvous.h"

#include <X11/keysym.h>

namespace {

namespace fs = std::filesystem;

constexpr const char* kPrompt = "Korvane Select";

std::string pathOf(const char* program) {
  return postmaster::findProgram(program, "/", getenv("PATH")).value_or("");
}

/// Why nothing can be debugged here; empty where it can.
std::string debuggingFault() {
  if (pathOf("gdb").empty()) {
    return "gdb is not installed";
  }
  // Some containers forbid it.
  ChildProcess child([] { return ptrace(PTRACE_TRACEME) == 0 ? 0 : errno; });
  const int error = child.exitStatus();
  return error == 0 ? "" : std::string("ptrace is not permitted: ") + std::strerror(error);
}

class GdbTest : public testing::Test {
 protected:
  GdbTest() {
    // A button set beside the program comes up by itself, without a question.
    folder.write("nelkv.btn", "");
    fs::copy_file(builtProgram("nel_debuggee"), program);
  }
  void SetUp() override {
    if (const std::string why = debuggingFault(); !why.empty()) {
      GTEST_SKIP() << why;
    }
  }

  void TearDown() override {
    if (HasFailure()) {
      ADD_FAILURE() << readFile(transcript) << (korvane ? korvane->report() : "");
    }
  }

  /// Starts all in the folder of the test and waits until the user can type.
  void start(const std::vector<std::string>& programs, const std::string& title) {
    std::vector<std::string> words = {"--transcript", transcript, "--gdb"};
    words.insert(words.end(), programs.begin(), programs.end());
    words.insert(words.end(), {"--", "-xrm", "nelkvui.promptKeyDelay:0"});
    korvane = std::make_unique<ChildProcess>(Launch{
        builtProgram("korvane"),
        words,
        {"XDG_STATE_HOME=" + folder.path().string(), "XDG_CONFIG_HOME=" + folder.path().string()},
        folder.path()});
    window = user.awaitWindow(title);
    const auto isHeard = [&] {
      user.press(XK_Return);
      seen = std::max(seen, readFile(transcript).rfind("> ?\?") + 1);
      return seen != 0;
    };
    user.waitFor(isHeard, "a command");
  }

  /// Types a command as soon as the main window has the focus.
  void type(const std::string& line, SourceLine where = SourceLine::current()) {
    user.waitFor([&] { return user.hasInputFocus(window); }, "the main window", where);
    user.type(line + '\n');
  }
  /// Answers the dialog that is to come by some keys.
  void answer(const std::string& title, const std::vector<screen::KeySymbol>& keys,
              const std::string& text = "", SourceLine where = SourceLine::current()) {
    const Window dialog = user.awaitWindow(title, window, where);
    user.type(text);
    for (const screen::KeySymbol key : keys) {
      user.press(key);
    }
    user.awaitGone(dialog, where);
  }
  /// The log or a dialog shows that, behind what was seen before.
  void see(const std::string& text, SourceLine where = SourceLine::current()) {
    const auto isThere = [&] {
      const std::size_t found = readFile(transcript).find(text, seen);
      const bool isFound = found != std::string::npos;
      seen = isFound ? found + text.size() : seen;
      return isFound;
    };
    user.waitFor(isThere, '"' + text + "\" in the log", where);
  }
  void seeTitle(const std::string& title, SourceLine where = SourceLine::current()) {
    user.waitFor([&] { return user.windowWithTitle("Korvane UI - " + title) == window; },
                 "the title " + title, where);
  }

  const TemporaryFolder folder;
  const RendezvousFolder rendezvous;
  const std::string program = folder / "debuggee";
  const std::string transcript = folder / "transcript";
  User user;
  std::unique_ptr<ChildProcess> korvane;
  Window window = 0;
  std::size_t seen = 0;  ///< of the transcript, bytes
};

TEST_F(GdbTest, FollowsAProgramFromItsStartToItsExitAndAnew) {
  start({program}, "Korvane UI - debuggee");
  type("break-at placeOf");
  answer(kPrompt, {XK_Down, XK_Return});
  see("(gdb) break placeOfSum(int, int)\n");
  type("run");
  see("Breakpoint 1, placeOfSum (left=2, right=3)");
  seeTitle("debuggee: stopped in placeOfSum at debuggee.cpp:14");
  type("next;info locals");
  see("sum = 5\n");
  type("set-variable");
  answer(kPrompt, {XK_Down, XK_Down, XK_Return});
  answer(kPrompt, {XK_Return}, "40");
  see("(gdb) set var sum = 40\n");
  type("choose-frame");
  answer(kPrompt, {XK_Return}, "1");
  see("#1 ");
  see("in main (argc=1");

  type("continue");
  see("total 40\n");
  seeTitle("debuggee: running");
  type("input some words");
  type("stop");
  see("SIGINT");
  seeTitle("debuggee: stopped in placeOfSpin at debuggee.cpp:20");
  type("set-variable spinning 0");
  type("continue");
  see("read some words\n");
  see("exited with code 050]");
  seeTitle("debuggee");

  type("disable;restart");
  see("total 5\n");
  type("restart-gdb;info breakpoints");
  see("keep n ");
  see("in placeOfSum(int, int)");
  type("quit");
  EXPECT_EQ(korvane->exitStatus(), 0) << korvane->report();
}

TEST_F(GdbTest, OpensAProgramAndWhatItLeft) {
  start({}, "Korvane UI - no program");
  type("open-program");
  answer("Open Program", {XK_Return}, "debuggee");
  see("Reading symbols from " + program);
  seeTitle("debuggee");
  user.waitFor([&] { return fs::exists(folder / "nelkv.btn~"); }, "the buttons beside the program");
  type("break-at placeOfSpin;run;print 40+2");
  see("Breakpoint 1, placeOfSpin ()");
  see("$1 = 42");
  type("generate-core-file left here;kill");
  see("Saved corefile left here");
  answer("Korvane - GDB", {XK_Return});
  seeTitle("debuggee");
  type("open-core left here");
  see("#0  placeOfSpin ()");
  seeTitle("debuggee: stopped in placeOfSpin at debuggee.cpp:19");
  type("quit");
  EXPECT_EQ(korvane->exitStatus(), 0) << korvane->report();
}

TEST_F(GdbTest, LooksIntoAProcessAndLetsItGo) {
  ChildProcess process({program, {"spin"}});
  process.expectText("spins\n");
  start({}, "Korvane UI - no program");
  type("attach-to " + std::to_string(process.id()));
  see("placeOfSpin ()");
  type("set-variable");
  answer(kPrompt, {XK_Return});
  answer(kPrompt, {XK_Escape});
  see("Cancelled.\n");
  type("input words");
  see("Nothing was sent");
  type("quit");
  EXPECT_EQ(korvane->exitStatus(), 0) << korvane->report();
  EXPECT_TRUE(process.isRunning());
}

TEST_F(GdbTest, DebugsWhatRunsUnderAServer) {
  const std::string server = pathOf("gdbserver");
  if (server.empty()) {
    GTEST_SKIP() << "gdbserver is not installed";
  }
  ChildProcess stub({server, {"--once", "localhost:0", program}});
  constexpr const char* kListening = "Listening on port ";
  stub.expectText(kListening);
  const std::string told = stub.errors();
  const int port = std::stoi(told.substr(told.find(kListening) + std::strlen(kListening)));

  start({program}, "Korvane UI - debuggee");
  type("connect");
  answer(kPrompt, {XK_Return}, "localhost:" + std::to_string(port));
  see("Remote debugging using localhost:");
  type("break-at placeOfSpin;continue");
  seeTitle("debuggee: stopped in placeOfSpin at debuggee.cpp:19");
  type("continue");
  seeTitle("debuggee: running");
  type("stop");
  seeTitle("debuggee: stopped in placeOfSpin at debuggee.cpp:20");
  type("restart");
  see("The other end restarts its program");
  stub.kill();
  type("next");
  see("Remote c");
  seeTitle("debuggee");
  type("quit");
  EXPECT_EQ(korvane->exitStatus(), 0) << korvane->report();
}

}  // namespace
