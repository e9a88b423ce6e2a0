// The bytes that a set becomes, and the set that these bytes become.

#include "button_file/button_set.h"

#include <gtest/gtest.h>

#include "button_file/button_file_reader.h"
#include "tests/unit/buttons/button_set_text.h"

namespace {

TEST(ButtonFileWriter, WritesGroupsThenMenusAndKeepsThemAll) {
  const ButtonSet set{
      {{"A", true, {{"l", "d"}, {"m ", "\xFF\t"}}}, {"", true, {}}, {"C d", false, {}}},
      {{"M", {{"a", "b"}, MenuEntry::separator(), {"c", "Separate"}}}, {"", {}}}};
  EXPECT_EQ(formatButtonSet(set),
            ":A\nl\nd\nm \n\xFF\t\n:\n:COLLAPSED C d\n"
            ":MENU M\na\nb\nseparator\nseparator\nc\nSeparate\n:MENU \n");
  EXPECT_EQ(readButtonFile(std::string_view(formatButtonSet(set))), set);
}

// Each row is a property of the format that files depend on.
TEST(ButtonFileWriter, WritesWhatTheReaderTakesForSomethingElse) {
  const auto group = [](std::list<Button> buttons) {
    return ButtonSet{{{"A", true, std::move(buttons)}}, {}};
  };
  const auto named = [](const char* name, bool expanded = true) {
    return ButtonSet{{{"A", true, {}}, {name, expanded, {{"l", "d"}}}}, {}};
  };
  const auto menu = [](std::vector<MenuEntry> entries) {
    return ButtonSet{{}, {{"M", std::move(entries)}}};
  };
  const struct {
    ButtonSet set;
    const char* bytes;
    const char* reloaded;
  } cases[] = {
      {group({{"a#", "b"}, {"c", "d"}}), ":A\na#\nb\nc\nd\n", "+A{b=c;}"},
      {group({{"a", "#b"}, {"c", "d"}}), ":A\na\n#b\nc\nd\n", "+A{a=c;}"},
      {group({{"a", ""}, {"c", "d"}}), ":A\na\n\nc\nd\n", "+A{a=c;}"},
      {group({{":a", "b"}, {"c", "d"}}), ":A\n:a\nb\nc\nd\n", "+A{}+a{b=c;}"},
      {group({{"a", ":MENU b"}, {"c", "d"}}), ":A\na\n:MENU b\nc\nd\n", "+A{}*b{c=d;}"},
      {group({{"  a", "\tb"}}), ":A\n  a\n\tb\n", "+A{a=b;}"},
      {named("MENU"), ":A\n:MENU\nl\nd\n", "+A{}*{l=d;}"},
      {named("MENU x"), ":A\n:MENU x\nl\nd\n", "+A{}*x{l=d;}"},
      {named("COLLAPSED"), ":A\n:COLLAPSED\nl\nd\n", "+A{}-{l=d;}"},
      {named("COLLAPSED x"), ":A\n:COLLAPSED x\nl\nd\n", "+A{}-x{l=d;}"},
      {named("x#"), ":A\n:x#\nl\nd\n", "+A{l=d;}"},
      {named("x|y|"), ":A\n:x|y|\nl\nd\n", "+A{}+x|y{l=d;}"},
      {named("x|y", false), ":A\n:COLLAPSED x|y\nl\nd\n", "+A{}-x{l=d;}"},
      {menu({{"a", "separator"}}), ":MENU M\nseparator\nseparator\n", "*M{--;}"},
      {menu({{"separator", "a"}}), ":MENU M\nseparator\na\n", "*M{--;}"},
      {menu({{"a", "Separator"}, {"c", "d"}}), ":MENU M\na\nSeparator\nc\nd\n",
       "*M{a=Separator;--;c=d;}"},
  };
  for (const auto& row : cases) {
    const std::string bytes = formatButtonSet(row.set);
    EXPECT_EQ(bytes, row.bytes);
    EXPECT_EQ(show(readButtonFile(std::string_view(bytes))), row.reloaded) << bytes;
  }
}

}  // namespace
