#include "app/session.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandLineOptions, AreFoundAnywhereInTheLine) {
  struct Row {
    const char* line;
    const char* option;
    int position;
  };
  // Intended: a path or another option's value counts like an option.
  for (const Row& row :
       {Row{"nelkvui -v", "v", 8}, Row{"/opt/a-h/nelkvui", "h", 6}, Row{"nelkvui -t/x-v", "v", 12},
        Row{"nelkvui -post", "post", 8}, Row{"nelkvui -post -p", "p", 8},
        Row{"nelkvui -V", "v", -1}, Row{"nelkvui v", "v", -1}, Row{"nelkvui -pos", "post", -1},
        Row{"", "v", -1}, Row{"-", "v", -1}}) {
    SCOPED_TRACE(row.line);
    CommandLineOptions options(row.line);
    EXPECT_EQ(options.position(), -1);
    EXPECT_EQ(options.hasOption(row.option), row.position >= 0 ? 1 : 0);
    EXPECT_EQ(options.position(), row.position);
  }
}

TEST(CommandLineOptions, PositionIsThatOfTheLastSearch) {
  CommandLineOptions options("nelkvui -a -b");
  options.hasOptionChar('b');
  EXPECT_EQ(options.position(), 11);
  options.hasOptionChar('a');
  EXPECT_EQ(options.position(), 8);
  options.hasOptionChar('c');
  EXPECT_EQ(options.position(), -1);
}

TEST(CommandLineOptions, ValueReachesToTheNextOptionAndLosesItsEndAtTheEndOfTheLine) {
  struct Row {
    const char* line;
    const char* value;
  };
  for (const Row& row :
       {Row{"nelkvui -t/a/b -post", "/a/b"}, Row{"nelkvui -t  /a b   -post", "/a b"},
        // Intended: the last character is taken for the end of the line.
        Row{"nelkvui -t/home/x", "/home/"}, Row{"nelkvui -t", ""}, Row{"nelkvui -tx", ""},
        Row{"nelkvui -t -post", ""}, Row{"nelkvui -t a-b -", "a-b"}, Row{"-t", ""}}) {
    std::string value = "unset";
    EXPECT_EQ(CommandLineOptions(row.line).getOptionValue('t', value), 1) << row.line;
    EXPECT_EQ(value, row.value) << row.line;
  }
  std::string untouched = "unset";
  EXPECT_EQ(CommandLineOptions("nelkvui -post").getOptionValue('x', untouched), 0);
  EXPECT_EQ(untouched, "unset");
}

TEST(CommandLineOptions, AreMadeByTheFirstRequest) {
  CommandLineOptions& first = CommandLineOptions::instance("nelkvui -v");
  EXPECT_EQ(&CommandLineOptions::instance(""), &first);
  EXPECT_EQ(CommandLineOptions::instance("").hasOptionChar('v'), 1);
}

}  // namespace
