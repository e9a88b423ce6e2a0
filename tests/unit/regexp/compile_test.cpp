// The compiled form, byte for byte, and the errors of patterns.

#include "support/regular_expression.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<int>;

constexpr std::size_t kBufferSize = 256;
constexpr char kUntouched = '\x7E';

// The compiled form of a pattern, empty for an error. The buffer has a guard behind it.
Bytes compiled(const std::string& pattern, std::size_t room = kBufferSize, int endChar = 0) {
  std::string buffer(room, '\0');
  buffer += std::string(40, kUntouched);
  char* end = regexp::compile(pattern.c_str(), buffer.data(), buffer.data() + room, endChar);
  EXPECT_EQ(buffer.substr(room), std::string(40, kUntouched)) << pattern;
  EXPECT_EQ(end == nullptr, regexp::compileError() != regexp::kNoError) << pattern;
  Bytes bytes;
  for (const char* p = buffer.data(); p < end; ++p) {
    bytes.push_back(static_cast<unsigned char>(*p));
  }
  return bytes;
}

int errorOf(const std::string& pattern) {
  EXPECT_EQ(compiled(pattern), Bytes());
  return regexp::compileError();
}

// A class: its code, the table with these members, the end of the pattern.
Bytes classForm(int code, int tableSize, const Bytes& members) {
  Bytes bytes(static_cast<std::size_t>(tableSize) + 2, 0);
  bytes.front() = code;
  bytes.back() = 22;
  for (const int c : members) {
    bytes[1 + static_cast<std::size_t>(c) / 8] |= 1 << c % 8;
  }
  return bytes;
}

Bytes allBut(const Bytes& left) {
  Bytes members;
  for (int c = 0; c < 256; ++c) {
    if (std::find(left.begin(), left.end(), c) == left.end()) {
      members.push_back(c);
    }
  }
  return members;
}

struct FormCase {
  const char* pattern;
  Bytes form;
};

TEST(RegexpCompile, GivesEachItemItsCodeAndOperands) {
  const FormCase cases[] = {
      {"ab", {4, 'a', 4, 'b', 22}},
      {"\xE4", {4, 0xE4, 22}},
      {".a*.*", {8, 5, 'a', 9, 22}},
      {"a$", {4, 'a', 20, 22}},
      {"\\(a\\(b\\)\\)\\2\\1*", {2, 0, 4, 'a', 2, 1, 4, 'b', 24, 1, 24, 0, 36, 1, 37, 0, 22}},
      {"a\\{3\\}", {7, 'a', 3, 3, 22}},
      {"a\\{3,\\}.", {7, 'a', 3, 255, 8, 22}},
      {".\\{0,254\\}", {11, 0, 254, 22}},
      {"\\(a\\)\\1\\{2,5\\}", {2, 0, 4, 'a', 24, 0, 39, 0, 2, 5, 22}},
      {"\\.\\*\\[\\\\\\$\\^\\n\\0",
       {4, '.', 4, '*', 4, '[', 4, '\\', 4, '$', 4, '^', 4, '\n', 4, '0', 22}},
      {"a+b?|", {4, 'a', 4, '+', 4, 'b', 4, '?', 4, '|', 22}},
      // Special characters out of place stand for themselves.
      {"*a", {4, '*', 4, 'a', 22}},
      {"**", {5, '*', 22}},
      {"\\(*a\\)*", {2, 0, 4, '*', 4, 'a', 24, 0, 4, '*', 22}},
      {"\\{2\\}", {4, '{', 4, '2', 4, '}', 22}},
      {"\\(a\\)\\{2\\}", {2, 0, 4, 'a', 24, 0, 4, '{', 4, '2', 4, '}', 22}},
      {"a^$b", {4, 'a', 4, '^', 4, '$', 4, 'b', 22}},
      {"\\(^a$\\)", {2, 0, 4, '^', 4, 'a', 4, '$', 24, 0, 22}},
      // A later repetition replaces the earlier one.
      {"a**", {5, 'a', 22}},
      {"a*\\{2\\}", {7, 'a', 2, 2, 22}},
      {"a\\{2\\}\\{3,\\}*b", {5, 'a', 4, 'b', 22}},
      // The anchor at the start is noted beside the form.
      {"^a", {4, 'a', 22}},
      {"^", {22}},
      {"^*^", {4, '*', 4, '^', 22}},
  };
  for (const FormCase& c : cases) {
    EXPECT_EQ(compiled(c.pattern), c.form) << c.pattern;
    EXPECT_EQ(regexp::circf, *c.pattern == '^') << c.pattern;
  }
}

TEST(RegexpCompile, AClassIsATableOfItsMembers) {
  EXPECT_EQ(compiled("[ac]"), classForm(12, 16, {'a', 'c'}));
  EXPECT_EQ(compiled("[]a]"), classForm(12, 16, {']', 'a'}));
  EXPECT_EQ(compiled("[a-]"), classForm(12, 16, {'a', '-'}));
  EXPECT_EQ(compiled("[-a]"), classForm(12, 16, {'a', '-'}));
  EXPECT_EQ(compiled("[a^]"), classForm(12, 16, {'a', '^'}));
  EXPECT_EQ(compiled("[\\n]"), classForm(12, 16, {'\\', 'n'}));
  EXPECT_EQ(compiled("[a-c-e]"), classForm(12, 16, {'a', 'b', 'c', 'd', 'e'}));
  EXPECT_EQ(compiled("[c-a]"), classForm(12, 16, {'a', 'c'}));
  EXPECT_EQ(compiled("[]-_]"), classForm(12, 16, {']', '^', '_'}));
  EXPECT_EQ(compiled("[ab]*").front(), 13);
  EXPECT_EQ(compiled("[ab]\\{1,2\\}").front(), 15);
}

