#include "textarea/command_queue.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(CommandSplit, CutsAtSemicolonsOutsideQuotesAndKeepsAllElse) {
  EXPECT_THAT(splitCommandLine("list"), ElementsAre("list"));
  EXPECT_THAT(splitCommandLine("a;b;c"), ElementsAre("a", "b", "c"));
  EXPECT_THAT(splitCommandLine("print \"a;b\";next"), ElementsAre("print \"a;b\"", "next"));
  EXPECT_THAT(splitCommandLine(" a ; b "), ElementsAre(" a ", " b "));
  EXPECT_THAT(splitCommandLine("\"open;quote;s"), ElementsAre("\"open;quote;s"));
}

TEST(CommandSplit, EmptyPiecesCountExceptAtTheEnd) {
  EXPECT_THAT(splitCommandLine(";"), ElementsAre(""));
  EXPECT_THAT(splitCommandLine(";;a"), ElementsAre("", "", "a"));
  EXPECT_THAT(splitCommandLine("a;"), ElementsAre("a"));
  EXPECT_THAT(splitCommandLine(""), IsEmpty());
}

TEST(CommandSplit, APieceMayBeAsLongAsTheLine) {
  const std::string longPiece(5000, 'x');
  EXPECT_THAT(splitCommandLine(longPiece + ";y"), ElementsAre(longPiece, "y"));
}

TEST(CommandLines, ArePiecesOfOneLine) {
  EXPECT_EQ(joinCommandLines("a\r\nb c\n\nd\n"), "a;b c;;d");
  EXPECT_EQ(joinCommandLines("print \"a\nb\"\nc"), "print \"a\";b\"\";c");
  EXPECT_EQ(joinCommandLines("a\"\nb", "print \""), "a\";b");
}

}  // namespace
