#include "textarea/command_queue.h"

#include <gmock/gmock.h>

namespace {

using Pieces = std::deque<std::string>;

TEST(CommandText, IsCutAtSemicolonsOutsideQuotesAndOfSeveralLinesMadeOne) {
  const std::pair<const char*, Pieces> rows[] = {{"print \"a;b\";next", {"print \"a;b\"", "next"}},
                                                 {" a ; b ", {" a ", " b "}},
                                                 {"\"open;quote;s", {"\"open;quote;s"}},
                                                 {";", {""}},
                                                 {";;a", {"", "", "a"}},
                                                 {"a;", {"a"}},
                                                 {"", {}}};
  for (const auto& [line, pieces] : rows) {
    EXPECT_EQ(splitCommandLine(line), pieces) << line;
  }
  EXPECT_EQ(joinCommandLines("a\r\nb c\n\nd\n"), "a;b c;;d");
  EXPECT_EQ(joinCommandLines("print \"a\nb\"\nc"), "print \"a\";b\"\";c");
  EXPECT_EQ(joinCommandLines("a\"\nb", "print \""), "a\";b");
  EXPECT_EQ(joinCommandLines("\"a\n\"b\"\nc"), "\"a\";\"b\";c");
}

}  // namespace
