// GDB's console: its prompts and its questions as it really writes them, cut anywhere, and what
// only looks like them.

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>

#include "gdb/console/splitter.h"
#include "tests/support/basics.h"

namespace gdb {
namespace {

/// What comes out, neighbouring texts joined and prompts as "<N>".
std::string split(ConsoleSplitter& splitter, std::string_view bytes, std::size_t step) {
  std::string all;
  for (std::size_t i = 0; i < bytes.size(); i += step) {
    for (const ConsolePiece& piece : splitter.feed(bytes.substr(i, step))) {
      all += piece.prompt ? "<" + std::to_string(*piece.prompt) + ">" : piece.text;
    }
  }
  return all;
}

TEST(ConsoleSplitter, FindsThePromptOfEachCommandHoweverTheConsoleIsCut) {
  const std::regex prompt("\036([0-9]{1,9})\037");
  for (const auto& entry : std::filesystem::directory_iterator(NEL_RECORDED_DIR)) {
    if (entry.path().extension() == ".console") {
      SCOPED_TRACE(entry.path().filename());
      const std::string bytes = readFile(entry.path());
      const std::string expected = std::regex_replace(bytes, prompt, "<$1>");
      for (const std::size_t step : {bytes.size(), 1UL, 2UL, 3UL, 500UL}) {
        ConsoleSplitter splitter;
        ASSERT_EQ(split(splitter, bytes, step), expected);
      }
    }
  }
}

TEST(ConsoleSplitter, TellsWhatGdbAsksUntilItIsAnswered) {
  const std::string kMenu =
      "[0] cancel\n[1] all\n[2] prog.cpp:twice(double)\n[3] prog.cpp:twice(int)\n> ";
  const std::string kAlive =
      "The program being debugged has been started already.\n"
      "Start it from the beginning? (y or n) ";
  const std::string kPending = "Make breakpoint pending on future shared library load? (y or [n]) ";
  /// Where GDB waits in a recording, and what it asks.
  struct Question {
    const char* recording;
    std::string before;  ///< the end of the text when it waits
    Dialogue dialogue;
    std::string question;
  };
  const Question questions[] = {
      {"run", "beginning? (y or n) ", Dialogue::kYesNo, kAlive},
      {"run", "beginning? (y or n) ", Dialogue::kYesNo, "Please answer y or n.\n" + kAlive},
      {"run", "Program not restarted.\n", Dialogue::kNone, ""},
      {"questions", "(y or [n]) ", Dialogue::kNoDefault,
       "Function \"nowhere\" not defined.\n" + kPending},
      {"recording", "stop-at-limit)?([y] or n) ", Dialogue::kYesDefault,
       "Do you want to auto delete previous execution log entries when record/replay buffer "
       "becomes full (record full stop-at-limit)?([y] or n) "},
      {"define", "\n>", Dialogue::kMoreLines, ">"},
      {"define", "\0364\037\0365\037 ", Dialogue::kNone, ""},
      {"define", ">", Dialogue::kMoreLines, " >"},
      {"python", "\037>", Dialogue::kMoreLines, ">"},
      {"python", ">>>0\n1\n\0362\037>>> ", Dialogue::kPython, ">>> "},
      {"python", "2\n>>> ", Dialogue::kPython, ">>> "},
      {"python", "... ", Dialogue::kPython, "... "},
      {"menu", "\n> ", Dialogue::kMenu, kMenu},
      {"menu", "line 12.\n\0363\037[0] cancel\n[1] all\n", Dialogue::kNone, ""},
      {"pager", "paging--", Dialogue::kPager,
       "--Type <RET> for more, q to quit, c to continue without paging--"},
  };
  std::string recording;
  std::string bytes;  // that are still to come
  ConsoleSplitter splitter;
  for (const auto& [name, before, dialogue, question] : questions) {
    SCOPED_TRACE(testing::Message() << name << ": " << before);
    if (std::exchange(recording, name) != name) {
      bytes = readFile(NEL_RECORDED_DIR "/" + recording + ".console");
      splitter = {};
    }
    const std::size_t found = bytes.find(before);
    ASSERT_NE(found, std::string::npos);
    splitter.feed(bytes.substr(0, found + before.size()));
    bytes.erase(0, found + before.size());
    ASSERT_EQ(splitter.dialogue(), dialogue);
    ASSERT_EQ(splitter.question(), question);
    if (dialogue != Dialogue::kNone) {
      splitter.answered();
      ASSERT_EQ(splitter.dialogue(), Dialogue::kNone);
    }
  }
}

TEST(ConsoleSplitter, TakesNothingElseForAPromptOrAQuestionAndKeepsQuestionsShort) {
  struct Row {
    std::string bytes;
    std::string pieces;
    Dialogue dialogue = Dialogue::kNone;
    std::string question = {};
  };
  const std::string kLong(3000, 'x');
  const Row rows[] = {
      {ConsoleSplitter::promptOf(4294), "<4294>"},
      {"\0361234567890\037.", "\0361234567890\037."},
      {"\0361a\0362\037", "\0361a<2>"},
      {"\036\037\03602\037\0360\037", "\036\037\03602\037<0>"},
      {"(y or n) \036", "(y or n) ", Dialogue::kYesNo, "(y or n) "},
      {"(y or n) \n", "(y or n) \n"},
      {"(y or n) \0365\037", "(y or n) <5>"},
      {"> ", "> "},
      {"x[0] cancel\n> ", "x[0] cancel\n> "},
      {"[0] cancel\n\0361\037> ", "[0] cancel\n<1>> "},
      {std::string("a\0b\n  >", 7), std::string("a\0b\n  >", 7), Dialogue::kMoreLines, "  >"},
      {kLong + "\n[0] cancel\n" + kLong + "\nlast\n> ",
       kLong + "\n[0] cancel\n" + kLong + "\nlast\n> ", Dialogue::kMenu, "last\n> "},
  };
  for (const auto& [bytes, pieces, dialogue, question] : rows) {
    SCOPED_TRACE(bytes);
    for (const std::size_t step : {1UL, 2UL, 10000UL}) {
      ConsoleSplitter splitter;
      EXPECT_EQ(split(splitter, bytes, step), pieces);
      EXPECT_EQ(splitter.dialogue(), dialogue);
      EXPECT_EQ(splitter.question(), question);
    }
  }
}

TEST(ConsoleSplitter, KnowsWhatAScriptSaysThatItAsksFor) {
  const std::pair<std::string, std::string> rows[] = {
      {"Instance:\n[0] cancel\n[1] Button:1\n> ", "Instance:"},
      {"Instance:\nwhich?\n[0] cancel\n> ", ""},
      {"See:\n[0] cancel\nHow many:\n[0] cancel\n> ", "How many:"},
      {"End with a line saying just \"end\".\n>", ""},
      {"How many:>", ""},
  };
  for (const auto& [text, heading] : rows) {
    ConsoleSplitter splitter;
    splitter.feed(text);
    EXPECT_EQ(splitter.heading(), heading) << text;
  }
}

}  // namespace
}  // namespace gdb
