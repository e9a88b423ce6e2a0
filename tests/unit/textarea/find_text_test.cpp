#include "textarea/find_text.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "support/regular_expression.h"

namespace {

using Searches = std::vector<std::pair<std::string, std::string>>;

std::string placeOf(const FindState& state) {
  return std::to_string(state.lastFindLength) + " at " + std::to_string(state.lastFindOffset);
}

/// One search: 'p' plain with case, 'i' plain without, 'r' a regular expression; "+" when it goes
/// on from the last hit; then a blank and the text. Tells the hit, or why there is none.
std::string findOnce(const std::string& log, std::string_view search, FindState& state,
                     const std::function<bool()>& mayGoOn = {}) {
  const bool goOn = search[1] == '+';
  const FindState before = goOn ? state : FindState{};
  const FindRequest request{.text = search.substr(goOn ? 3 : 2),
                            .goOn = goOn,
                            .matchCase = search[0] == 'p',
                            .regexp = search[0] == 'r'};
  const FindResult result = findInLog(log, request, state, mayGoOn);
  if (result == FindResult::kFound) {
    return placeOf(state);
  }
  EXPECT_EQ(placeOf(state), placeOf(before)) << "only a fresh search forgets the last hit";
  return std::map<FindResult, const char*>{{FindResult::kNotFound, "none"},
                                           {FindResult::kPatternError, "error"},
                                           {FindResult::kStopped, "stopped"},
                                           {FindResult::kGaveUp, "gave up"}}[result];
}

/// All searches of a log in their order.
void check(const std::string& log, const Searches& searches) {
  FindState state;
  for (const auto& [search, result] : searches) {
    EXPECT_EQ(findOnce(log, search, state), result)
        << search.substr(0, 40) << " in " << log.substr(0, 40);
  }
}

TEST(FindText, SearchesForTexts) {
  // A fresh search misses a hit closer to the start than its length.
  check("abc\nabc\n", {{"p abc", "3 at 4"}, {"p+ abc", "none"}});
  check("xxab ab", {{"p ab", "2 at 2"}, {"p+ ab", "2 at 5"}, {"p+ ab", "none"}});
  // It goes on behind the last offset by the length of its own text.
  check("....ab.cdcdcd", {{"p ab", "2 at 4"}, {"p+ cdcd", "4 at 9"}});
  // Case counts only on demand, of letters of ASCII.
  check("...Abc aBC", {{"i ABC", "3 at 3"}, {"i+ abc", "3 at 7"}, {"p aBC", "3 at 7"}});
  check("...\xC4\xE4 zZ {``[", {{"i \xE4", "1 at 4"}, {"i ZZ", "2 at 6"}, {"i [@`{", "none"}});
  // An empty text is found where the last hit was.
  check("abcabc", {{"p ", "0 at 0"}, {"p+ c", "1 at 2"}, {"i+ ", "0 at 2"}});
  check("", {{"i ", "0 at 0"}, {"i a", "none"}, {"p a", "none"}, {"r a*", "none"}});
  for (const std::size_t offset : {16000, 16368, 16383, 16384, 16400, 16417, 32752, 49990, 65519}) {
    std::string log(65535, 'h');
    log.replace(offset, 16, "HitAcrossWindows");
    check(log, {{"i hitacrosswindows", "16 at " + std::to_string(offset)},
                {"i+ hitacrosswindows", "none"}});
  }
  check("x" + std::string(40000, 'A') + "b" + std::string(40000, 'a'),
        {{"i " + std::string(40000, 'a'), "40000 at 40002"}});
}

TEST(FindText, SearchesForRegularExpressions) {
  // The first character is never looked at, also when it is the only one or a line feed.
  check("aba", {{"r a", "1 at 2"}});
  check("a", {{"r a", "none"}});
  check("\nabc", {{"r ^abc$", "3 at 1"}});
  // A character is skipped behind a hit of one, which may be a line feed, none behind a longer one.
  check(".aaaaa", {{"r a", "1 at 1"}, {"r+ a", "1 at 3"}, {"r+ a", "1 at 5"}, {"r+ a", "none"}});
  check("xa\nab", {{"r a", "1 at 1"}, {"r+ ^a", "1 at 3"}});
  check(".aaaaa", {{"r aa", "2 at 1"}, {"r+ aa", "2 at 3"}});
  // The rest of a line behind a hit is a line of its own, also an empty one.
  check(".ababx\nab",
        {{"r ^ab", "2 at 1"}, {"r+ ^ab", "2 at 3"}, {"r+ ^ab", "2 at 7"}, {"r+ ^$", "0 at 9"}});
  check(".ab\nab", {{"r ab", "2 at 1"}, {"r+ ^$", "0 at 3"}});
  // A match lies within one line; the last needs no line feed.
  check(".x one\ntwo y\nx three y\r\nlast x.y",
        {{"r x.*y", "9 at 13"}, {"r+ x.*y$", "3 at 29"}, {"r \\n", "none"}, {"r y.$", "2 at 21"}});
  // Empty hits go forward to the end of the text.
  check("a\nc\n", {{"r z*", "0 at 1"},
                   {"r+ z*", "0 at 2"},
                   {"r+ z*", "0 at 3"},
                   {"r+ z*", "0 at 4"},
                   {"r+ z*", "none"}});
  // Case always counts.
  check("..AB ab", {{"r ab", "2 at 5"}});
  check(".\n" + std::string(100000, 'a') + "needle" + std::string(100000, 'b') + "end",
        {{"r a*ne*dle", "100006 at 2"}, {"r+ end$", "3 at 200008"}});
  // Only so much of a pattern counts.
  const std::string longest = "r [a" + std::string(kPatternLength - 4, '.') + "]b";
  check("..ab abc", {{longest, "2 at 2"}, {longest + "c", "2 at 2"}});
  for (const std::string& bad : {std::string("\\(a"), std::string(), std::string(129, 'a')}) {
    check(".ab ab", {{"r ab", "2 at 1"}, {"r+ " + bad, "error"}, {"r " + bad, "error"}});
  }
}

TEST(FindText, GoesOnInALogThatChanged) {
  FindState state;
  EXPECT_EQ(findOnce(std::string(50, '.') + "ab", "p ab", state), "2 at 50");
  for (const char* search : {"p+ ab", "i+ ab", "p+ ", "r+ ab", "r+ a*"}) {
    EXPECT_EQ(findOnce("ab ab", search, state), "none") << search;
  }
  EXPECT_EQ(findOnce("..one\n", "r one", state), "3 at 2");
  EXPECT_EQ(findOnce("..one\none", "r+ one", state), "3 at 6");
  EXPECT_EQ(findOnce("..one\none\nONE one", "i+ One", state), "3 at 10");
}

const std::string kHardLine = std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c";
const std::string kHard = "r+ ^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$";

TEST(FindText, HostilePatternsAndLinesHideNoHit) {
  std::string log = ".\n";
  std::string likeAMatch = ".\nazb\n";
  for (int line = 0; line < 20000; ++line) {
    log += "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaax\n";
    likeAMatch += line % 4 == 0 ? "qz\n" : "";
  }
  check(log + std::string(3000, 'a') + "b",
        {{"r ^[^x]*[^x]*[^x]*[^x]*[^x]\\{3,\\}[b]$", "3001 at 640002"}});
  // More states than there is room for, by "a" and "b" in no order.
  std::mt19937 random(1);
  std::string mixed(60000, 'a');
  for (char& c : mixed) {
    c = (random() & 1) != 0 ? 'a' : 'b';
  }
  check(".\nc" + mixed + "abbbbbbbbbbbbbbbd\ncabbbbbbbbbbbbbbbd",
        {{"r c[ab]*a[ab]\\{14\\}d$", "none"},
         {"r c[ab]*a[ab]\\{15\\}d$", "60018 at 2"},
         {"r+ c[ab]*a[ab]\\{15\\}d$", "18 at 60021"}});
  check(likeAMatch + "aza", {{"r ^\\(.\\)z\\1$", "3 at 15006"}});
  check(".\nabababc", {{"r ^\\(ab\\)\\1\\{1,2\\}c", "7 at 2"}});
  // A line that is given up is told and not passed over.
  check(".\n" + kHardLine + "\naabaac", {{kHard, "gave up"}});
}

TEST(FindText, EachWayToSearchAsksAgainAndAgainWhetherItMayGoOnAndStops) {
  check(".ab", {{"r ab", "2 at 1"}});  // its work is what the plain searches leave
  const std::string dots = std::string(5'000'000, '.') + "ab";
  std::string manyStars = "r+ ";
  for (int i = 0; i < 120; ++i) {
    manyStars += ".*";
  }
  for (const auto& [log, search] :
       Searches{{dots, "p+ ab"},
                {dots, "i+ AB"},
                {".\n" + std::string(30000, 'a') + "b", manyStars + "[b].*"},
                {".\n" + kHardLine, kHard}}) {
    FindState state{1, 1};
    int asked = 0;
    EXPECT_EQ(findOnce(log, search, state, [&] { return ++asked < 3; }), "stopped") << search;
    EXPECT_EQ(asked, 3) << search;
    EXPECT_LT(regexp::workSpent(), regexp::kWorkLimit / 2);
  }
}

}  // namespace
