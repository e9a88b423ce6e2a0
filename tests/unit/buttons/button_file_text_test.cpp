// What the bytes of a button file mean, and the bytes that a set becomes.

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

TEST(ButtonFile, TakesHeadersByTheirFirstWordAndPairsTheLinesBelow) {
  expectAll({{"# only\n\n \t\n#comments", ""},
             {":A\nl\nd\nm\ne\n:B\n", "+A{l=d;m=e;}+B{}"},
             {":A\r\nl\r\nd\r\n", "+A{l=d;}"},
             {":A\n \t x \t\r\r\n\t \tx\r\n", "+A{ x \t= \tx;}"},
             {":A\nl\n \r\nd\r ", "+A{l=d\r ;}"},
             {"l\nd\n:A\nl\n:MENU m\na\nb\nc\n:MENU n\n:A\n:COLLAPSED c\nl\nd",
              "+A{}+A{}-c{l=d;}*m{a=b;}*n{}"},
             {":A\nl\nd\n:\n:COLLAPSED\n:MENU\na\nb\n:\n:COLLAPSED", "+A{l=d;}+{}-{}+{}-{}*{a=b;}"},
             {":MENUS x\n:COLLAPSEDX\n:menu y\n", "+MENUS x{}+COLLAPSEDX{}+menu y{}"},
             {": a\n:COLLAPSED   b \n:MENU  c\t\n", "+ a{}-b {}*c\t{}"},
             {":COLLAPSED\tb\n:COLLAPSED \tc\n:MENU\td\n", "-\tb{}-\tc{}*\td{}"},
             {"\t :A\n\t :l\nd\n", "+:A{ :l=d;}"},
             {"\t :MENU m\n", "*m{}"},
             {":a|b||\n:COLLAPSED a|b\n:MENU |a\n:MENU|\n:|\n", "+a|b{}-a{}+MENU{}+{}*{}"}});
}

TEST(ButtonFile, SkipsCommentsByTheFirstWordOutsideAndByTheWholeLineInsideABody) {
  expectAll({{":Name # x\nl\nd\n", "+Name # x{l=d;}"},
             {":MENU a # b\n", "*a # b{}"},
             {":Na#me\nl\nd\n:B\nm # x\ne\nf\n:C # x", "+B{e=f;}"}});
}

// The word within a definition brings a separator that nobody wrote; this is intended.
TEST(ButtonFile, FindsSeparatorsByTheWordWhereverItStandsInAMenu) {
  expectAll({{":MENU m\nseparator\nDo it\ncommand\n", "*m{--;Do it=command;}"},
             {":MENU m\nSeparator\nSEPARATOR\nmy separators\na\nb\nseparator\n", "*m{--;--;a=b;}"},
             {":MENU m\nFoo\na separator b\nBar\ncmd\n", "*m{Foo=a separator b;--;Bar=cmd;}"},
             {":MENU m\nFoo\na separator b\n:A\n", "+A{}*m{Foo=a separator b;}"},
             {":MENU m\nFoo\nseparator\nseparator\nBar\ncmd\n", "*m{Foo=separator;--;Bar=cmd;}"},
             {":A\nseparator\nseparator\n", "+A{separator=separator;}"}});
}

// The rest of a line behind a NUL is lost, to where the read ends.
TEST(ButtonFile, ReadsALongLineAsSeveralAndEndsALineAtANulByte) {
  expectAll({{":A\n" + xs(999) + "\nd\n", "+A{" + xs(999) + "=d;}"},
             {":A\n" + xs(1000) + "\nd\ne\n", "+A{" + xs(999) + "=x;d=e;}"},
             {":A\n" + xs(998) + "\r\nd\n", "+A{" + xs(998) + "=d;}"},
             {":A\n" + xs(1998), "+A{" + xs(999) + "=" + xs(999) + ";}"},
             {":" + xs(998) + ":B\nl\nd\n", "+" + xs(998) + "{}+B{l=d;}"},
             {":A\0B\nl\0x\n\0lost\nd\r\0x\n"s, "+A{l=d;}"},
             {":A\nl\0"s + xs(997) + "d\n", "+A{l=d;}"},
             {"\0\xFF\x80\n\xFE:\n\n\0"s, ""}});
}

TEST(ButtonFile, IsWrittenGroupsFirstAndKeepsThemAll) {
  const ButtonSet set{
      {{"A", true, {{"l", "d"}, {"m ", "\xFF\t"}}}, {"", true, {}}, {"C d", false, {}}},
      {{"M", {{"a", "b"}, MenuEntry::separator(), {"c", "Separate"}}}, {"", {}}}};
  EXPECT_EQ(formatButtonSet(set),
            ":A\nl\nd\nm \n\xFF\t\n:\n:COLLAPSED C d\n"
            ":MENU M\na\nb\nseparator\nseparator\nc\nSeparate\n:MENU \n");
  EXPECT_EQ(readButtonFile(std::string_view(formatButtonSet(set))), set);
}

TEST(ButtonFile, IsWrittenWithWhatTheReaderTakesForSomethingElse) {
  const ButtonSet set{{{"A", true, {{"a#", "#b"}, {"  c", ""}, {":d", ":MENU e"}}},
                       {"MENU x|y|", true, {}},
                       {"x|#y", false, {}}},
                      {{"M|", {{"a", "separator"}, {"separator", "a"}, {"a", "Separator"}}}}};
  EXPECT_EQ(formatButtonSet(set),
            ":A\na#\n#b\n  c\n\n:d\n:MENU e\n:MENU x|y|\n:COLLAPSED x|#y\n"
            ":MENU M|\nseparator\nseparator\nseparator\na\na\nSeparator\n");
}

}  // namespace
