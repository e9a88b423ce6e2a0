#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/app/user.h"
#include "tests/support/scripted_postmaster.h"

#include <X11/keysym.h>

inline constexpr const char* kMainTitle = "Korvane UI";
inline constexpr const char* kLostTitle = "Korvane UI: NELMPM Error";
inline constexpr const char* kPromptTitle = "Korvane Select";
inline constexpr screen::KeySymbol kClose = 0;  ///< no key, but the window manager

/// The real program as the child of a scripted Postmaster, and its user.
class AppTest : public testing::Test {
 public:
  /// Questions take keys at once.
  void start() {
    postmaster.start(
        {builtProgram("nelkvui"), {"-post", "-t/a/b", "-xrm", "nelkvui.promptKeyDelay:0"}});
  }

  /// The handshake. The start of the poll timer goes out with the acceptance: a program that hears
  /// nothing for a moment stops reading.
  void shakeHands() {
    const Message connect = postmaster.expectConnect();
    postmaster.accept();
    postmaster.send(MSG_START_POLL_TIMER);
    const Message ready = postmaster.expect(MSG_TOOL_READY);
    EXPECT_EQ(
        (std::vector<int>{connect.kind, connect.sender, connect.dest, ready.kind, ready.dest}),
        (std::vector<int>{kFrameDirected, NELKVUI, NELMPM, kFrameUndirected, 0}));
  }

  /// Waits until what the user types reaches the command line.
  void awaitCommandLine() {
    mainWindow = user.awaitWindow(kMainTitle);
    const auto isHeard = [&] {
      user.press(XK_Return);
      return postmaster.hasMessage(Milliseconds{50});
    };
    user.waitFor(isHeard, "a command");
    user.type("ready\n");
    postmaster.expectLater(MSG_UI_COMMAND, "ready");
  }

  /// All of the above.
  void connect() {
    start();
    shakeHands();
    awaitCommandLine();
  }

  /// The program still reads, decodes and answers: a range of one number asks nobody.
  void expectAnswer(SourceLine where = SourceLine::current()) {
    postmaster.send({MSG_T_ASK_RANGE, where}, "title", "prompt", 7, 7);
    postmaster.expect({MSG_UI_VALUE, where}, "7");
  }
  void tell(const std::string& text) { postmaster.send(MSG_T_TEXT, text); }
  /// The tester has opened the system in the test's folder.
  void openSystem() {
    postmaster.send(MSG_T_SYSTEM_OPENED, folder.path().string(), "crossing");
    expectAnswer();
  }
  /// The tester hears these commands.
  void hear(const std::vector<std::string>& commands, SourceLine where = SourceLine::current()) {
    for (const std::string& one : commands) {
      postmaster.expect({MSG_UI_COMMAND, where}, one);
    }
  }
  /// All text of the log, which is selected then.
  std::string log() {
    expectAnswer();
    user.awaitWindow(kMainTitle);
    awaitSleep();
    user.selectAll(mainWindow);
    awaitSleep();
    return user.selection();
  }

  /// Waits until the program has slept at each of many looks in a row: it has handled all input,
  /// and the delay with which it gives away the focus has passed.
  void awaitSleep() {
    const std::string file = "/proc/" + std::to_string(postmaster.tool().id()) + "/stat";
    constexpr int kLooks = 30;
    int asleep = 0;
    const auto sleepsOn = [&] {
      asleep = readFile(file).find(") S") != std::string::npos ? asleep + 1 : 0;
      return asleep == kLooks;
    };
    user.waitFor(sleepsOn, "a sleeping program");
  }

  /// Opens a pulldown by its mnemonic and chooses an item by its own.
  void choose(screen::KeySymbol menu, screen::KeySymbol item) {
    user.press(menu, screen::kAlt);
    user.awaitMenu();
    user.press(item);
    user.awaitNoMenu();
  }
  /// Waits for a dialog, answers it by a text and a key, or closes it, and waits for its end.
  void answer(const std::string& title, const std::string& text = "",
              screen::KeySymbol key = XK_Return, SourceLine where = SourceLine::current()) {
    const Window dialog = user.awaitWindow(title, mainWindow, where);
    if (!text.empty()) {
      awaitSleep();  // its field gets the focus later than the window
    }
    user.type(text);
    key != kClose ? user.press(key) : user.close(dialog);
    user.awaitGone(dialog, where);
  }

  /// The program ends regularly without another word.
  void expectEnd() {
    postmaster.expectHangUp();
    EXPECT_EQ(postmaster.exitStatus(), 0);
  }

  TemporaryFolder folder;
  ScriptedPostmaster postmaster;
  User user;
  Window mainWindow = 0;
};
