#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/app/user.h"
#include "tests/support/scripted_postmaster.h"

#include <X11/keysym.h>

inline constexpr const char* kMainTitle = "Korvane UI";
inline constexpr const char* kRefusedTitle = "Korvane UI: INFO";
inline constexpr const char* kLostTitle = "Korvane UI: NELMPM Error";
inline constexpr const char* kPromptTitle = "Korvane Select";
inline constexpr screen::KeySymbol kClose = 0;  ///< no key, but the window manager

/// The real program as the child of a scripted Postmaster, and its user.
class AppTest : public testing::Test {
 public:
  /// Questions take keys at once, unless the test gives them a delay in milliseconds.
  void start(std::vector<std::string> arguments = {}, std::vector<std::string> environment = {},
             int keyDelay = 0) {
    arguments.insert(arguments.end(),
                     {"-xrm", "nelkvui.promptKeyDelay:" + std::to_string(keyDelay)});
    postmaster.start({builtProgram("nelkvui"), std::move(arguments), std::move(environment)});
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
  void awaitCommandLine(User& typist) {
    const auto isHeard = [&] {
      typist.press(XK_Return);
      return postmaster.hasMessage(Milliseconds{50});
    };
    typist.waitFor(isHeard, "a command");
    typist.type("ready\n");
    postmaster.expectLater(MSG_UI_COMMAND, "ready");
  }
  void awaitCommandLine() {
    mainWindow = user.awaitWindow(kMainTitle);
    awaitCommandLine(user);
  }

  /// All of the above.
  void connect(int keyDelay = 0) {
    start({}, {}, keyDelay);
    shakeHands();
    awaitCommandLine();
  }

  /// The program still reads, decodes and answers: a range of one number asks nobody.
  void expectAnswer(SourceLine where = SourceLine::current()) {
    postmaster.send({MSG_T_ASK_RANGE, where}, "title", "prompt", 7, 7);
    postmaster.expect({MSG_UI_VALUE, where}, "7");
  }
  /// Text of the tester that the program has taken.
  void tell(const std::string& text) {
    postmaster.send(MSG_T_TEXT, text);
    expectAnswer();
  }
  /// The user types a line and the tester hears it, or these commands, if any.
  void command(const std::string& line, const std::vector<std::string>& heard = {},
               SourceLine where = SourceLine::current()) {
    user.type(line + "\n");
    hear(heard.empty() ? std::vector{line} : heard, where);
  }
  void hear(const std::vector<std::string>& commands, SourceLine where = SourceLine::current()) {
    for (const std::string& one : commands) {
      postmaster.expect({MSG_UI_COMMAND, where}, one);
    }
  }

  std::string procFolder() { return "/proc/" + std::to_string(postmaster.tool().id()); }
  /// Waits until the program has slept at each of many looks in a row: it has handled all input.
  void awaitSleep() {
    const std::string file = procFolder() + "/stat";
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

  /// The tester says that a system in `folder` is open.
  void openSystemIn(const std::filesystem::path& folder) {
    postmaster.send(MSG_T_SYSTEM_OPENED, folder.string(), "crossing");
  }

  /// Waits for a dialog, answers it by a text and a key, or closes it, and waits for its end.
  void answer(const std::string& title, const std::string& text = "",
              screen::KeySymbol key = XK_Return, SourceLine where = SourceLine::current()) {
    const Window dialog = user.awaitWindow(title, mainWindow, where);
    awaitSleep();  // its field may get the focus later than the window
    user.type(text);
    key != kClose ? user.press(key) : user.close(dialog);
    user.awaitGone(dialog, where);
  }

  /// The program ends regularly without another word.
  void expectEnd(int status = 0) {
    postmaster.expectHangUp();
    EXPECT_EQ(postmaster.exitStatus(), status);
  }

  ScriptedPostmaster postmaster;
  User user;
  Window mainWindow = 0;
};
