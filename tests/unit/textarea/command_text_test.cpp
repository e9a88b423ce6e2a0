#include "textarea/command_queue.h"

#include <gmock/gmock.h>

namespace {

using Pieces = std::deque<std::string>;

TEST(CommandText, IsCutAtSemicolonsOutsideQuotesAndKeepsAllElse) {
  const std::string longPiece(5000, 'x');
  const std::pair<std::string, Pieces> rows[] = {
      {"list", {"list"}},
      {"a;b;c", {"a", "b", "c"}},
      {"print \"a;b\";next", {"print \"a;b\"", "next"}},
      {" a ; b ", {" a ", " b "}},
      {"\"open;quote;s", {"\"open;quote;s"}},
      {";", {""}},
      {";;a", {"", "", "a"}},
      {"a;", {"a"}},
      {"", {}},
      {longPiece + ";y", {longPiece, "y"}},
  };
  for (const auto& [line, pieces] : rows) {
    EXPECT_EQ(splitCommandLine(line), pieces) << line;
  }
}

TEST(CommandText, SeveralLinesBecomePiecesOfOne) {
  EXPECT_EQ(joinCommandLines("a\r\nb c\n\nd\n"), "a;b c;;d");
  EXPECT_EQ(joinCommandLines("print \"a\nb\"\nc"), "print \"a\";b\"\";c");
  EXPECT_EQ(joinCommandLines("a\"\nb", "print \""), "a\";b");
}

}  // namespace
