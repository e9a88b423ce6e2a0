// What the Postmaster keeps of a session: the recording, whole and damaged, and what the decoder
// shows of it; the transcript and the history.

#include <gmock/gmock.h>

#include <sstream>

#include "dump/dump.h"
#include "frames/recording.h"
#include "postmaster/history.h"
#include "postmaster/transcript.h"
#include "tests/support/tool_frames.h"

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

using List = Parameter::List;
using postmaster::Transcript;

TEST(Transcript, TellsTextsCommandsQuestionsAndAnswersApart) {
  Transcript transcript;
  std::string told;
  const auto saw = [&](const frames::Message& message, std::string_view refusal = {}) {
    told += transcript.sawAt("T", *message, refusal);
  };
  saw(toWindow(MSG_T_TEXT, {"one\n\n\xE4\x1b[m\ttw"}));
  saw(toWindow(MSG_T_TEXT, {std::string("o\0o\r\nthree", 10)}));
  saw(ofWindow(MSG_UI_COMMAND, {"go\non\n"}));
  saw(toWindow(MSG_T_TEXT, {""}));
  saw(toWindow(MSG_T_TEXT, {"\n"}));
  saw(frameOf(NELLINK, 0, MSG_T_TEXT, {"to all"}));
  saw(toWindow(MSG_T_ASK_LIST, {"t", "a \"b\"\n\\\xE4", 1, List{"x", "y"}}));
  EXPECT_TRUE(transcript.isWithinLine());
  saw(toWindow(MSG_T_TEXT, {"!\n"}));
  EXPECT_FALSE(transcript.isWithinLine());
  saw(ofWindow(MSG_UI_CANCEL));
  saw(ofWindow(MSG_UI_BITS, {List{"x", ""}}));
  saw(frameOf(NELMPM, NELKVUI, MSG_LINK_WARNING_BOX, {"c", "nelkv ended"}));
  saw(ofWindow(MSG_UI_COMMAND, {"lost"}), "nobody is there");
  saw(toWindow(MSG_T_TEXT, {"refused\n"}), "nobody is there");
  saw(toWindow(MSG_T_PROMPT, {"go"}));
  saw(frameOf(NELKV, NELGATE, MSG_T_TEXT, {"for others\n"}));
  saw(frames::parseText(wireText({kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, 3}, "abc")).message);
  EXPECT_EQ(told,
            "T | one\nT | \nT | \xE4\x1b[m\ttwo o\r\nT | three\n"
            "T > go\nT > on\nT > \n"
            "T + \nT | to all\n"
            "T ? choice \"t\" \"a \\\"b\\\"\\n\\\\\xE4\" 1 [\"x\", \"y\"]\n"
            "T + !\n"
            "T = cancelled\n"
            "T = bits [\"x\", \"\"]\n"
            "T ! warning \"c\" \"nelkv ended\"\n"
            "T > lost\nT # not passed on: nobody is there\n"
            "T # malformed: MSG_T_TEXT(2000)\n");
}

// Of two sessions at the same time, the later one wrote over the other's.
TEST(Recording, BelongsToTheSessionThatBeganIt) {
  const TemporaryFolder folder;
  const std::string file = folder.write("r", "an older session\n");
  std::ostringstream errors;
  postmaster::Complaints complaints(errors);
  postmaster::Recorder first(complaints);
  postmaster::Recorder second(complaints);
  EXPECT_EQ(first.open(file), "");
  const std::string kept = readFile(file);
  EXPECT_EQ(kept.find("older"), std::string::npos);
  EXPECT_THAT(second.open(file), testing::EndsWith("/r: another session writes it"));
  EXPECT_EQ(readFile(file), kept);
}

