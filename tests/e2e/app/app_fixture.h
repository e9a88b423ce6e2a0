#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/app/user.h"
#include "tests/support/basics.h"
#include "tests/support/scripted_postmaster.h"

#include <X11/keysym.h>

inline constexpr const char* kMainTitle = "Korvane UI";
inline constexpr const char* kRefusedTitle = "Korvane UI: INFO";
inline constexpr const char* kLostTitle = "Korvane UI: NELMPM Error";

/// The real program as the child of a scripted Postmaster, and its user.
class AppTest : public testing::Test {
 protected:
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
    EXPECT_EQ(postmaster.expectConnect().sender, NELKVUI);
    postmaster.accept();
    postmaster.send(MSG_START_POLL_TIMER);
    EXPECT_EQ(postmaster.expect(MSG_TOOL_READY).kind, kFrameUndirected);
  }

  /// Waits until what the user types reaches the command line.
  void awaitCommandLine() {
    mainWindow = user.awaitWindow(kMainTitle);
    const Deadline deadline(kAnswerTime);
    while (!postmaster.hasMessage(Milliseconds{50}) && !deadline.hasPassed()) {
      user.press(XK_Return);
    }
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

  /// Opens a pulldown by its mnemonic and chooses an item by its own.
  void choose(screen::KeySymbol menu, screen::KeySymbol item) {
    user.press(menu, screen::kAlt);
    user.awaitMenu();
    user.press(item);
    user.awaitNoMenu();
  }

  /// The tester says that a system in `folder` is open; the folder's button set is an empty one, so
  /// that the user is not asked for any.
  void openSystemIn(const std::filesystem::path& folder) {
    std::ofstream(folder / "nelkv.btn", std::ios::app);
    postmaster.send(MSG_T_SYSTEM_OPENED, folder.string(), "crossing");
    expectAnswer();
  }

  /// The program's working directory.
  std::filesystem::path workingFolder() {
    return std::filesystem::read_symlink("/proc/" + std::to_string(postmaster.tool().id()) +
                                         "/cwd");
  }

  /// A frame as bytes, with a payload that need not fit its tag.
  static std::string frame(int tag, std::string_view payload, int announced) {
    const FrameHeader header{kFrameDirected, tag, NELKV, NELKVUI, announced};
    std::string binary(reinterpret_cast<const char*>(&header), sizeof header);
    binary += payload;
    std::string text(2 * binary.size() + 1, '\0');
    NibbleEncode(binary.data(), text.data(), static_cast<int>(binary.size()));
    return text;
  }
  static std::string frame(int tag, std::string_view payload = {}) {
    return frame(tag, payload, static_cast<int>(payload.size()));
  }

  /// Presses OK in the box with this title.
  void confirm(const std::string& title) {
    const Window box = user.awaitWindow(title, mainWindow);
    user.press(XK_Return);
    user.awaitGone(box);
  }

  /// The user closes the window; the program takes its leave.
  void closeAndExpectEnd() {
    user.close(mainWindow);
    postmaster.expect(MSG_UI_EXIT);
    postmaster.expect(MSG_DISCONNECT);
    expectEnd();
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
