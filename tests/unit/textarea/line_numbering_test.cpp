#include "textarea/line_numbering.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string state(const LogCounters& counters) {
  return "end " + std::to_string(counters.textEnd) + " lines " +
         std::to_string(counters.lineCount) + " first " + std::to_string(counters.firstLineNumber);
}

TEST(LineNumbering, AnAppendCountsCharactersAndLinesAndNumbersTheLineBehindEachLineFeed) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) {
    bytes += static_cast<char>(c);
  }
  LogCounters counters;
  EXPECT_EQ(expandForLog(bytes, counters), bytes);
  EXPECT_EQ(state(counters), "end 255 lines 1 first 1");
  counters = {};
  counters.numbering = true;
  EXPECT_EQ(expandForLog("abc\n", counters), "abc\n     1: ");
  EXPECT_EQ(state(counters), "end 12 lines 1 first 1");
  EXPECT_EQ(expandForLog("next", counters) + expandForLog("\r\n\n", counters),
            "next\r\n     2: \n     3: ");
  EXPECT_EQ(state(counters), "end 35 lines 3 first 1");
}

TEST(LineNumbering, TheFirstNumberAfterAClearIsTwoForAnAppendAndOneForTheWholeText) {
  LogCounters counters{.textEnd = 7, .lineCount = 1, .numbering = true};  // as a Clear leaves it
  EXPECT_EQ(expandForLog("x\ny\n", counters), "x\n     2: y\n     3: ");
  EXPECT_EQ(addLineNumbers("banner\nx\ny\n", counters), "banner\n     1: x\n     2: y\n     3: ");
}

TEST(LineNumbering, OnAndOffGivesBackTextAndCounters) {
  LogCounters counters;
  std::string text;
  std::string numbered;
  for (int line = 1; line < 1100; ++line) {
    const char* added = line % 3 == 0 ? "\n" : "a line\r\n";
    text += expandForLog(added, counters);
    numbered += added + linePrefix(line);
  }
  text += expandForLog("last line without end", counters);
  const std::string before = state(counters);
  EXPECT_TRUE(addLineNumbers(text, counters) == numbered + "last line without end");
  EXPECT_EQ(counters.textEnd, static_cast<int>(text.size()) + 1099 * 8);
  EXPECT_TRUE(removeLineNumbers(numbered + "last line without end", counters) == text);
  EXPECT_EQ(state(counters), before);
  EXPECT_EQ(addLineNumbers("", counters) + removeLineNumbers("", counters), "");
}

TEST(LineNumbering, TakingNumbersOffRemovesOnlyWhatLooksLikeOne) {
  const std::pair<const char*, bool> rows[] = {
      {"     1: ", true},  {"999999: ", true},  {"1000000:", true},  {"12345678", true},
      {"12345679", false}, {"numbered", false}, {"     1:x", false}, {"    1:  ", false},
      {"      : ", false}, {"     0: ", false}, {"1      ", false},  {" 000001:", false},
      {"20261122", false}, {"    -1: ", false}, {"     1 :", false}, {"012345: ", false},
      {" 1000000", false}, {"     1:", false},  {"123456 :", false}, {"1000000 ", false},
      {"        ", false}};
  for (const auto& [prefix, goes] : rows) {
    const std::string text = std::string("a\n") + prefix;
    LogCounters counters{.textEnd = static_cast<int>(text.size()), .lineCount = 12345678};
    const std::string left = removeLineNumbers(text, counters);
    EXPECT_EQ(left, goes ? "a\n" : text) << prefix;
    EXPECT_EQ(counters.textEnd, static_cast<int>(left.size())) << prefix;
  }
}

TEST(LineNumbering, ANumberOfSevenDigitsLosesItsBlankToTheTextBehindIt) {
  for (const auto& [number, prefix] : {std::pair{1, "     1: "},
                                       {999999, "999999: "},
                                       {1000000, "1000000:"},
                                       {10000000, "10000000"}}) {
    EXPECT_EQ(linePrefix(number), prefix);
    LogCounters counters{.lineCount = number - 1, .numbering = true};
    EXPECT_EQ(expandForLog("\ntext", counters), std::string("\n") + prefix + "text");
    counters.firstLineNumber = number - 1;
    EXPECT_EQ(addLineNumbers("\n\n", counters), '\n' + linePrefix(number - 1) + '\n' + prefix);
  }
}

}  // namespace
