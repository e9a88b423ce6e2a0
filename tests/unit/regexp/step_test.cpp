// What patterns match, and that hostile ones end.

#include "support/regular_expression.h"

#include <gtest/gtest.h>
#include <array>
#include <chrono>
#include <optional>
#include <ostream>
#include <random>
#include <string>

#include "tests/support/regexp_agreement.h"

namespace {

struct Match {
  int from;
  int length;
  bool operator==(const Match&) const = default;
};

[[maybe_unused]] std::ostream& operator<<(std::ostream& out, const Match& match) {
  return out << match.length << " characters at " << match.from;
}

std::array<char, 256> form;

void compileGood(const std::string& pattern) {
  form.fill('\0');
  ASSERT_NE(regexp::compile(pattern.c_str(), form.data(), form.data() + form.size(), 0), nullptr)
      << pattern << ": " << regexp::compileError();
}

std::optional<Match> matchOf(const std::string& subject) {
  if (regexp::step(subject.c_str(), form.data()) == 0) {
    return std::nullopt;
  }
  int length = 0;
  const char* from = regexp::matchLength(&length);
  return Match{static_cast<int>(from - subject.c_str()), length};
}

struct Case {
  const char* pattern;
  const char* subject;
  std::optional<Match> match;
};

constexpr auto kNone = std::nullopt;

void expectMatches(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    compileGood(c.pattern);
    EXPECT_EQ(matchOf(c.subject), c.match) << c.pattern << " in " << c.subject;
  }
}

TEST(RegexpStep, FindsTheLeftmostMatchOfPlainItems) {
  expectMatches({{"b", "abcb", Match{1, 1}},
                 {"bc", "abbc", Match{2, 2}},
                 {"x", "abc", kNone},
                 {".", "", kNone},
                 {"a.c", "ac abc", Match{3, 3}},
                 {"\xE4.", "a\xE4\xF6", Match{1, 2}},
                 {"a+", "aa+", Match{1, 2}},
                 {"*a", "a*a", Match{1, 2}},
                 {"a\\nb", "xa\nb", Match{1, 3}}});
}

TEST(RegexpStep, AnchorsHoldAtTheEndsOnly) {
  expectMatches({{"^a", "ba", kNone},
                 {"^a", "ab", Match{0, 1}},
                 {"^", "ab", Match{0, 0}},
                 {"a$", "aba", Match{2, 1}},
                 {"$", "ab", Match{2, 0}},
                 {"^$", "", Match{0, 0}},
                 {"^$", "a", kNone},
                 {"a^", "a^", Match{0, 2}}});
}

TEST(RegexpStep, RepetitionsTakeWhatTheyCanAndGiveBack) {
  expectMatches({{"a*", "baa", Match{0, 0}},
                 {"a*", "aab", Match{0, 2}},
                 {"aa*", "baab", Match{1, 2}},
                 {".*b", "abab", Match{0, 4}},
                 {"a*ab", "aaab", Match{0, 4}},
                 {"x.*y", "axbycyd", Match{1, 5}},
                 {"x.*y", "ax y", Match{1, 3}},
                 {"a.*\\(b.*\\)c$", "zabbcxc", Match{1, 6}},
                 {"a\\{2,3\\}", "aaaa", Match{0, 3}},
                 {"a\\{2\\}", "abaaa", Match{2, 2}},
                 {"a\\{2,\\}b", "ab aaaab", Match{3, 5}},
                 {"ba\\{0\\}c", "bac bc", Match{4, 2}},
                 {".\\{2,4\\}d", "abcdd", Match{0, 5}},
                 {"a\\{3\\}", "aa", kNone}});
}

TEST(RegexpStep, ARangeWithoutLimitTakesTwentyThousandMore) {
  compileGood("a\\{2,\\}");
  EXPECT_EQ(matchOf(std::string(20002, 'a')), (Match{0, 20002}));
  EXPECT_EQ(matchOf(std::string(20003, 'a')), (Match{0, 20002}));
}

TEST(RegexpStep, ClassesTellSevenBitCharactersFromTheOthers) {
  expectMatches({{"[b-d]*", "bcdx", Match{0, 3}},
                 {"[]a]\\{2\\}", "xa]", Match{1, 2}},
                 {"[a-]\\{2\\}", "xa-", Match{1, 2}},
                 {"[^a]", "aab", Match{2, 1}},
                 {"[^a]", "a", kNone},
                 {"[^a]", "a\xE4", Match{1, 1}},
                 {"[^a]*",
                  "\xE4\xFF"
                  "b",
                  Match{0, 3}},
                 {"[ -~]", "\xA0\xFE", kNone},
                 {"[\xE0-\xEF]*", "\xE4\xE0\xF0", Match{0, 2}},
                 {"[^a\xE4]", "a\xE4\xE5", Match{2, 1}},
                 {"[^\xE4]", "\xE4", kNone}});
}

