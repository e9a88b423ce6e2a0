// A session with real programs is recorded in all ways, and what was kept of it is used: shown,
// filtered, replayed, handed to the next window.

#include <gmock/gmock.h>

#include <memory>
#include <regex>

#include "tests/support/child_process.h"
#include "tests/support/message.h"
#include "tests/support/rendezvous.h"
#include "tests/support/screen/user.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

using testing::HasSubstr;

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
  std::string dump(std::vector<std::string> arguments) {
    ChildProcess program({builtProgram("nel-dump"), std::move(arguments)});
    EXPECT_EQ(program.exitStatus(), 0) << program.report();
    return program.output();
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
  EXPECT_THAT(lnav.output(), HasSubstr("d#n>n>w?n=n>d#"));

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

TEST_F(RecordsTest, AreReplayedForTheSameUserAnotherOneAndNobody) {
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
    return std::regex_replace(dump({"--name", "2000", "--full", file(name)}), time, "");
  };
  EXPECT_EQ(texts("again"), texts("rec"));
  start(replay);
  holdSession(XK_Escape);
  EXPECT_EQ(mpm->exitStatus(), 1) << mpm->report();
  EXPECT_THAT(mpm->errors(),
              testing::MatchesRegex("nelmpm: replay: at [0-9.]+ s came: NELKVUI -> NELKV "
                                    "MSG_UI_CANCEL\\(1003\\), recorded is: .*"
                                    "\"Button:1\"\nnelmpm: the replay has ended, 1 difference\n"));

  // Cut off in the answer, so that the question stays open.
  const std::string whole = readFile(file("rec"));
  const std::string answered =
      toWire({kFrameDirected, MSG_UI_LIST_CHOICE, NELKVUI, NELKV, {"Button:1"}},
             MessageDirection::kSentByUi);
  folder.write("cut", whole.substr(0, whole.find(answered.c_str()) + 30));
  ChildProcess program({builtProgram("nelmpm"),
                        {"--replay", file("cut"), "--speed", "100", "--close", "--tool", "nelkvui"},
                        {},
                        folder.path()});
  EXPECT_EQ(program.exitStatus(), 1) << program.report();
  const std::string notCome =
      "nelmpm: replay: at [0-9.]+ s did not come: NELKVUI -> NELKV MSG_UI_COMMAND\\(1002\\) ";
  EXPECT_THAT(program.errors(), testing::MatchesRegex("nelmpm: .*/cut: 1 damaged line.*\n" +
                                                      notCome + "\"now\"\n" + notCome +
                                                      "\"show-instance\"\n"
                                                      "nelmpm: the replay.*, 2 differences\n"));
}

}  // namespace
