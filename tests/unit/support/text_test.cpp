// Strings that share their characters, and texts made ready for one line, a label or a button.

#include <gtest/gtest.h>

#include "support/rwc_string.h"
#include "support/text.h"

namespace {

TEST(RWCString, SharesCharactersUntilOneSideChanges) {
  RWCString text("log");
  const RWCString copy = text;
  EXPECT_EQ(text.c_str(), copy.c_str());
  text += "ged";
  text += text;
  text.append(text.view().substr(0, 3)).setAt(0, 'f');
  RWCString third = copy;
  third.setAt(0, 'd');
  EXPECT_EQ(text.str() + " " + third.str() + " " + copy.str(), "foggedloggedlog dog log");

  RWCString fromNull(static_cast<const char*>(nullptr));
  fromNull += "x";
  EXPECT_TRUE(RWCString().isEmpty()) << "all empty strings share their characters, too";
  EXPECT_LT(RWCString("z"), RWCString("\xE4")) << "in the order of unsigned bytes";
}

TEST(SingleLine, DropsLineEndsAtTheEndAndHasBlanksForTheOthersAndForControlCharacters) {
  EXPECT_EQ(singleLine("a b\tc\xE4"), "a b\tc\xE4");
  EXPECT_EQ(singleLine("\na\r\n\nb\r\n\r"), " a  b");
  EXPECT_EQ(singleLine("\x1F\ra\x7F\n"), "  a ");
}

TEST(LabelText, TakesMnemonicsOut) {
  const auto taken = [](const char* label) {
    const zLabelText parsed = takeMnemonic(label);
    return parsed.mnemonic != '\0' ? parsed.text + " by " + parsed.mnemonic : parsed.text;
  };
  EXPECT_EQ(taken("OK"), "OK");
  EXPECT_EQ(taken("&Save &as"), "Save as by a");
  EXPECT_EQ(taken("R&&D &&&x&"), "R&D &x& by x");
  EXPECT_EQ(withoutMnemonics("R&&D"), "R&&&&D");
}

TEST(LabelText, MovesTabsToTheNextMultipleOfEightOfTheirLine) {
  EXPECT_EQ(expandTabs("a\tb\t\tc\n1234567\td12345678\te"),
            "a       b               c\n1234567 d12345678       e");
}

}  // namespace