TEST(RegexpStep, BackReferencesRepeatWhatTheirGroupMatched) {
  expectMatches({{"\\(ab\\)\\1", "xababab", Match{1, 4}},
                 {"\\(ab\\)\\1", "abaab", kNone},
                 {"\\(a*\\)b\\1c", "aabac", Match{1, 4}},
                 {"\\(.\\)\\(.\\)\\2\\1", "xabbay", Match{1, 4}},
                 {"\\(\\(a\\)b\\)\\2\\1", "abaab", Match{0, 5}},
                 {"\\(ab\\)\\1*c", "abababc", Match{0, 7}},
                 {"\\(ab\\)\\1*abc", "abababc", Match{0, 7}},
                 {"\\(ab\\)\\1\\{2,3\\}", "ababababab", Match{0, 8}},
                 {"\\(ab\\)\\1\\{2\\}", "abab", kNone},
                 {"\\(x*\\)\\1*\\1\\{3\\}b", "ab", Match{1, 1}},
                 {"^\\(.*\\)\\1$", "abcabc", Match{0, 6}}});
  compileGood("\\(a*\\)\\(b\\)");
  const std::string subject = "xaab";
  ASSERT_EQ(regexp::step(subject.c_str(), form.data()), 1);
  EXPECT_EQ(std::string(regexp::braslist[0], regexp::braelist[0]), "aa");
  EXPECT_EQ(std::string(regexp::braslist[1], regexp::braelist[1]), "b");
}

TEST(RegexpStep, RepetitionsGiveBackNoFurtherThanTheLowerBound) {
  compileGood("a*ab");
  const std::string subject = "aaab";
  regexp::locs = subject.c_str() + 2;
  EXPECT_EQ(regexp::step(subject.c_str(), form.data()), 1);
  regexp::locs = subject.c_str() + 3;
  EXPECT_EQ(regexp::step(subject.c_str(), form.data()), 0);
  regexp::locs = nullptr;
}

TEST(RegexpStep, SkipsCodesItDoesNotKnowAndRunsNothingFromAnEmptyBuffer) {
  const char skipped[] = {44, 4, 'a', 127, 4, 'b', 22};
  regexp::circf = false;
  EXPECT_EQ(regexp::step("xab", skipped), 1);
  EXPECT_EQ(regexp::step("xa", skipped), 0);
  EXPECT_EQ(regexp::step("xa", ""), 0);
}

TEST(RegexpStep, PatternsMadeToExplodeFindTheirMatchOrGiveUp) {
  const auto start = std::chrono::steady_clock::now();
  std::string manyStars;
  std::string manyClasses;
  for (int i = 0; i < 100; ++i) {
    manyStars += ".*";
  }
  for (int i = 0; i < 13; ++i) {
    manyClasses += "[^x]*";
  }
  const std::string subject(30000, 'a');
  for (const std::string& pattern : {manyStars + "[xy]$", "a" + manyClasses + "[y]",
                                     std::string("a.\\{2,\\}a.\\{2,\\}a.\\{2,\\}a.\\{2,\\}[y]")}) {
    compileGood(pattern);
    EXPECT_EQ(matchOf(subject), kNone) << pattern;
    EXPECT_FALSE(regexp::gaveUp()) << pattern;
    EXPECT_EQ(matchOf(subject + "y"), (Match{0, 30001})) << pattern;
  }
  for (const char* pattern :
       {"\\(a*\\)*\\1*\\1*\\1*\\1*[b]", "\\(.*\\)\\(.*\\)\\(.*\\)\\(.*\\)\\1\\2\\3\\4z"}) {
    compileGood(pattern);
    EXPECT_EQ(matchOf("a*" + subject), kNone) << pattern;
    EXPECT_TRUE(regexp::gaveUp()) << pattern;
    EXPECT_LE(regexp::workSpent(), 2 * regexp::kWorkLimit) << pattern;
  }
  compileGood(manyStars + "[xy]$");
  EXPECT_EQ(matchOf("y" + std::string(6'000'000, 'a')), kNone);
  EXPECT_TRUE(regexp::gaveUp()) << "what the items match would not fit";
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST(RegexpStep, AllWaysToLookForAPatternFindTheSame) {
  // With little else more than an automaton holds.
  const char* const kManyRanges = "a\\{0,254\\}a\\{0,254\\}a\\{0,254\\}.\\{0,254\\}a\\{4\\}";
  const char* const pieces[] = {"a",  "b",         "\xE4",      ".",           "*",        "*",
                                "^",  "[ab]",      "[^a]",      "[\xE0-\xEF]", "[^b\xE4]", "\\(",
                                "$",  "\\{0,2\\}", "\\{1,\\}",  "\\{2\\}",     "\\)",      "\\1",
                                "b*", "a\\{20\\}", kManyRanges, ".*",          "\\n",      "*"};
  const std::string alphabet = "aaaabbb\xE4\xFF*{\n";
  std::mt19937 random(7);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  int compared = 0;
  for (int round = 0; round < 4000; ++round) {
    std::string pattern;
    for (std::size_t count = 1 + below(9); count != 0; --count) {
      pattern += pieces[below(std::size(pieces))];
    }
    if (regexp::compile(pattern.c_str(), form.data(), form.data() + form.size(), 0) == nullptr) {
      continue;
    }
    std::string subject(below(40), 'a');
    for (char& c : subject) {
      c = alphabet[below(alphabet.size())];
    }
    subject.insert(below(subject.size() + 1), below(8) == 0 ? 256 : 0, 'a');
    const std::optional<bool> agree = matchersAgree(subject, form.data());
    ASSERT_NE(agree, false) << pattern << " in " << subject;
    compared += agree ? 1 : 0;
  }
  EXPECT_GT(compared, 1000);
}

TEST(RegexpStep, WorkEnoughIsLeftForLongLines) {
  const std::string line = std::string(1000000, 'a') + "b";
  compileGood("[ab]*b$");
  EXPECT_EQ(matchOf(line), (Match{0, 1000001}));
  compileGood(".*.*b");
  EXPECT_EQ(matchOf(line), (Match{0, 1000001}));
}

}  // namespace
