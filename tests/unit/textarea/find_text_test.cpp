#include "textarea/find_text.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <random>
#include <string>

#include "support/regular_expression.h"

namespace {

/// A hit as the user sees it.
struct Hit {
  std::size_t offset;
  std::size_t length;
  bool operator==(const Hit&) const = default;
};

[[maybe_unused]] std::ostream& operator<<(std::ostream& out, const Hit& hit) {
  return out << hit.length << " characters at " << hit.offset;
}

constexpr auto kNone = std::nullopt;

class FindText : public testing::Test {
 protected:
  std::optional<Hit> find(FindRequest request) {
    const FindState before = state;
    const FindResult result = findInLog(log, request, state);
    EXPECT_NE(result, FindResult::kPatternError);
    if (result != FindResult::kFound) {
      const Hit kept{request.goOn ? before.lastFindOffset : 0,
                     request.goOn ? before.lastFindLength : 0};
      EXPECT_EQ((Hit{state.lastFindOffset, state.lastFindLength}), kept);
      return std::nullopt;
    }
    return Hit{state.lastFindOffset, state.lastFindLength};
  }
  std::optional<Hit> plain(std::string_view text, bool goOn = false) {
    return find({.text = text, .goOn = goOn, .matchCase = true});
  }
  std::optional<Hit> anyCase(std::string_view text, bool goOn = false) {
    return find({.text = text, .goOn = goOn});
  }
  std::optional<Hit> pattern(std::string_view text, bool goOn = false) {
    return find({.text = text, .goOn = goOn, .regexp = true});
  }

