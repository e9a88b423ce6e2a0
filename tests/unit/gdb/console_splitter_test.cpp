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

/// Where GDB waits in a recording, and what it asks.
struct Question {
  std::string before;  ///< the end of the text when it waits
  Dialogue dialogue;
  std::string question;
};

TEST(ConsoleSplitter, TellsWhatGdbAsksUntilItIsAnswered) {
  const std::string kMenu =
      "[0] cancel\n[1] all\n[2] prog.cpp:twice(double)\n[3] prog.cpp:twice(int)\n> ";
  const std::string kAlive =
      "The program being debugged has been started already.\n"
      "Start it from the beginning? (y or n) ";
  const std::string kPending = "Make breakpoint pending on future shared library load? (y or [n]) ";
  const std::string kPager = "--Type <RET> for more, q to quit, c to continue without paging--";
  const std::pair<std::string, std::vector<Question>> rows[] = {
      {"run",
       {{"", Dialogue::kNone, ""},
        {"beginning? (y or n) ", Dialogue::kYesNo, kAlive},
        {"beginning? (y or n) ", Dialogue::kYesNo, "Please answer y or n.\n" + kAlive},
        {"Program not restarted.\n", Dialogue::kNone, ""},
        {"beginning? (y or n) ", Dialogue::kYesNo, kAlive}}},
      {"questions",
       {{"(y or [n]) ", Dialogue::kNoDefault, "Function \"nowhere\" not defined.\n" + kPending},
        {"(y or [n]) ", Dialogue::kNoDefault, "Please answer y or [n].\n" + kPending},
        {"\n(y or n) ", Dialogue::kYesNo,
         "add symbol table from file \"./prog\" at\n\t.text_addr = 0x1000\n(y or n) "},
        {"Quit anyway? (y or n) ", Dialogue::kYesNo,
         "A debugging session is active.\n\n\tInferior 1 [process 30156] will be killed.\n\n"
         "Quit anyway? (y or n) "},
        {"Not confirmed.\n\03611\037", Dialogue::kNone, ""}}},
      {"recording",
       {{"stop-at-limit)?([y] or n) ", Dialogue::kYesDefault,
         "Do you want to auto delete previous execution log entries when record/replay buffer "
         "becomes full (record full stop-at-limit)?([y] or n) "}}},
      {"define",
       {{"\n>", Dialogue::kMoreLines, ">"},
        {"\0364\037\0365\037 ", Dialogue::kNone, ""},
        {">", Dialogue::kMoreLines, " >"}}},
      {"python",
       {{"\037>", Dialogue::kMoreLines, ">"},
        {">>>0\n1\n\0362\037>>> ", Dialogue::kPython, ">>> "},
        {"2\n>>> ", Dialogue::kPython, ">>> "},
        {"... ", Dialogue::kPython, "... "}}},
      {"menu",
       {{"\n> ", Dialogue::kMenu, kMenu},
        {"line 12.\n\0363\037[0] cancel\n[1] all\n", Dialogue::kNone, ""},
        {"\n> ", Dialogue::kMenu, kMenu}}},
      {"pager", {{"--", Dialogue::kNone, ""}, {"paging--", Dialogue::kPager, kPager}}},
      {"hung",
       {{"(y or n) ", Dialogue::kYesNo,
         "Continuing.\nThe target is not responding to GDB commands.\n"
         "Stop debugging it? (y or n) "}}},
  };
  const std::filesystem::path recordings = NEL_RECORDED_DIR;
  for (const auto& [name, questions] : rows) {
    const std::string bytes = readFile(recordings / (name + ".console"));
    ConsoleSplitter splitter;
    std::size_t at = 0;
    for (const auto& [before, dialogue, question] : questions) {
      SCOPED_TRACE(testing::Message() << name << ": " << before);
      const std::size_t found = bytes.find(before, at);
      ASSERT_NE(found, std::string::npos);
      splitter.feed(std::string_view(bytes).substr(at, found + before.size() - at));
      at = found + before.size();
      ASSERT_EQ(splitter.dialogue(), dialogue);
      ASSERT_EQ(splitter.question(), question);
      if (dialogue != Dialogue::kNone) {
        splitter.answered();
        ASSERT_EQ(splitter.dialogue(), Dialogue::kNone);
      }
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
      {"a\036\036\036999999999\037", "a\036\036<999999999>"},
      {"\0361234567890\037.", "\0361234567890\037."},
      {"\0361a\0362\037", "\0361a<2>"},
      {"\036\037\03602\037\0360\037", "\036\037\03602\037<0>"},
      {"a\03612", "a"},
      {"(y or n) \036", "(y or n) ", Dialogue::kYesNo, "(y or n) "},
      {"(y or n) \n", "(y or n) \n"},
      {"(y or n)", "(y or n)"},
      {"(y or n) \0365\037", "(y or n) <5>"},
      {"<html>", "<html>"},
      {"  > ", "  > "},
      {"> ", "> "},
      {"x[0] cancel\n> ", "x[0] cancel\n> "},
      {"[0] cancel\n\0361\037> ", "[0] cancel\n<1>> "},
      {std::string("a\0b\n  >", 7), std::string("a\0b\n  >", 7), Dialogue::kMoreLines, "  >"},
      {kLong + "\n[0] cancel\n" + kLong + "\nlast\n> ",
       kLong + "\n[0] cancel\n" + kLong + "\nlast\n> ", Dialogue::kMenu, "last\n> "},
      {kLong + "\nSure? (y or n) ", kLong + "\nSure? (y or n) ", Dialogue::kYesNo,
       "Sure? (y or n) "},
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
  ConsoleSplitter splitter;
  for (int i = 0; i < 1000; ++i) {
    splitter.feed("\xc3\xbc");
  }
  splitter.feed("? (y or n) ");
  EXPECT_THAT(splitter.question(), testing::StartsWith("\xc3\xbc"));
  EXPECT_THAT(splitter.question().size(), testing::AllOf(testing::Gt(1990), testing::Le(2000)));
}

}  // namespace
TEST(ConsoleSplitter, KnowsWhatAScriptSaysThatItAsksFor) {
  const std::pair<std::string, std::string> rows[] = {
      {"Instance:\n[0] cancel\n[1] Button:1\n> ", "Instance:"},
      {"Instance:\nwhich?\n[0] cancel\n> ", ""},
      {"[0] cancel\n[1] a:\n> ", ""},
      {"See:\n[0] cancel\nHow many:\n[0] cancel\n> ", "How many:"},
      {"text\nHow many:\n>", "How many:"},
      {"End with a line saying just \"end\".\n>", ""},
      {"How many:>", ""},
      {">", ""},
      {":\n>", ":"},
  };
  for (const auto& [text, heading] : rows) {
    ConsoleSplitter splitter;
    splitter.feed(text);
    EXPECT_EQ(splitter.heading(), heading) << text;
  }
}

}  // namespace gdb
