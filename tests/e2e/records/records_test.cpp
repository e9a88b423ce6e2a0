// A session with real programs is recorded in all ways, and what was kept of it is used: shown,
// filtered, replayed, handed to the next window.

#include <gmock/gmock.h>

#include <memory>
#include <regex>

#include "tests/support/child_process.h"
#include "tests/support/rendezvous.h"
#include "tests/support/screen/user.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

constexpr const char* kPrompt = "Korvane Select";
constexpr const char* kSystem = "Korvane UI - Pedestrian Crossing, now 0.000";

struct CloseDisplay {
  void operator()(Display* display) const { XCloseDisplay(display); }
};

class RecordsTest : public testing::Test {
 protected:
  RecordsTest() {
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
  }

  std::string file(const char* name) const { return folder / name; }

  /// Starts a Postmaster with a window, in the folder of the test.
  ChildProcess& start(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--tool", "nelkvui -xrm nelkvui.promptKeyDelay:0"});
    mpm =
        std::make_unique<ChildProcess>(Launch{builtProgram("nelmpm"),
                                              std::move(arguments),
                                              {"HOME=" + folder.path().string(), "XDG_CONFIG_HOME"},
                                              folder.path()});
    window = user.awaitWindow(kSystem);
    return *mpm;
  }
  /// Two commands and an answer, up to the end that the tester sends.
  void holdSession(screen::KeySymbol answer = XK_Return) {
    user.type("now\nshow-instance\n");
    const Window dialog = user.awaitWindow(kPrompt, window);
    user.press(answer);
    user.awaitGone(dialog);
    user.awaitWindow(kSystem);
    user.type("quit\n");
    mpm->exitStatus();
  }

  const TemporaryFolder folder;
  const RendezvousFolder rendezvous;
  const std::unique_ptr<Display, CloseDisplay> display{XOpenDisplay(nullptr)};
  screen::User user{display.get()};
  std::unique_ptr<ChildProcess> mpm;
  Window window = 0;
};

TEST_F(RecordsTest, ShowASessionAndAreGoneOnWith) {
  const std::vector<std::string> kept = {"--transcript",  file("transcript"), "--history",
                                         file("history"), "--tool",           "nelkv"};
  start(kept);
  holdSession();
  EXPECT_EQ(mpm->exitStatus(), 0) << mpm->report();
  EXPECT_EQ(mpm->errors(), "");
  const std::string transcript = readFile(file("transcript"));
  EXPECT_THAT(transcript, testing::ContainsRegex(" [?] choice \"Korvane Select\" \"Instance:\" 0 "
                                                 ".*\n.* = choice \"Button:1\"\n.* [|] Instance"));
  ChildProcess lnav({"/usr/bin/lnav",
                     {"-n", "-I", NEL_LNAV_FOLDER, "-c",
                      ";select group_concat(substr(log_level, 1, 1) || mark, '') as all_marks"
                      " from korvane_transcript where mark not in ('|', '+')",
                      "-c", ":write-csv-to -", file("transcript")},
                     {"HOME=" + folder.path().string(), "TERM=xterm"}});
  EXPECT_EQ(lnav.exitStatus(), 0) << lnav.report();
  EXPECT_THAT(lnav.output(), testing::HasSubstr("d#n>n>w?n=n>d#"));

  start(kept);
  for (int i = 0; i < 3; ++i) {
    user.press(XK_Down);
  }
  user.type("\n");
  user.waitFor([&] { return readFile(file("history")) == "now\nshow-instance\nquit\nnow\n"; },
               "a command out of the history");
  user.close(window);
  EXPECT_EQ(mpm->exitStatus(), 0) << mpm->report();
  EXPECT_TRUE(readFile(file("transcript")).starts_with(transcript));
}

TEST_F(RecordsTest, AreReplayedForTheSameUserAndForAnotherOne) {
  start({"--record", file("rec"), "--tool", "nelkv"});
  holdSession();
  const std::vector<std::string> replay = {"--replay",   file("rec"), "--speed",  "0",
                                           "--patience", "10",        "--record", file("again")};
  start(replay);
  holdSession();
  EXPECT_EQ(mpm->exitStatus(), 0) << mpm->report();
  EXPECT_EQ(mpm->errors(), "nelmpm: the replay has ended, as recorded\n");
  const std::regex time(" *[0-9]+[.][0-9]+ ");
  const auto texts = [&](const char* name) {
    ChildProcess dump({builtProgram("nel-dump"), {"--name", "2000", "--full", file(name)}});
    EXPECT_EQ(dump.exitStatus(), 0) << dump.report();
    return std::regex_replace(dump.output(), time, "");
  };
  EXPECT_EQ(texts("again"), texts("rec"));
  folder.write("rec", readFile(file("rec")) + "torn");
  start(replay);
  holdSession(XK_Escape);
  EXPECT_EQ(mpm->exitStatus(), 1) << mpm->report();
  EXPECT_THAT(mpm->errors(),
              testing::MatchesRegex("nelmpm: .*/rec: 1 damaged line.*\n"
                                    "nelmpm: replay: at [0-9.]+ s came: NELKVUI -> NELKV "
                                    "MSG_UI_CANCEL\\(1003\\), recorded is: .*"
                                    "\"Button:1\"\nnelmpm: the replay has ended, 1 difference\n"));
}

}  // namespace
