// Texts of labels and buttons: mnemonics and tabs.

#include "support/label_text.h"

#include <gtest/gtest.h>

namespace {

TEST(LabelText, TakesMnemonicsOut) {
  struct Row {
    const char* label;
    const char* text;
    char mnemonic;
  };
  for (const Row& row :
       {Row{"OK", "OK", 0}, Row{"&Edit", "Edit", 'E'}, Row{"R&&D", "R&D", 0},
        Row{"&Save &as", "Save as", 'a'}, Row{"end&", "end&", 0}, Row{"&&&x", "&x", 'x'}}) {
    const zLabelText parsed = takeMnemonic(row.label);
    EXPECT_EQ(parsed.text, row.text) << row.label;
    EXPECT_EQ(parsed.mnemonic, row.mnemonic) << row.label;
    EXPECT_EQ(takeMnemonic(withoutMnemonics(row.label)).text, row.label);
  }
}

TEST(LabelText, MovesTabsToTheNextMultipleOfEightOfTheirLine) {
  EXPECT_EQ(expandTabs("a\tb"), "a       b");
  EXPECT_EQ(expandTabs("12345678\tb"), "12345678        b");
  EXPECT_EQ(expandTabs("\t\tb"), "                b");
  EXPECT_EQ(expandTabs("abc\nx\ty"), "abc\nx       y") << "a line feed restarts the count";
}

}  // namespace
