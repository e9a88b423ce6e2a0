// What the Postmaster keeps of a session for people: the transcript and the history.

#include <gmock/gmock.h>

#include <sstream>

#include "postmaster/history.h"
#include "postmaster/transcript.h"
#include "tests/support/tool_frames.h"

namespace {

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
  std::string many;
  std::string newest;
  for (int i = 0; i < 503; ++i) {
    many += "command " + std::to_string(i) + "\n\n" + "command " + std::to_string(i) + "\n";
    newest += i >= 3 ? "command " + std::to_string(i) + "\n" : "";
  }
  const std::string large(kMaxSentText, 'x');
  std::string mass;
  for (int i = 100; i < 200; ++i) {
    mass += large.substr(3) + std::to_string(i) + "\n";
  }
  const std::string rest = mass.substr(mass.size() - 64 * (kMaxSentText + 1));
  for (const auto& [contents, kept] : {std::pair<std::string, std::string>{"", ""},
                                       {"\n\n", ""},
                                       {"a\nb\nb\n a", "a\nb\n a\n"},
                                       {std::string("a\0b\r\xE4\n", 6), "a b\r\xE4\n"},
                                       {large + "\n" + large + "x\nb\n", large + "\nb\n"},
                                       {many, newest},
                                       {mass, rest}}) {
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