TEST(Transcript, GoesOnBehindWhatARunThatDiedHasLeft) {
  const TemporaryFolder folder;
  const std::string file = folder.write("t", "T | torn");
  std::ostringstream errors;
  postmaster::Complaints complaints(errors);
  {
    postmaster::TranscriptLog log(complaints);
    EXPECT_EQ(log.open(file), "");
    log.saw(toWindow(MSG_T_TEXT, {"unfinished"}), {});
    EXPECT_THAT(readFile(file), testing::EndsWith(" | unfinished")) << "as it happens";
  }
  EXPECT_THAT(readFile(file), testing::MatchesRegex("T . torn\n.* # a session begins, nelmpm .*\n"
                                                    ".* . unfinished\n"
                                                    ".* # the session ends, within a line.*\n"));
}

TEST(History, KeepsTheNewestCommandsOnce) {
  const auto numbered = [](int from, int end, const std::string& text) {
    std::string all;
    for (int i = from; i < end; ++i) {
      all += text + std::to_string(i) + "\n";
    }
    return all;
  };
  const std::string large(kMaxSentText, 'x');
  const std::string most = large.substr(3);
  for (const auto& [contents, kept] : {std::pair<std::string, std::string>{"", ""},
                                       {"\n\n", ""},
                                       {"a\nb\nb\n a", "a\nb\n a\n"},
                                       {std::string("a\0b\r\xE4\n", 6), "a b\r\xE4\n"},
                                       {large + "\n" + large + "x\nb\n", large + "\nb\n"},
                                       {numbered(0, 503, "command "), numbered(3, 503, "command ")},
                                       {numbered(100, 200, most), numbered(136, 200, most)}}) {
    std::string lines;
    for (const std::string& command : postmaster::keptCommands(contents)) {
      lines += command + "\n";
    }
    EXPECT_EQ(lines, kept) << contents.substr(0, 40);
  }
}

TEST(History, IsCutWhenOpenedAndAppendedTo) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  std::ostringstream errors;
  postmaster::Complaints complaints(errors);
  const std::string real = folder.write("real", "old\n\nold");
  fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  const fs::perms before = fs::status(real).permissions();
  const std::string file = folder / "link";
  fs::create_symlink(real, file);
  for (const auto& [start, added] : {std::pair<std::string, std::string>{"old\n", "new\nold\n"},
                                     {"old\nnew\nold\nlast\n", "old\nnew\nold\n"}}) {
    postmaster::History history(complaints);
    EXPECT_EQ(history.open(file), "");
    EXPECT_EQ(readFile(real), start);
    EXPECT_EQ(frames::describeMessage(*history.messages().front()),
              "NELMPM -> NELKVUI MSG_T_PROMPT(2002) \"old\"");
    for (const char* const command : {"old", "new", "new", "", "two\nlines", "old"}) {
      history.saw(toWindow(MSG_T_PROMPT, {command}), {});
    }
    history.saw(toWindow(MSG_T_PROMPT, {"refused"}), "why");
    history.saw(frameOf(NELMPM, NELKVUI, MSG_T_PROMPT, {"handed out"}), {});
    history.saw(ofWindow(MSG_UI_COMMAND, {"not confirmed"}), {});
    EXPECT_EQ(readFile(real), start + added);
    folder.write("real", start + added + "last");  // by another run, which died
  }
  EXPECT_EQ(fs::status(real).permissions(), before);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 2)
      << "nothing stays beside";
  postmaster::History missing(complaints);
  EXPECT_EQ(missing.open(folder / "new"), "");
  missing.saw(toWindow(MSG_T_PROMPT, {"first"}), {});
  EXPECT_EQ(readFile(folder / "new"), "first\n");
  EXPECT_THAT(missing.open(folder.path()), testing::HasSubstr("Is a directory"));
  EXPECT_EQ(errors.str(), "");
  fs::remove(folder / "new");
  fs::create_directory(folder / "new");
  missing.saw(toWindow(MSG_T_PROMPT, {"second"}), {});
  missing.saw(toWindow(MSG_T_PROMPT, {"third"}), {});
  EXPECT_EQ(errors.str(), "nelmpm: the history cannot be written and ends here: Is a directory\n");
}

}  // namespace
