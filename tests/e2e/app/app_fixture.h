#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/e2e/app/user.h"
#include "tests/support/scripted_postmaster.h"

#include <X11/keysym.h>

inline constexpr const char* kMainTitle = "Korvane UI";
inline constexpr const char* kExitTitle = "Korvane UI Exit";
inline constexpr const char* kLostTitle = "Korvane UI: NELMPM Error";
inline constexpr const char* kPromptTitle = "Korvane Select";
inline constexpr screen::KeySymbol kClose = 0;  ///< no key, but the window manager

/// The real program as the child of a scripted Postmaster, and its user.
class AppTest : public testing::Test {
 public:
  /// In the test's folder; questions take keys at once.
  void start() {
    postmaster.start({builtProgram("nelkvui"),
                      {"-post", "-t/a/b", "-xrm", "nelkvui.promptKeyDelay:0"},
                      {},
                      folder.path()});
  }

  /// The handshake. The start of the poll timer goes out with the acceptance: a program that hears
  /// nothing for a moment stops reading.
  void shakeHands() {
    EXPECT_EQ(postmaster.expectConnect().sender, NELKVUI);
    postmaster.accept();
    postmaster.send(MSG_START_POLL_TIMER);
    EXPECT_EQ(postmaster.expect(MSG_TOOL_READY).kind, kFrameUndirected);
  }

  /// Waits until what the user types reaches the command line.
  void awaitCommandLine(const std::string& title = kMainTitle) {
    mainWindow = user.awaitWindow(title);
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
  /// The log, which begins with `line`, has been copied into the command line, and is sent.
  void expectInLog(const std::string& line, SourceLine where = SourceLine::current()) {
    expectAnswer(where);
    user.awaitWindow(kMainTitle);
    const screen::ScreenArea area = user.areaOf(mainWindow);
    click(area.width / 2, area.height / 2);
    for (const screen::KeySymbol key : {XK_slash, XK_c, XK_v}) {
      user.press(key, screen::kControl);
    }
    user.press(XK_Return);
    hear({line}, where);
  }

  std::filesystem::path procFolder() { return "/proc/" + std::to_string(postmaster.tool().id()); }
  /// Waits until the program sleeps, and sleeps again after the delay with which it gives away the
  /// focus: it has handled all input then. Between them its own timers may wake it.
  void awaitSleep() {
    constexpr Milliseconds kFocusDelay{200};
    const auto isAsleep = [&] {
      return readFile(procFolder() / "stat").find(") S") != std::string::npos;
    };
    user.waitFor(isAsleep, "a sleeping program");
    const Deadline delay(kFocusDelay);
    user.waitFor([&] { return delay.hasPassed() && isAsleep(); }, "a program that sleeps again");
  }

  /// Clicks at a place of the main window, pixels, and waits until it has been heard: keys may
  /// overtake a click that the window manager looks at.
  void click(int x, int y) {
    awaitSleep();
    const screen::ScreenArea area = user.areaOf(mainWindow);
    user.moveTo(area.x + x, area.y + y);
    user.button(screen::kLeftButton, true);
    user.button(screen::kLeftButton, false);
    user.awaitWindowManager();
    awaitSleep();
  }

  /// Opens a pulldown by its mnemonic and chooses an item by its own. A menu has the focus while it
  /// is up, and the window manager answers each of its changes, and a dialog's end, in its own
  /// time: such an answer to what was before would take the new menu from the screen.
  void choose(screen::KeySymbol menu, screen::KeySymbol item) {
    user.waitFor([&] { return user.hasInputFocus(mainWindow); }, "the focus at the main window");
    awaitSleep();
    user.awaitWindowManager();
    user.press(menu, screen::kAlt);
    user.awaitMenu();
    user.press(item);
    user.waitFor([&] { return !user.hasPopup(); }, "the menu to go");
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

  /// Changes the button set.
  void addGroup(const std::string& name) {
    choose(XK_b, XK_g);
    answer("Korvane UI Add Group", name);
    awaitCommandLine();
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
