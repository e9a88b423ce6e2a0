// The course of a replay: what is played when, and what is told of the window's messages.

#include <gmock/gmock.h>

#include <optional>
#include <regex>
#include <sstream>

#include "postmaster/replay.h"
#include "tests/unit/records/records.h"

namespace {

using std::chrono::milliseconds;

/// What comes from the window, and when.
struct Came {
  int time;
  frames::Message message;
};

/// Replays a recording by a clock of its own, which starts with the window. The result is what was
/// played, "time text", and then what was told. The window leaves at `end`.
std::string replayed(const std::vector<frames::RecordedFrame>& recording,
                     postmaster::ReplayOptions options, const std::vector<Came>& window,
                     bool* isGood = nullptr, int end = 100000) {
  postmaster::Replay::TimePoint now{};
  const auto start = now;
  const auto clock = [&now] { return now; };
  std::ostringstream said;
  postmaster::Complaints complaints(said, clock);
  postmaster::Replay replay(postmaster::scriptOf(recording), options, complaints, clock);
  std::string log;
  std::size_t next = 0;
  replay.saw(frameOf(NELKVUI, 0, MSG_TOOL_READY), {});
  while (true) {
    while (const frames::Message message = replay.next()) {
      const std::string text = frames::parametersOf(*message).text(0);
      log += std::to_string((now - start) / milliseconds{1}) + " " +
             (text.empty() ? frames::messageLabel(message->header) : text) + "\n";
    }
    const auto last = start + milliseconds{end};
    const auto deadline = std::min(replay.deadline().value_or(last), last);
    const bool hasNews =
        next < window.size() && start + milliseconds{window[next].time} <= deadline;
    if (!hasNews && deadline == last) {
      break;
    }
    now = hasNews ? start + milliseconds{window[next].time} : deadline;
    if (hasNews) {
      replay.saw(window[next++].message, {});
    }
  }
  const bool good = replay.conclude();
  if (isGood != nullptr) {
    *isGood = good;
  }
  return log + std::regex_replace(said.str(), std::regex("NELKVUI -> NELKV MSG_UI_"), "");
}

frames::RecordedFrame at(int time, const frames::Message& message) {
  return {milliseconds{time}, message};
}
frames::Message text(const char* words) {
  return toWindow(MSG_T_TEXT, {words});
}
frames::Message command(const char* words) {
  return ofWindow(MSG_UI_COMMAND, {words});
}
frames::Message answer(const char* words) {
  return ofWindow(MSG_UI_STRING, {words});
}

/// A session from its beginning to its end.
const std::vector<frames::RecordedFrame> kSession = {
    at(1, frameOf(NELKV, NELMPM, MSG_CONNECT)),
    at(2, frameOf(NELLINK, 0, MSG_T_TEXT, {"before"})),
    at(3, frameOf(NELMPM, NELKVUI, MSG_CONNECT_OK, {2, 0, 0, 0, ""})),
    at(10, frameOf(NELKVUI, 0, MSG_TOOL_READY)),
    at(10, frameOf(NELMPM, NELKVUI, MSG_START_POLL_TIMER)),
    at(20, frameOf(NELKV, 0, MSG_TOOL_READY)),
    at(110, text("hello")),
    at(1110, command("go")),
    at(1120, text("gone")),
    at(1130, toWindow(MSG_T_ASK_STRING, {"ask", "Name?"})),
    at(3130, answer("me")),
    at(3140, frameOf(NELKV, NELGATE, MSG_T_TEXT, {"for others"})),
    at(3150, frameOf(NELLINK, 0, MSG_T_TEXT, {"thanks"})),
    at(4150, command("stop")),
    at(4250, text("stopped")),
    at(5000, ofWindow(MSG_UI_EXIT)),
    at(5001, text("never seen")),
};

TEST(Replay, KeepsThePaceOfTheTesterAndWaitsForTheUser) {
  const std::string end = "nelmpm: the replay has ended, ";
  bool isGood = false;
  // Early, and long after the time of the recording.
  EXPECT_EQ(
      replayed(kSession, {}, {{500, command("go")}, {9000, answer("me")}, {9010, command("stop")}},
               &isGood),
      "100 hello\n510 gone\n520 ask\n9020 thanks\n9120 stopped\n" + end + "as recorded\n");
  EXPECT_TRUE(isGood);
  EXPECT_EQ(
      replayed(kSession, {{}, 10, {}, true}, {{1, command("go")}, {60, answer("me")}}, &isGood),
      "10 hello\n11 gone\n12 ask\n62 thanks\n172 stopped\n172 MSG_T_EXIT(2007)\n"
      "nelmpm: replay: at 4.150 s did not come: COMMAND(1002) \"stop\"\n" +
          end + "1 difference\n");
  EXPECT_FALSE(isGood);
  // As fast as possible, with patience: without it nothing that is typed could come in time.
  EXPECT_EQ(replayed(kSession, {{}, 0, milliseconds{50}, true},
                     {{49, command("go")}, {60, answer("me")}, {100, command("stop")}}),
            "0 hello\n49 gone\n49 ask\n60 thanks\n100 stopped\n100 MSG_T_EXIT(2007)\n" + end +
                "as recorded\n");
}

TEST(Replay, TellsEachDifferenceOnce) {
  const std::string played = "100 hello\n1110 gone\n1120 ask\n";
  const std::string noGo = "nelmpm: replay: at 1.110 s did not come: COMMAND(1002) \"go\"\n";
  const std::string end = "nelmpm: the replay has ended, ";
  // Late is not missing twice, and what comes besides is not what was recorded.
  EXPECT_EQ(replayed(kSession, {},
                     {{1500, command("go")},
                      {5000, answer("you")},
                      {5100, command("help")},
                      {5200, command("stop")},
                      {9000, command("after the end")}}),
            played + "5020 thanks\n5300 stopped\n" + noGo +
                "nelmpm: replay: at 3.130 s came: STRING(1004) \"you\", recorded is: STRING(1004) "
                "\"me\"\nnelmpm: replay: not in the recording: COMMAND(1002) \"help\"\n" +
                end + "3 differences\n");
  EXPECT_EQ(
      replayed(kSession, {}, {{5000, answer("me")}, {5000, answer("I")}, {5100, command("s")}}),
      played + "5020 thanks\n6120 stopped\n" + noGo +
          "nelmpm: replay: at 4.150 s came: COMMAND(1002) \"s\", recorded is: COMMAND(1002) "
          "\"stop\"\nnelmpm: replay: not in the recording: STRING(1004) \"I\"\n" +
          end + "3 differences\n");
  EXPECT_EQ(
      replayed(kSession, {}, {}),
      played + noGo +
          "nelmpm: replay: broken off at 3.130 s, messages of the window that did not come: 2\n" +
          end + "2 differences\n");
}

TEST(Replay, TakesTheWindowsEndForThatOfTheRecordingOnlyWhenItWasToldSo) {
  for (const bool isTold : {true, false}) {
    const std::vector<frames::RecordedFrame> recording = {
        at(0, frameOf(NELKVUI, 0, MSG_TOOL_READY)),
        at(10, isTold ? toWindow(MSG_T_EXIT) : text("one")), at(200, text("two"))};
    bool isGood = false;
    const std::string log = replayed(recording, {}, {}, &isGood, 100);
    EXPECT_EQ(isGood, isTold) << log;
  }
}

TEST(Replay, AsksForAFileThatNothingElseWrites) {
  const auto statusOf = [](std::vector<const char*> words) {
    words.insert(words.begin(), "nelmpm");
    return postmaster::parseCommandLine(static_cast<int>(words.size()), words.data(), "korvane")
        .text;
  };
  using Words = std::vector<const char*>;
  EXPECT_EQ(statusOf({"--replay", "r", "--speed", "0.5", "--patience", "2", "--record", "s"}), "");
  for (const Words& words : {Words{"--replay", "r", "--record", "./r"},
                             {"--trace", "-", "--record", "-"},
                             {"--history", "-"},
                             {"--replay", "r", "--history", "h"},
                             {"--close"},
                             {"--replay", "r", "--speed", "nan"},
                             {"--replay", "r", "--speed", "-1"}}) {
    EXPECT_THAT(statusOf(words), testing::EndsWith("; try korvane --help")) << words.back();
  }
}

}  // namespace
