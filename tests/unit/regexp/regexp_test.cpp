// What patterns match, the errors of others, and that hostile ones end.

#include "support/regular_expression.h"

#include <gtest/gtest.h>
#include <array>
#include <chrono>
#include <optional>
#include <random>

#include "tests/support/regexp_agreement.h"

namespace {

std::array<char, 256> form;

/// The end of the compiled form; the error is told by regexp.
const char* compile(const std::string& pattern, int endChar = 0) {
  return regexp::compile(pattern.c_str(), form.data(), form.data() + form.size(), endChar);
}

/// The subject with angles around the match, if there is one.
std::string marked(std::string subject) {
  if (regexp::step(subject.c_str(), form.data()) != 0) {
    int length = 0;
    const auto from = static_cast<std::size_t>(regexp::matchLength(&length) - subject.c_str());
    subject.insert(from + static_cast<std::size_t>(length), ">").insert(from, "<");
  }
  return subject;
}

TEST(RegexpCompile, TellsTheErrorAndNeverWritesPastItsBuffer) {
  const std::pair<int, std::vector<const char*>> errors[] = {
      {11, {"a\\{255\\}", "a\\{99999999999\\}", "a\\{1,255\\}"}},
      {16, {"a\\{\\}", "a\\{,2\\}", "a\\{2", "a\\{2,", "a\\{1,,\\}", "a\\{2x\\}"}},
      {25, {"\\1", "\\(a\\1\\)", "\\(\\(a\\)\\1\\)", "\\(a\\)\\2"}},
      {36, {"a\\\n", "a\nb", "a$\n", "a\\"}},
      {41, {"", "\nabc"}},
      {42, {"\\(a", "a\\)", "\\(a\\)\\)"}},
      {43, {"\\(\\(\\(\\(\\(\\(\\(\\(\\(\\(a"}},
      {44, {"a\\{1,2,3\\}", "a\\{1,2,\\}"}},
      {45, {"a\\{2\\", "a\\{2\\x", "a\\{2,\\)"}},
      {46, {"a\\{3,2\\}"}},
      {49, {"[", "[^", "[]", "[^]", "[a\n]", "[a-", "[a-\n]", "a[\xE4"}}};
  for (const auto& [code, patterns] : errors) {
    for (const char* pattern : patterns) {
      EXPECT_EQ(compile(pattern), nullptr) << pattern;
      EXPECT_EQ(regexp::compileError(), code) << pattern;
    }
  }
  const std::pair<std::string, std::size_t> rows[] = {{std::string(127, 'a'), 255},
                                                      {"a", 3},
                                                      {"[a]", 18},
                                                      {"[\xE4]", 34},
                                                      {"a\\{1,2\\}", 5},
                                                      {"\\(\\)\\1", 7},
                                                      {"$", 2},
                                                      {"[^a]*.$", 20}};
  for (const auto& [pattern, size] : rows) {
    for (std::size_t room = 0; room <= size; ++room) {
      std::string buffer = std::string(room, '\0') + "guard";
      char* const begin = buffer.data();
      char* const end = room == size ? begin + room : nullptr;
      EXPECT_EQ(regexp::compile(pattern.c_str(), begin, begin + room, 0), end) << pattern << room;
      EXPECT_EQ(regexp::compileError(), end == nullptr ? 50 : 0);
      EXPECT_EQ(buffer.substr(room), "guard") << pattern << room;
    }
  }
}

TEST(RegexpCompile, AnEmptyPatternKeepsTheEarlierOneUnlessThatWasAnError) {
  EXPECT_EQ(compile("\\(a[b]\\{2,3\\}\\).$[/", '/'), nullptr);
  EXPECT_EQ(compile(""), nullptr);
  const char* const end = compile("^\\(\\(a\\)[b]\\{2,3\\}[\xE4]*\\)\\2.$/ignored", '/');
  const auto before = form;
  EXPECT_EQ(compile("/", '/'), end);
  EXPECT_EQ(compile("\n"), end);
  EXPECT_EQ(form, before);
  EXPECT_EQ(marked("abbac") + marked("xabbac"), "<abbac>xabbac");
}

TEST(RegexpStep, FindsTheLeftmostMatchWhoseItemsTakeWhatTheyCanAndGiveBack) {
  // A pattern and subjects with their matches.
  const std::vector<const char*> rows[] = {{"a.c", "ac <abc>", "ac"},
                                           {"\xE4.", "a<\xE4\xF6>"},
                                           {"^a", "ba", "<a>b"},
                                           {"a$", "ab<a>"},
                                           {"^$", "<>", "a"},
                                           {"$", "ab<>"},
                                           {"a*", "<>baa", "<aa>b"},
                                           {"aa*", "b<aa>b"},
                                           {"a*ab", "<aaab>"},
                                           {"x.*y", "a<xbycy>d", "xz"},
                                           {"a.*\\(b.*\\)c$", "z<abbcxc>"},
                                           {"a\\{2,3\\}", "<aaa>a"},
                                           {"a\\{2\\}", "ab<aa>a"},
                                           {"a\\{2,\\}b", "ab <aaaab>"},
                                           {"ba\\{0\\}c", "bac <bc>"},
                                           {".\\{2,4\\}d", "<abcdd>", "ad"},
                                           {"[b-d]*", "<bcd>x"},
                                           {"[]a]\\{2\\}", "x<a]>"},
                                           {"[a-]\\{2\\}", "x<a->a"},
                                           {"[-a]\\{2\\}", "x<a->a"},
                                           {"[a^\\n]*", "<n\\^a>\n"},
                                           {"[a-c-e]*", "<edcba>-"},
                                           {"[e-a]*", "<ea>b"},
                                           {"[]-_]*", "<^_]>\\"},
                                           {"[^a]", "aa<b>", "a", "a<\xE4>"},
                                           {"[^a]*", "<\xE4\xFFz>"},
                                           {"[^]^]", "^]<a>"},
                                           {"[ -~]", "\xA0\xFE"},
                                           {"[}-\x80]*", "<\x80~}>\x81|"},
                                           {"[\xE0-\xEF]*", "<\xE4\xE0>\xF0"},
                                           {"[^a\xE4]", "a\xE4<\xE5>"},
                                           {"\\(ab\\)\\1", "x<abab>ab", "abaab"},
                                           {"\\(a*\\)b\\1c", "a<abac>"},
                                           {"\\(.\\)\\(.\\)\\2\\1", "x<abba>y"},
                                           {"\\(\\(a\\)b\\)\\2\\1", "<abaab>"},
                                           {"\\(ab\\)\\1*c", "<abababc>"},
                                           {"\\(ab\\)\\1*abc", "<abababc>"},
                                           {"\\(ab\\)\\1\\{2,3\\}", "<abababab>ab", "abab"},
                                           {"\\(x*\\)\\1*\\1\\{3\\}b", "a<b>"},
                                           {"^\\(.*\\)\\1$", "<abcabc>"},
                                           // Special characters out of place stand for themselves,
                                           {"\\.\\*\\[\\\\\\$\\^\\n\\0+?|", "<.*[\\$^\n0+?|>"},
                                           {"**\\(*a\\)*", "<***a*>"},
                                           {"\\{2\\(a\\)\\{2\\}", "<{2a{2}>"},
                                           {"a^$\\(^b$\\)c", "<a^$^b$c>"},
                                           {"^*", "<*>*"},
                                           // and a later repetition replaces the earlier one.
                                           {"a*\\{2\\}b\\{2\\}\\{3,\\}*c", "a<aabc>"}};
  for (const auto& row : rows) {
    ASSERT_NE(compile(row.front()), nullptr) << row.front();
    for (std::size_t i = 1; i < row.size(); ++i) {
      std::string subject = row[i];
      std::erase_if(subject, [](char c) { return c == '<' || c == '>'; });
      EXPECT_EQ(marked(subject), row[i]) << row.front();
    }
  }
  compile("a\\{2,\\}");  // without limit means twenty thousand more
  EXPECT_EQ(marked(std::string(20003, 'a')), "<" + std::string(20002, 'a') + ">a");
  compile("a*ab");
  for (const int bound : {2, 3}) {
    const char* const bounded = "aaab";
    regexp::locs = bounded + bound;
    EXPECT_EQ(regexp::step(bounded, form.data()), bound == 2 ? 1 : 0) << "gives back no further";
  }
  regexp::locs = nullptr;
  compile("\\(a*\\)\\(b\\)");
  const std::string subject = "xaab";
  ASSERT_EQ(regexp::step(subject.c_str(), form.data()), 1);
  EXPECT_EQ(std::string(regexp::braslist[0], regexp::braelist[1]), "aab");
  EXPECT_EQ(regexp::braelist[0], regexp::braslist[1]);
}

TEST(RegexpStep, PatternsMadeToExplodeFindTheirMatchOrGiveUp) {
  const auto start = std::chrono::steady_clock::now();
  std::string manyStars;
  std::string manyClasses;
  for (int i = 0; i < 100; ++i) {
    manyStars += ".*";
    manyClasses += i < 13 ? "[^x]*" : "";
  }
  const std::string subject(30000, 'a');
  for (const std::string& pattern : {manyStars + "[xy]$", "a" + manyClasses + "[y]",
                                     std::string("a.\\{2,\\}a.\\{2,\\}a.\\{2,\\}a.\\{2,\\}[y]")}) {
    compile(pattern);
    EXPECT_EQ(marked(subject), subject) << pattern;
    EXPECT_FALSE(regexp::gaveUp()) << pattern;
    EXPECT_EQ(marked(subject + "y"), "<" + subject + "y>") << pattern;
  }
  compile(manyStars + "[xy]$");
  regexp::step(("y" + std::string(6'000'000, 'a')).c_str(), form.data());
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
    if (compile(pattern) == nullptr) {
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

}  // namespace