  static constexpr bool kGoOn = true;
  std::string log;
  FindState state;
};

TEST_F(FindText, AFreshPlainSearchMissesAHitCloserToTheStartThanItsLength) {
  log = "abc\nabc\n";
  EXPECT_EQ(plain("abc"), (Hit{4, 3}));
  EXPECT_EQ(plain("abc", kGoOn), kNone);
  EXPECT_EQ((Hit{state.lastFindOffset, state.lastFindLength}), (Hit{4, 3}));
  log = "xxab ab";
  EXPECT_EQ(plain("ab"), (Hit{2, 2}));
  EXPECT_EQ(plain("ab", kGoOn), (Hit{5, 2}));
}

TEST_F(FindText, APlainSearchGoesOnBehindTheLastOffsetByTheLengthOfItsOwnText) {
  log = "....ab.cdcdcd";
  EXPECT_EQ(plain("ab"), (Hit{4, 2}));
  EXPECT_EQ(plain("cdcd", kGoOn), (Hit{9, 4})) << "behind 4 + 4, whatever the last hit's length";
}

TEST_F(FindText, CaseCountsOnlyOnDemandAndTheHitLiesInTheRealText) {
  log = "...Abc aBC \xC4\xE4";
  EXPECT_EQ(anyCase("ABC"), (Hit{3, 3}));
  EXPECT_EQ(anyCase("abc", kGoOn), (Hit{7, 3}));
  EXPECT_EQ(plain("aBC"), (Hit{7, 3}));
  EXPECT_EQ(plain("ABC"), kNone);
  EXPECT_EQ(anyCase("\xE4"), (Hit{12, 1})) << "only letters of ASCII have two cases";
  EXPECT_EQ(anyCase("c \xC4"), (Hit{9, 3}));
  EXPECT_EQ(anyCase("[@`{"), kNone);
}

TEST_F(FindText, SearchWithoutCaseFindsHitsAnywhereInALongLog) {
  const std::string word = "HitAcrossWindows";
  const std::string wanted = "hitacrosswindows";
  for (const std::size_t offset :
       {16000U, 16368U, 16383U, 16384U, 16400U, 32752U, 49990U, 65519U}) {
    log.assign(65535, 'h');
    log.replace(offset, word.size(), word);
    EXPECT_EQ(anyCase(wanted), (Hit{offset, word.size()}));
    EXPECT_EQ(anyCase(wanted, kGoOn), kNone);
  }
  log = "x" + std::string(40000, 'A') + "b" + std::string(40000, 'a');
  EXPECT_EQ(anyCase(std::string(40000, 'a')), (Hit{40002, 40000}));
}

TEST_F(FindText, AnEmptyTextIsFoundWhereTheLastHitWas) {
  log = "abcabc";
  EXPECT_EQ(plain(""), (Hit{0, 0}));
  EXPECT_EQ(plain("c", kGoOn), (Hit{2, 1}));
  EXPECT_EQ(anyCase("", kGoOn), (Hit{2, 0}));
  log = "";
  EXPECT_EQ(anyCase(""), (Hit{0, 0}));
  EXPECT_EQ(anyCase("a"), kNone);
  EXPECT_EQ(plain("a"), kNone);
  EXPECT_EQ(pattern("a*"), kNone);
}

TEST_F(FindText, APlaceBehindAShortenedLogFindsNothing) {
  log = std::string(50, '.') + "ab";
  EXPECT_EQ(plain("ab"), (Hit{50, 2}));
  log = "ab ab";
  EXPECT_EQ(plain("ab", kGoOn), kNone);
  EXPECT_EQ(anyCase("ab", kGoOn), kNone);
  EXPECT_EQ(plain("", kGoOn), kNone);
  EXPECT_EQ(pattern("ab", kGoOn), kNone);
  EXPECT_EQ(pattern("a*", kGoOn), kNone);
  EXPECT_EQ(pattern("ab"), (Hit{3, 2}));
}

TEST_F(FindText, NewTextIsFoundByTheNextSearchOn) {
  log = "..one\n";
  EXPECT_EQ(pattern("one"), (Hit{2, 3}));
  EXPECT_EQ(pattern("one", kGoOn), kNone);
  log += "one";
  EXPECT_EQ(pattern("one", kGoOn), (Hit{6, 3}));
  EXPECT_EQ(plain("one", kGoOn), kNone);
  log += "\nONE one";
  EXPECT_EQ(anyCase("One", kGoOn), (Hit{10, 3}));
}

TEST_F(FindText, ARegularExpressionNeverLooksAtTheFirstCharacter) {
  log = "aba";
  EXPECT_EQ(pattern("a"), (Hit{2, 1}));
  log = "a";
  EXPECT_EQ(pattern("a"), kNone);
  log = "\nabc";
  EXPECT_EQ(pattern("^abc$"), (Hit{1, 3})) << "the first line feed counts as a character";
}

TEST_F(FindText, ARegularExpressionSkipsACharacterBehindAHitOfOne) {
  log = ".aaaaa";
  EXPECT_EQ(pattern("a"), (Hit{1, 1}));
  EXPECT_EQ(pattern("a", kGoOn), (Hit{3, 1}));
  EXPECT_EQ(pattern("a", kGoOn), (Hit{5, 1}));
  EXPECT_EQ(pattern("a", kGoOn), kNone);
  log = ".aaaaa";
  EXPECT_EQ(pattern("aa"), (Hit{1, 2}));
  EXPECT_EQ(pattern("aa", kGoOn), (Hit{3, 2})) << "nothing is skipped behind a longer one";
  log = "xa\nab";
  EXPECT_EQ(pattern("a"), (Hit{1, 1}));
  EXPECT_EQ(pattern("^a", kGoOn), (Hit{3, 1})) << "what is skipped may be a line feed";
}

TEST_F(FindText, TheRestOfALineBehindAHitIsALineOfItsOwn) {
  log = ".ababx\nab";
  EXPECT_EQ(pattern("^ab"), (Hit{1, 2}));
  EXPECT_EQ(pattern("^ab", kGoOn), (Hit{3, 2}));
  EXPECT_EQ(pattern("^ab", kGoOn), (Hit{7, 2}));
  EXPECT_EQ(pattern("^$", kGoOn), (Hit{9, 0})) << "also an empty rest";
  log = ".ab\nab";
  EXPECT_EQ(pattern("ab"), (Hit{1, 2}));
  EXPECT_EQ(pattern("^$", kGoOn), (Hit{3, 0}));
}

TEST_F(FindText, ARegularExpressionMatchesWithinOneLine) {
  log = ".x one\ntwo y\nx three y\r\nlast x.y";
  EXPECT_EQ(pattern("x.*y"), (Hit{13, 9}));
  EXPECT_EQ(pattern("x.*y$", kGoOn), (Hit{29, 3})) << "the last line needs no line feed";
  EXPECT_EQ(pattern("\\n"), kNone);
  EXPECT_EQ(pattern("y.$"), (Hit{21, 2}));
}

TEST_F(FindText, EmptyHitsOfARegularExpressionGoForwardToTheEndOfTheText) {
  log = "ab\nc\n";
  EXPECT_EQ(pattern("z*"), (Hit{1, 0}));
  for (std::size_t offset = 2; offset <= log.size(); ++offset) {
    EXPECT_EQ(pattern("z*", kGoOn), (Hit{offset, 0}));
  }
  EXPECT_EQ(pattern("z*", kGoOn), kNone);
}

TEST_F(FindText, ARegularExpressionIgnoresTheOptionForCase) {
  log = "..AB ab";
  EXPECT_EQ(find({.text = "ab", .matchCase = false, .regexp = true}), (Hit{5, 2}));
  EXPECT_EQ(find({.text = "ab", .matchCase = true, .regexp = true}), (Hit{5, 2}));
  log = ".\xE4\xF6\xFC";
  EXPECT_EQ(pattern("[\xF0-\xFF]*$"), (Hit{2, 2}));
}

TEST_F(FindText, LinesAreLookedThroughWhateverTheirLength) {
  log = ".\n" + std::string(100000, 'a') + "needle" + std::string(100000, 'b') + "end";
  EXPECT_EQ(pattern("a*ne*dle"), (Hit{2, 100006}));
  EXPECT_EQ(pattern("end$", kGoOn), (Hit{200008, 3}));
}

TEST_F(FindText, OnlySoMuchOfAPatternCounts) {
  log = "..ab abc";
  const std::string filler = "[a" + std::string(kPatternLength - 4, '.') + "]";
  ASSERT_EQ(filler.size(), kPatternLength - 1);
  EXPECT_EQ(pattern(filler + "b"), (Hit{2, 2}));
  EXPECT_EQ(pattern(filler + "bc"), (Hit{2, 2})) << "the last character is not looked for";
}

TEST_F(FindText, ABadPatternIsToldAndChangesNothing) {
  log = ".ab ab";
  EXPECT_EQ(pattern("ab"), (Hit{1, 2}));
  for (const char* bad : {"\\(a", "[a", "a\\{2", "\\1", ""}) {
    EXPECT_EQ(findInLog(log, {.text = bad, .goOn = true, .regexp = true}, state),
              FindResult::kPatternError)
        << bad;
  }
  EXPECT_EQ((Hit{state.lastFindOffset, state.lastFindLength}), (Hit{1, 2}));
  EXPECT_EQ(findInLog(log, {.text = std::string(129, 'a'), .regexp = true}, state),
            FindResult::kPatternError)
      << "compiled, it is too long";
  EXPECT_EQ((Hit{state.lastFindOffset, state.lastFindLength}), (Hit{0, 0}))
      << "a fresh search forgets the last hit first";
}

TEST_F(FindText, AHostilePatternWithoutReferencesMissesNothing) {
  log = ".\n";
  for (int line = 0; line < 20000; ++line) {
    log += "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaax\n";
  }
  log += std::string(3000, 'a') + "b";
  EXPECT_EQ(pattern("^[^x]*[^x]*[^x]*[^x]*[^x]\\{3,\\}[b]$"), (Hit{640002, 3001}));
}

TEST_F(FindText, APatternWithMoreStatesThanThereIsRoomForMissesNothing) {
  std::mt19937 random(1);
  log = ".\nc";
  for (int i = 0; i < 60000; ++i) {
    log += (random() & 1) != 0 ? 'a' : 'b';
  }
  log += "abbbbbbbbbbbbbbbd\ncabbbbbbbbbbbbbbbd";
  EXPECT_EQ(pattern("c[ab]*a[ab]\\{14\\}d$"), kNone);
  EXPECT_EQ(pattern("c[ab]*a[ab]\\{15\\}d$"), (Hit{2, 60018}));
  EXPECT_EQ(pattern("c[ab]*a[ab]\\{15\\}d$", kGoOn), (Hit{60021, 18}));
}

TEST_F(FindText, ALineThatOnlyLooksLikeAMatchHidesNoLaterOne) {
  log = ".\nazb\n";
  for (int line = 0; line < 5000; ++line) {
    log += "qz\n";
  }
  log += "aza";
  EXPECT_EQ(pattern("^\\(.\\)z\\1$"), (Hit{15006, 3}));
}

TEST_F(FindText, EachWayToSearchAsksAgainAndAgainWhetherItMayGoOnAndStops) {
  constexpr std::size_t kMany = 5'000'000;
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
  struct Row {
    std::string log;
    std::string text;
    bool matchCase;
    bool regexp;
  };
  for (const Row& row :
       {Row{std::string(kMany, '.') + "ab", "ab", true, false},
        Row{std::string(kMany, '.') + "ab", "AB", false, false},
        Row{lines + "ab", "^[ab][bc]", true, true},
        Row{longLine + "d", "c[ab]*a[ab]\\{15\\}d$", true, true},
        Row{".\n" + std::string(30000, 'a') + "b", manyStars + "[b].*", true, true},
        Row{".\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c",
            "^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$", true, true}}) {
    state = {.lastFindOffset = 1, .lastFindLength = 1};
    int asked = 0;
    const FindRequest request{row.text, kGoOn, row.matchCase, row.regexp};
    EXPECT_EQ(findInLog(row.log, request, state, [&] { return ++asked < 3; }), FindResult::kStopped)
        << row.text;
    EXPECT_EQ(asked, 3) << row.text;
    EXPECT_LT(regexp::workSpent(), regexp::kWorkLimit / 2);
    EXPECT_EQ((Hit{state.lastFindOffset, state.lastFindLength}), (Hit{1, 1}));
  }
}

TEST_F(FindText, ASearchThatGivesUpALineTellsAndPassesNoneOver) {
  log = ".\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c\naabaac";
  EXPECT_EQ(
      findInLog(log,
                {.text = "^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$", .goOn = true, .regexp = true},
                state),
      FindResult::kGaveUp);
}

}  // namespace
