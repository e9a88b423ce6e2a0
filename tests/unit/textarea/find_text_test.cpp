#include "textarea/find_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/regular_expression.h"

namespace {

constexpr int kNone = -1;

/// One search: 'p' plain with case, 'i' plain without, 'r' a regular expression; "+" when it goes
/// on from the last hit. Then a blank and the text. And the hit.
struct Step {
  std::string search;
  int offset;
  int length = 0;
};

struct Case {
  const char* rule;
  std::string log;
  std::vector<Step> steps;
};

FindRequest requestOf(const Step& step) {
  const bool goOn = step.search[1] == '+';
  return {.text = std::string_view(step.search).substr(goOn ? 3 : 2),
          .goOn = goOn,
          .matchCase = step.search[0] == 'p',
          .regexp = step.search[0] == 'r'};
}

std::string placeOf(const FindState& state) {
  return std::to_string(state.lastFindLength) + " at " + std::to_string(state.lastFindOffset);
}

/// All searches of a case in their order.
void check(const Case& row) {
  SCOPED_TRACE(row.rule);
  FindState state;
  for (const Step& step : row.steps) {
    const FindRequest request = requestOf(step);
    FindState expected = request.goOn ? state : FindState{};
    if (step.offset != kNone) {
      expected = {static_cast<std::size_t>(step.offset), static_cast<std::size_t>(step.length)};
    }
    EXPECT_EQ(findInLog(row.log, request, state),
              step.offset == kNone ? FindResult::kNotFound : FindResult::kFound)
        << step.search.substr(0, 40);
    EXPECT_EQ(placeOf(state), placeOf(expected)) << step.search.substr(0, 40);
  }
}

TEST(FindText, SearchesForTexts) {
  const std::vector<Case> rows{
      {"a fresh search misses a hit closer to the start than its length",
       "abc\nabc\n",
       {{"p abc", 4, 3}, {"p+ abc", kNone}}},
      {"a hit right behind that many characters is found",
       "xxab ab",
       {{"p ab", 2, 2}, {"p+ ab", 5, 2}, {"p+ ab", kNone}}},
      {"it goes on behind the last offset by the length of its own text",
       "....ab.cdcdcd",
       {{"p ab", 4, 2}, {"p+ cdcd", 9, 4}}},
      {"case counts only on demand, of letters of ASCII",
       "...Abc aBC \xC4\xE4 zZ",
       {{"i ABC", 3, 3},
        {"i+ abc", 7, 3},
        {"p aBC", 7, 3},
        {"p ABC", kNone},
        {"i \xE4", 12, 1},
        {"i c \xC4", 9, 3},
        {"i ZZ", 14, 2},
        {"i [@`{", kNone}}},
      {"an empty text is found where the last hit was",
       "abcabc",
       {{"p ", 0, 0}, {"p+ c", 2, 1}, {"i+ ", 2, 0}}},
      {"nothing is in an empty log",
       "",
       {{"i ", 0, 0}, {"i a", kNone}, {"p a", kNone}, {"r a*", kNone}}},
  };
  for (const Case& row : rows) {
    check(row);
  }
}

TEST(FindText, SearchesForRegularExpressions) {
  const std::vector<Case> rows{
      {"the first character is never looked at", "aba", {{"r a", 2, 1}}},
      {"also when it is the only one", "a", {{"r a", kNone}}},
      {"also when it is a line feed", "\nabc", {{"r ^abc$", 1, 3}}},
      {"a character is skipped behind a hit of one",
       ".aaaaa",
       {{"r a", 1, 1}, {"r+ a", 3, 1}, {"r+ a", 5, 1}, {"r+ a", kNone}}},
      {"nothing is skipped behind a longer one", ".aaaaa", {{"r aa", 1, 2}, {"r+ aa", 3, 2}}},
      {"what is skipped may be a line feed", "xa\nab", {{"r a", 1, 1}, {"r+ ^a", 3, 1}}},
      {"the rest of a line behind a hit is a line of its own",
       ".ababx\nab",
       {{"r ^ab", 1, 2}, {"r+ ^ab", 3, 2}, {"r+ ^ab", 7, 2}, {"r+ ^$", 9, 0}}},
      {"also an empty rest", ".ab\nab", {{"r ab", 1, 2}, {"r+ ^$", 3, 0}}},
      {"a match lies within one line; the last needs no line feed",
       ".x one\ntwo y\nx three y\r\nlast x.y",
       {{"r x.*y", 13, 9}, {"r+ x.*y$", 29, 3}, {"r \\n", kNone}, {"r y.$", 21, 2}}},
      {"empty hits go forward to the end of the text",
       "ab\nc\n",
       {{"r z*", 1}, {"r+ z*", 2}, {"r+ z*", 3}, {"r+ z*", 4}, {"r+ z*", 5}, {"r+ z*", kNone}}},
      {"case always counts", "..AB ab", {{"r ab", 5, 2}}},
      {"every byte is a character", ".\xE4\xF6\xFC", {{"r [\xF0-\xFF]*$", 2, 2}}},
      {"a line may be of any length",
       ".\n" + std::string(100000, 'a') + "needle" + std::string(100000, 'b') + "end",
       {{"r a*ne*dle", 2, 100006}, {"r+ end$", 200008, 3}}},
      {"only so much of a pattern counts",
       "..ab abc",
       {{"r [a" + std::string(kPatternLength - 4, '.') + "]b", 2, 2},
        {"r [a" + std::string(kPatternLength - 4, '.') + "]bc", 2, 2}}},
  };
  for (const Case& row : rows) {
    check(row);
  }
}

TEST(FindText, GoesOnInALogThatChanged) {
  FindState state;
  const auto find = [&state](const std::string& log, const Step& step) {
    return findInLog(log, requestOf(step), state) == FindResult::kFound ? placeOf(state) : "none";
  };
  EXPECT_EQ(find(std::string(50, '.') + "ab", {"p ab", 0}), "2 at 50");
  for (const char* search : {"p+ ab", "i+ ab", "p+ ", "r+ ab", "r+ a*"}) {
    EXPECT_EQ(find("ab ab", {search, 0}), "none") << search;
  }
  EXPECT_EQ(find("..one\n", {"r one", 0}), "3 at 2");
  EXPECT_EQ(find("..one\none", {"r+ one", 0}), "3 at 6");
  EXPECT_EQ(find("..one\none", {"p+ one", 0}), "none");
  EXPECT_EQ(find("..one\none\nONE one", {"i+ One", 0}), "3 at 10");
}

TEST(FindText, SearchWithoutCaseFindsHitsAnywhereInALongLog) {
  const std::string word = "HitAcrossWindows";
  for (const int offset : {16000, 16368, 16383, 16384, 16400, 32752, 49990, 65519}) {
    std::string log(65535, 'h');
    log.replace(static_cast<std::size_t>(offset), word.size(), word);
    check(
        {"by windows", log, {{"i hitacrosswindows", offset, 16}, {"i+ hitacrosswindows", kNone}}});
  }
  check({"longer than a window",
         "x" + std::string(40000, 'A') + "b" + std::string(40000, 'a'),
         {{"i " + std::string(40000, 'a'), 40002, 40000}}});
}

TEST(FindText, ABadPatternIsToldAndOnlyAFreshSearchForgetsTheLastHit) {
  for (const std::string& bad : {std::string("\\(a"), std::string("[a"), std::string("a\\{2"),
                                 std::string("\\1"), std::string(), std::string(129, 'a')}) {
    for (const bool goOn : {true, false}) {
      FindState state{1, 2};
      EXPECT_EQ(findInLog(".ab ab", {.text = bad, .goOn = goOn, .regexp = true}, state),
                FindResult::kPatternError)
          << bad;
      EXPECT_EQ(placeOf(state), goOn ? "2 at 1" : "0 at 0");
    }
  }
}

TEST(FindText, HostilePatternsAndLinesHideNoHit) {
  std::string log = ".\n";
  for (int line = 0; line < 20000; ++line) {
    log += "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaax\n";
  }
  check({"many ways",
         log + std::string(3000, 'a') + "b",
         {{"r ^[^x]*[^x]*[^x]*[^x]*[^x]\\{3,\\}[b]$", 640002, 3001}}});
  std::mt19937 random(1);
  log = ".\nc";
  for (int i = 0; i < 60000; ++i) {
    log += (random() & 1) != 0 ? 'a' : 'b';
  }
  check({"more states than there is room for",
         log + "abbbbbbbbbbbbbbbd\ncabbbbbbbbbbbbbbbd",
         {{"r c[ab]*a[ab]\\{14\\}d$", kNone},
          {"r c[ab]*a[ab]\\{15\\}d$", 2, 60018},
          {"r+ c[ab]*a[ab]\\{15\\}d$", 60021, 18}}});
  log = ".\nazb\n";
  for (int line = 0; line < 5000; ++line) {
    log += "qz\n";
  }
  check({"looks like a match", log + "aza", {{"r ^\\(.\\)z\\1$", 15006, 3}}});
}

constexpr char kHardPattern[] = "^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$";

TEST(FindText, EachWayToSearchAsksAgainAndAgainWhetherItMayGoOnAndStops) {
  constexpr std::size_t kMany = 5'000'000;
  const std::string dots = std::string(kMany, '.') + "ab";
  std::string lines;
  for (std::size_t i = 0; i < kMany / 10; ++i) {
    lines += ".........\n";
  }
  std::mt19937 random(1);
  std::string longLine = "..\nc";
  for (int i = 0; i < 60000; ++i) {
    longLine += (random() & 1) != 0 ? 'a' : 'b';
  }
  std::string manyStars;
  for (int i = 0; i < 120; ++i) {
    manyStars += ".*";
  }
  for (const auto& [log, search] : std::vector<std::pair<std::string, std::string>>{
           {dots, "p+ ab"},
           {dots, "i+ AB"},
           {lines + "ab", "r+ ^[ab][bc]"},
           {longLine + "d", "r+ c[ab]*a[ab]\\{15\\}d$"},
           {".\n" + std::string(30000, 'a') + "b", "r+ " + manyStars + "[b].*"},
           {".\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c",
            std::string("r+ ") + kHardPattern}}) {
    FindState state{1, 1};
    int asked = 0;
    EXPECT_EQ(findInLog(log, requestOf({search, 0}), state, [&] { return ++asked < 3; }),
              FindResult::kStopped)
        << search;
    EXPECT_EQ(asked, 3) << search;
    EXPECT_LT(regexp::workSpent(), regexp::kWorkLimit / 2);
    EXPECT_EQ(placeOf(state), "1 at 1");
  }
}

TEST(FindText, ASearchThatGivesUpALineTellsAndPassesNoneOver) {
  FindState state;
  EXPECT_EQ(findInLog(".\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c\naabaac",
                      {.text = kHardPattern, .goOn = true, .regexp = true}, state),
            FindResult::kGaveUp);
}

}  // namespace
