#include "support/line_text.h"

#include <gtest/gtest.h>

namespace {

TEST(SingleLine, DropsLineEndsAtTheEndAndHasBlanksForTheOthersAndForControlCharacters) {
  for (const auto& [text, line] : {std::pair{"", ""},
                                   {"a b\tc\xE4", "a b\tc\xE4"},
                                   {"a\n\r\n", "a"},
                                   {"\n", ""},
                                   {"\na\r\n\nb", " a  b"},
                                   {"\x01"
                                    "a\r\x7F\x1B",
                                    " a   "}}) {
    EXPECT_EQ(singleLine(text), line) << testing::PrintToString(text);
  }
}

}  // namespace