TEST(RegexpCompile, ANegatedNarrowClassNamesWhatDoesNotMatchAndNulWithIt) {
  EXPECT_EQ(compiled("[^a]"), classForm(40, 16, {0, 'a'}));
  EXPECT_EQ(compiled("[^]^]"), classForm(40, 16, {0, ']', '^'}));
  EXPECT_EQ(compiled("[^a]*").front(), 41);
}

TEST(RegexpCompile, AnEightBitMemberWidensTheClass) {
  EXPECT_EQ(compiled("[a\xE4]"), classForm(16, 32, {'a', 0xE4}));
  EXPECT_EQ(compiled("[}-\x81]"), classForm(16, 32, {'}', '~', 0x7F, 0x80, 0x81}));
  EXPECT_EQ(compiled("[^a\xE4]"), classForm(16, 32, allBut({0, 'a', 0xE4})));
}

TEST(RegexpCompile, TellsEachErrorByItsCode) {
  const struct {
    int code;
    std::vector<const char*> patterns;
  } cases[] = {
      {11, {"a\\{255\\}", "a\\{99999999999\\}", "a\\{1,255\\}"}},
      {16, {"a\\{\\}", "a\\{,2\\}", "a\\{2", "a\\{2,", "a\\{1,,\\}", "a\\{2x\\}"}},
      {25, {"\\1", "\\(a\\1\\)", "\\(\\(a\\)\\1\\)", "\\(a\\)\\2"}},
      {36, {"a\\\n", "a\nb", "a$\n", "a\\"}},
      {41, {"", "\nabc"}},
      {42, {"\\(a", "a\\)", "\\(a\\)\\)"}},
      {44, {"a\\{1,2,3\\}", "a\\{1,2,\\}"}},
      {45, {"a\\{2\\", "a\\{2\\x", "a\\{2,\\)"}},
      {46, {"a\\{3,2\\}"}},
      {49, {"[", "[^", "[]", "[^]", "[a\n]", "[a-", "[a-\n]", "a[\xE4"}},
  };
  for (const auto& c : cases) {
    for (const char* pattern : c.patterns) {
      EXPECT_EQ(errorOf(pattern), c.code) << pattern;
    }
  }
}

TEST(RegexpCompile, HasRoomForNineGroups) {
  std::string pattern;
  for (int i = 0; i < 9; ++i) {
    pattern += "\\(a\\)";
  }
  EXPECT_EQ(compiled(pattern + "\\9").size(), 9 * 6 + 3U);
  EXPECT_EQ(errorOf(pattern + "\\(a\\)"), 43);
}

TEST(RegexpCompile, NeverWritesPastItsBuffer) {
  const std::string longest(127, 'a');
  EXPECT_EQ(compiled(longest).size(), 255U);
  EXPECT_EQ(errorOf(longest + "a"), 50);
  EXPECT_EQ(errorOf(std::string(100000, '.')), 50);
  const struct {
    const char* pattern;
    std::size_t size;
  } cases[] = {{"a", 3},         {"[a]", 18}, {"[\xE4]", 34},  {"a\\{1,2\\}", 5},
               {"\\(\\)\\1", 7}, {"$", 2},    {"[^a]*.$", 20}, {"^", 1}};
  for (const auto& c : cases) {
    for (std::size_t room = 0; room < c.size; ++room) {
      EXPECT_EQ(compiled(c.pattern, room), Bytes()) << c.pattern << " in " << room;
      EXPECT_EQ(regexp::compileError(), regexp::kPatternTooLong);
    }
    EXPECT_EQ(compiled(c.pattern, c.size).size(), c.size) << c.pattern;
  }
}

TEST(RegexpCompile, AnEmptyPatternKeepsTheEarlierOneUnlessThatWasAnError) {
  std::string buffer(kBufferSize, '\0');
  char* begin = buffer.data();
  char* limit = begin + buffer.size();
  char* end = regexp::compile("\\(a[b]\\{2,3\\}\\).$[", begin, limit, '[');
  EXPECT_EQ(regexp::compileError(), 42) << "the pattern ends at its end character";
  EXPECT_EQ(regexp::compile("", begin, limit, 0), nullptr);

  end = regexp::compile("^\\(a[b]\\{2,3\\}[\xE4]*\\).$/ignored", begin, limit, '/');
  ASSERT_NE(end, nullptr);
  const std::string form(begin, end);
  EXPECT_EQ(regexp::compile("/", begin, limit, '/'), end);
  EXPECT_EQ(regexp::compile("\n", begin, limit, 0), end);
  EXPECT_EQ(std::string(begin, end), form);
  EXPECT_TRUE(regexp::circf);
  EXPECT_EQ(compiled("a\\/b/", kBufferSize, '/'), Bytes({4, 'a', 4, '/', 4, 'b', 22}));
}

}  // namespace
