// The compiled form, code by code, and the errors of patterns.

#include "support/regular_expression.h"

#include <gtest/gtest.h>
#include <string>

namespace {

/// The members of a class, or what is left out of it when that is less.
std::string members(const char* table, int bytes) {
  std::string in;
  std::string out;
  for (int c = 0; c < 8 * bytes; ++c) {
    const bool isMember = (table[c / 8] >> c % 8 & 1) != 0;
    (isMember ? in : out) += c == 0 ? '0' : static_cast<char>(c);
  }
  return in.size() <= out.size() ? "[" + in + "]" : "[^" + out + "]";
}

/// The form of a pattern in words: each code with its operands, characters as they are; or the
/// error. Nothing behind `room` is written.
std::string compiled(const std::string& pattern, std::size_t room = 256, int endChar = 0) {
  const std::string guard(40, '~');
  std::string buffer = std::string(room, '\0') + guard;
  const char* end = regexp::compile(pattern.c_str(), buffer.data(), buffer.data() + room, endChar);
  EXPECT_EQ(buffer.substr(room), guard) << pattern;
  if (end == nullptr) {
    return "error " + std::to_string(regexp::compileError());
  }
  EXPECT_EQ(regexp::compileError(), regexp::kNoError) << pattern;
  const auto number = [](char c) { return std::to_string(static_cast<unsigned char>(c)); };
  std::string words = regexp::circf ? "^ " : "";
  for (const char* p = buffer.data(); p < end;) {
    const char code = *p++;
    const int kind = code & ~3;
    words += number(code);
    if (kind == 4) {
      words += *p++;
    } else if (const int table = kind == 16 ? 32 : 16; kind == 12 || kind == 16 || kind == 40) {
      words += members(p, table);
      p += table;
    } else if (code == 2 || kind == 24 || kind == 36) {
      words += "(" + number(*p++) + ")";
    }
    if ((code & 3) == 3) {
      words += "{" + number(p[0]) + "," + number(p[1]) + "}";
      p += 2;
    }
    words += p == end ? "" : " ";
  }
  return words;
}

TEST(RegexpCompile, GivesEachItemItsCodeAndOperandsOrTellsTheError) {
  // Special characters out of place stand for themselves, a later repetition replaces the earlier
  // one. A class is a table of its members: negated, of those that do not match and NUL, wide where
  // one has eight bits.
  const char* const rows[] = {
      "ab\xE4  4a 4b 4\xE4 22",
      ".a*.*a\\{3\\}.\\{3,\\}.\\{0,254\\}  8 5a 9 7a{3,3} 11{3,255} 11{0,254} 22",
      "\\(a\\(b\\)\\)\\2\\1*\\1\\{2,5\\}  2(0) 4a 2(1) 4b 24(1) 24(0) 36(1) 37(0) 39(0){2,5} 22",
      "\\.\\*\\[\\\\\\$\\^\\n\\0+?|  4. 4* 4[ 4\\ 4$ 4^ 4\n 40 4+ 4? 4| 22",
      "**\\(*a\\)*\\(a\\)\\{2\\}  5* 2(0) 4* 4a 24(0) 4* 2(1) 4a 24(1) 4{ 42 4} 22",
      "\\{a^$\\(^a$\\)b$  4{ 4a 4^ 4$ 2(0) 4^ 4a 4$ 24(0) 4b 20 22",
      "a*\\{2\\}b\\{2\\}\\{3,\\}*c  7a{2,2} 5b 4c 22",
      "^a  ^ 4a 22",
      "^*^  ^ 4* 4^ 22",
      "[]a][a-][-a][a^][\\n][]-_]  12[]a] 12[-a] 12[-a] 12[^a] 12[\\n] 12[]^_] 22",
      "[a-c-e]*[c-a]\\{1,2\\}  13[abcde] 15[ac]{1,2} 22",
      "[^a][^]^]*  40[0a] 41[0]^] 22",
      "[a\xE4][}-\x81][^a\xE4]  16[a\xE4] 16[}~\x7F\x80\x81] 16[^0a\xE4] 22"};
  for (const std::string row : rows) {
    const std::string pattern = row.substr(0, row.find("  "));
    EXPECT_EQ(pattern + "  " + compiled(pattern), row);
  }
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
      EXPECT_EQ(compiled(pattern), "error " + std::to_string(code)) << pattern;
    }
  }
}

TEST(RegexpCompile, NeverWritesPastItsBuffer) {
  EXPECT_EQ(compiled(std::string(128, 'a')), "error 50");
  EXPECT_EQ(compiled(std::string(100000, '.')), "error 50");
  const std::pair<std::string, std::size_t> rows[] = {{std::string(127, 'a'), 255},
                                                      {"a", 3},
                                                      {"[a]", 18},
                                                      {"[\xE4]", 34},
                                                      {"a\\{1,2\\}", 5},
                                                      {"\\(\\)\\1", 7},
                                                      {"$", 2},
                                                      {"[^a]*.$", 20}};
  for (const auto& [pattern, size] : rows) {
    for (std::size_t room = 0; room < size; ++room) {
      EXPECT_EQ(compiled(pattern, room), "error 50") << pattern << " in " << room;
    }
    EXPECT_EQ(compiled(pattern, size).rfind("error", 0), std::string::npos) << pattern;
  }
}

TEST(RegexpCompile, AnEmptyPatternKeepsTheEarlierOneUnlessThatWasAnError) {
  EXPECT_EQ(compiled("a\\/b/", 256, '/'), "4a 4/ 4b 22") << "it ends at its end character";
  std::string buffer(256, '\0');
  const auto compile = [&](const char* pattern) {
    char* end = regexp::compile(pattern, buffer.data(), buffer.data() + buffer.size(), '/');
    return end == nullptr ? std::string() : std::string(buffer.data(), end);
  };
  EXPECT_EQ(compile("\\(a[b]\\{2,3\\}\\).$[/"), "");
  EXPECT_EQ(compile(""), "");
  const std::string form = compile("^\\(\\(a\\)[b]\\{2,3\\}[\xE4]*\\)\\2.$/ignored");
  ASSERT_NE(form, "");
  EXPECT_EQ(compile("/"), form);
  EXPECT_EQ(compile("\n"), form);
  EXPECT_TRUE(regexp::circf);
}

}  // namespace
