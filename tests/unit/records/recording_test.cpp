// The file of a recording, whole and damaged, and what the decoder shows of it.

#include <gmock/gmock.h>

#include "dump/dump.h"
#include "frames/recording.h"
#include "tests/unit/records/records.h"

namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;

const std::string kHead = "korvane-recording 1 2026-03-01 12:34:56.789\n";

/// One frame each of the Postmaster, the tester (to all) and the user interface.
std::string wholeRecording() {
  return kHead +
         frames::recordingLine({milliseconds{7}, frameOf(NELMPM, NELKVUI, MSG_START_POLL_TIMER)}) +
         frames::recordingLine({milliseconds{1042}, frameOf(NELKV, 0, MSG_TOOL_READY)}) +
         frames::recordingLine(
             {milliseconds{2000}, ofWindow(MSG_UI_COMMAND, {std::string(121, 'x')})});
}

TEST(Recording, HoldsWhatWasWrittenLineByLineAndNothingElse) {
  const TemporaryFolder folder;
  const std::string good = wholeRecording();
  const std::string line = good.substr(kHead.size(), good.find('\n', kHead.size()) - kHead.size());
  EXPECT_EQ(line, "7 000000002:230000040000000200000000000000");
  const frames::LoadedRecording loaded = frames::loadRecording(folder.write("good", good));
  std::string again = kHead;
  for (const frames::RecordedFrame& frame : loaded.frames) {
    again += frames::recordingLine(frame);
  }
  EXPECT_EQ(again, good);
  EXPECT_EQ(loaded.damage + loaded.fault, "");

  for (const std::string& damaged :
       {std::string(), "x" + line, "-" + line, "0" + line, line + "0", line + "00", line + "@0",
        "1234567890123 " + line.substr(2), line.substr(2), std::string("7 "), line + " ",
        "7 " + std::string(kMaxFrameText + 1, '0'), std::string(300000, '0')}) {
    const std::string bytes = kHead + line + "\n" + damaged + "\n" + line;
    const frames::LoadedRecording rest = frames::loadRecording(folder.write("bad", bytes));
    EXPECT_EQ(rest.frames.size(), 2u) << damaged.substr(0, 60);
    EXPECT_THAT(rest.damage, HasSubstr("1 damaged line left out, the first is line 3: "));
  }
  for (const auto& [bytes, fault] :
       {std::pair{std::string(), "it is empty"},
        {line, "it is no recording"},
        {std::string(300000, 'k'), "it is no recording"},
        {std::string("korvane-recording 2 2026-03-01 12:34:56.789"), "another format than 1"},
        {std::string("korvane-recording 1 9999-03-01 12:34:56.789"), "no date and time"},
        {std::string("korvane-recording 1"), "no date and time"}}) {
    EXPECT_THAT(frames::loadRecording(folder.write("bad", bytes)).fault, HasSubstr(fault));
  }
  EXPECT_EQ(frames::loadRecording(folder.path()).fault, "Is a directory");
}

/// What the decoder shows of these bytes, given in pieces of `size`; faults behind.
std::string dumped(const std::vector<const char*>& arguments, const std::string& bytes,
                   std::size_t size) {
  std::vector<const char*> words = {"nel-dump"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  const auto count = static_cast<int>(words.size());
  const dump::CommandLine line = dump::parseCommandLine(count, words.data());
  if (!line.options) {
    return line.text;
  }
  dump::Dump dump(*line.options);
  std::string shown;
  std::string faults;
  for (std::size_t at = 0; at < bytes.size(); at += size) {
    shown += dump.take(bytes.substr(at, size), faults);
  }
  shown += dump.finish(faults);
  return shown + faults;
}

TEST(Dump, ShowsAndFiltersRecordingsAndTraces) {
  const std::string timer = "NELMPM -> NELKVUI MSG_START_POLL_TIMER(9002)\n";
  const std::string ready = "NELKV -> * MSG_TOOL_READY(9001)\n";
  const std::string command = "NELKVUI -> NELKV MSG_UI_COMMAND(1002) \"" + std::string(120, 'x');
  const std::string first = "    0.007 " + timer;
  const std::string second = "    1.042 " + ready;
  const std::string third = "    2.000 " + command + "\"... 121 bytes\n";
  using Words = std::vector<const char*>;
  for (const auto& [arguments, lines] :
       {std::pair<Words, std::string>{{}, first + second + third},
        {{"--name", "9001", "--name", "MSG_UI_COMMAND"}, second + third},
        {{"--tool", "NELMPM"}, first + second},
        {{"--tool", "NELKV", "--tool", "NELGATE"}, second + third},
        {{"--from", "0.008", "--to", "1.042"}, second},
        {{"--from", "1.5", "--full"}, "    2.000 " + command + "x\"\n"},
        {{"--to", "0.1", "--dates"}, "2026-03-01 12:34:56.796 " + timer}}) {
    for (const std::size_t size : {1U, 7U, 100000U}) {
      EXPECT_EQ(dumped(arguments, wholeRecording(), size), lines);
    }
  }
  const std::string refused =
      "2026-03-01 12:34:57.000 tool type 6 -> tool type 8 unknown(77) "
      "\"a -> b MSG(9)\" [refused: x]\n";
  const std::string trace = dumped({"--dates"}, wholeRecording(), 9) + refused;
  EXPECT_EQ(dumped({}, trace, 5), trace);
  EXPECT_EQ(dumped({"--name", "77", "--from", "0.204"}, trace, 5), refused);
  EXPECT_EQ(dumped({"--name", "9001"}, trace, 5), "2026-03-01 12:34:57.831 " + ready);
  EXPECT_EQ(dumped({"--name", "9001"}, kHead + "rubbish\n7 0", 5),
            "-:2: damaged: it does not begin with a time in milliseconds\n"
            "-:3: damaged: half a byte at its end\n");
  EXPECT_EQ(dumped({}, trace + "2026-03-01 12:34:57.831 rubbish", 5),
            trace + "-:5: damaged: no line of a trace\n");
  EXPECT_EQ(dumped({}, "rubbish\n" + trace, 5), "-: it is neither a recording nor a trace\n");
  EXPECT_EQ(dumped({}, "", 1), "-: it is empty\n");
  for (const Words& wrong : {Words{"--name", "MSG_X"},
                             {"--tool", "nelkv"},
                             {"--from", "nan"},
                             {"--from", "-1"},
                             {"--from", "2", "--to", "1"},
                             {"a", "b"}}) {
    EXPECT_THAT(dumped(wrong, "", 1), testing::MatchesRegex("nel-dump: .*; try nel-dump --help\n"));
  }
}

}  // namespace
