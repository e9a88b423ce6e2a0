// What the bytes of a button file mean.

#include "button_file/button_file_reader.h"

#include <gtest/gtest.h>

#include "tests/unit/buttons/button_set_text.h"

namespace {

using std::string_literals::operator""s;

struct Case {
  std::string bytes;
  std::string set;
};

void expectAll(const std::vector<Case>& cases) {
  for (const Case& row : cases) {
    EXPECT_EQ(show(readButtonFile(std::string_view(row.bytes))), row.set) << row.bytes;
  }
}

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

TEST(ButtonFileReader, StripsEachEndOfALineInOnePassOnly) {
  expectAll({
      {":A\n \t x \t\r\r\n\t \tx\r\n", "+A{ x \t= \tx;}"},
      {":A\nl\n \r\nd\r \n", "+A{l=d\r ;}"},
  });
}

TEST(ButtonFileReader, TakesHeadersByTheirFirstWordAndPairsTheLinesBelow) {
  expectAll({
      {"", ""},
      {"# only\n\n \t\n#comments", ""},
      {":A\nl\nd\nm\ne\n:B\n", "+A{l=d;m=e;}+B{}"},
      {":A\r\nl\r\nd\r\n", "+A{l=d;}"},
      {":A\nl\nd", "+A{l=d;}"},
      {":A\n:MENU m\na\nb\n:A\n:COLLAPSED c\nl\nd\n", "+A{}+A{}-c{l=d;}*m{a=b;}"},
      // A header word alone, at the start, behind a body, at the end.
      {":\n:COLLAPSED\n:MENU\n:", "+{}-{}+{}*{}"},
      {":A\nl\nd\n:MENU\na\nb\n:COLLAPSED", "+A{l=d;}-{}*{a=b;}"},
      {":MENUS x\n:COLLAPSEDX\n:menu y\n", "+MENUS x{}+COLLAPSEDX{}+menu y{}"},
      // Blanks and tabs of names.
      {": a\n:COLLAPSED   b \n:MENU  c\t\n", "+ a{}-b {}*c\t{}"},
      {":COLLAPSED\tb\n:COLLAPSED \tc\n:MENU\td\n", "-\tb{}-\tc{}*\td{}"},
      {"\t :A\n", "+:A{}"},
      {"\t :MENU m\n", "*m{}"},
      {":A\n\t :l\nd\n", "+A{ :l=d;}"},
      // Bars: the inner ones stay in an expanded group, all else is cut.
      {":a|b||\n:COLLAPSED a|b\n:MENU |a\n:MENU|\n", "+a|b{}-a{}+MENU{}*{}"},
      {":|\n", "+{}"},
  });
}

TEST(ButtonFileReader, DropsWhatBelongsToNothing) {
  expectAll({
      {"l\nd\n:A\n", "+A{}"},
      {":A\nl\n", "+A{}"},
      {":MENU m\na\n:MENU n\nb\nc\n", "*m{}*n{b=c;}"},
  });
}

TEST(ButtonFileReader, SkipsCommentsByTheFirstWordOutsideAndByTheWholeLineInsideABody) {
  expectAll({
      {":Name # x\nl\nd\n", "+Name # x{l=d;}"},
      {":MENU a # b\n", "*a # b{}"},
      {":Na#me\nl\nd\n:B\n", "+B{}"},
      {":A\nl\nd\n:B # x\nm\ne\n", "+A{l=d;m=e;}"},
      // The last line of a file is no header when its body has skipped it.
      {":A\nl\nd\n:B # x", "+A{l=d;}"},
  });
}

TEST(ButtonFileReader, FindsSeparatorsByTheWordWhereverItStandsInAMenu) {
  expectAll({
      {":MENU m\nseparator\nDo it\ncommand\n", "*m{--;Do it=command;}"},
      {":MENU m\nSeparator\nSEPARATOR\n", "*m{--;}"},
      {":MENU m\nseparator\nseparator\nseparator\na\nb\n", "*m{--;--;a=b;}"},
      {":MENU m\na\nb\nseparator\n", "*m{a=b;}"},
      // The word within a definition brings a separator that nobody wrote; this is intended.
      {":MENU m\nFoo\na separator b\nBar\ncmd\n", "*m{Foo=a separator b;--;Bar=cmd;}"},
      {":MENU m\nFoo\na separator b\n:A\n", "+A{}*m{Foo=a separator b;}"},
      {":MENU m\nFoo\nseparator\nseparator\nBar\ncmd\n", "*m{Foo=separator;--;Bar=cmd;}"},
      {":MENU m\nSeparator\nx\ny\n", "*m{--;x=y;}"},
      {":A\nseparator\nseparator\n", "+A{separator=separator;}"},
  });
}

TEST(ButtonFileReader, ReadsALongLineAsSeveral) {
  std::string pairs;
  for (int i = 0; i < 5; ++i) {
    pairs += xs(999) + '=' + xs(999) + ';';
  }
  expectAll({
      {":A\n" + xs(999) + "\nd\n", "+A{" + xs(999) + "=d;}"},
      {":A\n" + xs(1000) + "\nd\ne\n", "+A{" + xs(999) + "=x;d=e;}"},
      {":A\n" + xs(998) + "\r\nd\n", "+A{" + xs(998) + "=d;}"},
      {":A\n" + xs(10000), "+A{" + pairs + "}"},
      {":" + xs(998) + ":B\nl\nd\n", "+" + xs(998) + "{}+B{l=d;}"},
  });
}

TEST(ButtonFileReader, EndsALineAtANulByte) {
  expectAll({
      {":A\0B\nl\0x\nd\n"s, "+A{l=d;}"},
      {":A\nl\n\0lost\nd\n"s, "+A{l=d;}"},
      {":A\nl\r\0x\nd\n"s, "+A{l=d;}"},
      // The lost rest ends where the read ends.
      {":A\n" + "l\0"s + xs(997) + "d\n", "+A{l=d;}"},
      {"\0\xFF\x80\n\xFE:\n\n\0"s, ""},
  });
}

}  // namespace
