#include "textarea/line_numbering.h"

#include <gtest/gtest.h>

namespace {

LogCounters numbered() {
  LogCounters counters;
  counters.numbering = true;
  return counters;
}

TEST(LineNumbering, AnAppendCountsCharactersAndLinesAndNumbersTheLineBehindEachLineFeed) {
  LogCounters plain;
  EXPECT_EQ(expandForLog("abc\n", plain), "abc\n");
  EXPECT_EQ(plain.textEnd, 4);
  EXPECT_EQ(plain.lineCount, 1);

  LogCounters counters = numbered();
  EXPECT_EQ(expandForLog("abc\n", counters), "abc\n     1: ");
  EXPECT_EQ(counters.textEnd, 12);
  EXPECT_EQ(expandForLog("next", counters), "next");
  EXPECT_EQ(expandForLog("\r\n\n", counters), "\r\n     2: \n     3: ");
}

TEST(LineNumbering, TheFirstNumberAfterAClearIsTwoForAnAppendAndOneForTheWholeText) {
  LogCounters counters = numbered();
  counters.lineCount = 1;  // as a Clear leaves it
  EXPECT_EQ(expandForLog("x\ny\n", counters), "x\n     2: y\n     3: ");

  LogCounters whole;
  whole.lineCount = 3;
  EXPECT_EQ(addLineNumbers("banner\nx\ny\n", whole), "banner\n     1: x\n     2: y\n     3: ");
}

TEST(LineNumbering, OnAndOffGivesBackTextAndCounters) {
  LogCounters counters;
  const std::string text = expandForLog("one\n\ntwo\r\nlast line without end", counters);
  const LogCounters before = counters;
  const std::string on = addLineNumbers(text, counters);
  EXPECT_EQ(on.size(), text.size() + 3 * kPrefixWidth);
  EXPECT_EQ(counters.textEnd, static_cast<int>(on.size()));
  EXPECT_EQ(removeLineNumbers(on, counters), text);
  EXPECT_EQ(counters.textEnd, before.textEnd);
  EXPECT_EQ(addLineNumbers("", counters), "");
}

TEST(LineNumbering, TakingNumbersOffRemovesOnlyWhatLooksLikeOne) {
  struct Row {
    const char* prefix;
    bool goes;
  };
  for (const Row& row :
       {Row{"     1: ", true}, Row{"999999: ", true}, Row{"1000000:", true}, Row{"12345678", true},
        Row{"numbered", false}, Row{"     1:x", false}, Row{"    1:  ", false},
        Row{"      : ", false}, Row{"     0: ", false}, Row{"1      ", false},
        Row{" 000001:", false}, Row{"20261122", false}, Row{"    -1: ", false}}) {
    LogCounters counters;
    counters.lineCount = 12345678;
    const std::string text = std::string("a\n") + row.prefix;
    counters.textEnd = static_cast<int>(text.size());
    const std::string left = removeLineNumbers(text, counters);
    EXPECT_EQ(left, row.goes ? "a\n" : text) << row.prefix;
    EXPECT_EQ(counters.textEnd, static_cast<int>(left.size())) << row.prefix;
  }
}

TEST(LineNumbering, ANumberOfSevenDigitsLosesItsBlankToTheTextBehindIt) {
  EXPECT_EQ(linePrefix(999999), "999999: ");
  EXPECT_EQ(linePrefix(1000000), "1000000:");
  EXPECT_EQ(linePrefix(10000000), "10000000");
  LogCounters counters = numbered();
  counters.lineCount = 999999;
  EXPECT_EQ(expandForLog("\ntext", counters), "\n1000000:text");
}

TEST(LineNumbering, EveryByteStays) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) {
    bytes += static_cast<char>(c);
  }
  LogCounters counters;
  EXPECT_EQ(expandForLog(bytes, counters), bytes);
  EXPECT_EQ(counters.textEnd, 255);
}

}  // namespace
