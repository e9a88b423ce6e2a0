// What the bytes of a button file mean, and the bytes that a set becomes.

#include <gtest/gtest.h>

#include "button_file/button_file_reader.h"

namespace {

using std::string_literals::operator""s;

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

// Much of this looks careless, but files depend on it.
TEST(ButtonFile, MeansWhatItIsSavedAs) {
  const std::pair<std::string, std::string> rows[] = {
      // Headers by their first word, and pairs of lines below.
      {"# only\n\n \t\n#comments", ""},
      {":A\nl\nd\nm\ne\n:B\n", ":A\nl\nd\nm\ne\n:B\n"},
      {":A\n \t x \t\r\r\n\t \tx\r\n", ":A\n x \t\n \tx\n"},
      {":A\nl\n \r\nd\r ", ":A\nl\nd\r \n"},
      {"l\nd\n:A\nl\n:MENU m\na\nb\nc\n:MENU n\n:A\n:COLLAPSED c\nl\nd",
       ":A\n:A\n:COLLAPSED c\nl\nd\n:MENU m\na\nb\n:MENU n\n"},
      {":A\nl\nd\n:\n:COLLAPSED\n:MENU\na\nb\n:\n:COLLAPSED",
       ":A\nl\nd\n:\n:COLLAPSED \n:\n:COLLAPSED \n:MENU \na\nb\n"},
      {":MENUS x\n:COLLAPSEDX\n:menu y\n", ":MENUS x\n:COLLAPSEDX\n:menu y\n"},
      {": a\n:COLLAPSED   b \n:MENU  c\t\n", ": a\n:COLLAPSED b \n:MENU c\t\n"},
      {":COLLAPSED\tb\n:COLLAPSED \tc\n:MENU\td\n", ":COLLAPSED \tb\n:COLLAPSED \tc\n:MENU \td\n"},
      {"\t :A\n\t :l\nd\n", "::A\n :l\nd\n"},
      {"\t :MENU m\n", ":MENU m\n"},
      {":a|b||\n:COLLAPSED a|b\n:MENU |a\n:MENU|\n:|\n", ":a|b\n:COLLAPSED a\n:MENU\n:\n:MENU \n"},
      // Comments by the first word outside and by the whole line inside of a body.
      {":Name # x\nl\nd\n:MENU a # b\n", ":Name # x\nl\nd\n"},
      {":Na#me\nl\nd\n:B\nm # x\ne\nf\n:C # x", ":B\ne\nf\n"},
      {":MENU a # b\n", ":MENU a # b\n"},
      // Separators wherever the word stands in a menu, also one that nobody wrote.
      {":MENU m\nseparator\nDo it\nc\n", ":MENU m\nseparator\nseparator\nDo it\nc\n"},
      {":MENU m\nSeparator\nSEPARATOR\nmy separators\na\nb\nseparator\n",
       ":MENU m\nseparator\nseparator\nseparator\nseparator\na\nb\n"},
      {":MENU m\nFoo\na separator b\nBar\nc\n",
       ":MENU m\nFoo\na separator b\nseparator\nseparator\nBar\nc\n"},
      {":MENU m\nFoo\nseparator\nBar\nSeparate\n",
       ":MENU m\nseparator\nseparator\nseparator\nseparator\nBar\nSeparate\n"},
      {":MENU m\nFoo\na separator b\n:A\n", ":A\n:MENU m\nFoo\na separator b\n"},
      {":A\nseparator\nl\nd\n", ":A\nseparator\nl\n"},
      // A line of 1000 characters or more is several; a NUL byte ends one, to where the read ends.
      {":A\n" + xs(999) + "\nd\n", ":A\n" + xs(999) + "\nd\n"},
      {":A\n" + xs(1000) + "\nd\ne\n", ":A\n" + xs(999) + "\nx\nd\ne\n"},
      {":A\n" + xs(998) + "\r\nd\n", ":A\n" + xs(998) + "\nd\n"},
      {":" + xs(998) + ":B\nl\nd\n", ":" + xs(998) + "\n:B\nl\nd\n"},
      {":A\0B\nl\0x\n\0lost\nd\r\0x\n"s, ":A\nl\nd\n"},
      {":A\nl\0"s + xs(997) + "d\n", ":A\nl\nd\n"},
      {"\0\xFF\x80\n\xFE:\n\n\0"s, ""}};
  for (const auto& [bytes, saved] : rows) {
    EXPECT_EQ(formatButtonSet(readButtonFile(std::string_view(bytes))), saved) << bytes;
  }
}

}  // namespace
