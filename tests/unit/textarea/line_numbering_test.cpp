#include "textarea/line_numbering.h"

#include <gtest/gtest.h>

namespace {

std::string state(const LogCounters& counters) {
  return "end " + std::to_string(counters.textEnd) + " lines " +
         std::to_string(counters.lineCount) + " first " + std::to_string(counters.firstLineNumber);
}

TEST(LineNumbering, AnAppendCountsCharactersAndLinesAndNumbersTheLineBehindEachLineFeed) {
  LogCounters counters;
  EXPECT_EQ(expandForLog("\x01\n\xFF", counters), "\x01\n\xFF");
  EXPECT_EQ(state(counters), "end 3 lines 1 first 1");
  // After a Clear the first number is two for an append and one for the whole text. Intended.
  counters = {.textEnd = 7, .lineCount = 1, .numbering = true};
  EXPECT_EQ(expandForLog("x\r\ny\n", counters), "x\r\n     2: y\n     3: ");
  EXPECT_EQ(state(counters), "end 28 lines 3 first 1");
  EXPECT_EQ(addLineNumbers("banner\nx\n", counters), "banner\n     1: x\n     2: ");
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

TEST(LineNumbering, TakingNumbersOffRemovesOnlyWhatLooksLikeOneOfThisLog) {
  const auto left = [](const std::string& prefix) {
    const std::string text = "a\n" + prefix;
    LogCounters counters{.textEnd = static_cast<int>(text.size()), .lineCount = 12345678};
    const std::string plain = removeLineNumbers(text, counters);
    EXPECT_EQ(counters.textEnd, static_cast<int>(plain.size())) << prefix;
    return plain.substr(2);
  };
  for (const char* prefix : {"     1: ", "999999: ", "1000000:", "12345678"}) {
    EXPECT_EQ(left(prefix), "");
  }
  for (const char* other :
       {"12345679", "     1:x", "        ", "      : ", "     0: ", "1      ", "20261122",
        "    -1: ", "     1 :", "012345: ", " 1000000", "     1:", "123456 :", "1000000 "}) {
    EXPECT_EQ(left(other), other);
  }
}

TEST(LineNumbering, ANumberOfSevenDigitsLosesItsBlankToTheTextBehindIt) {
  const std::pair<int, std::string> rows[] = {
      {1, "     1: "}, {999999, "999999: "}, {1000000, "1000000:"}, {10000000, "10000000"}};
  for (const auto& [number, prefix] : rows) {
    LogCounters counters{.lineCount = number - 1, .numbering = true};
    EXPECT_EQ(expandForLog("\ntext", counters), "\n" + prefix + "text");
    counters.firstLineNumber = number - 1;
    EXPECT_EQ(addLineNumbers("\n\n", counters), '\n' + linePrefix(number - 1) + '\n' + prefix);
  }
}

}  // namespace
