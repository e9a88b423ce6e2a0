// Find in the log: the selection, the view and the boxes.

#include "tests/ui/textarea/textarea_fixture.h"

#include <string>

namespace {

class FindInLog : public TextAreaTest {};

TEST_F(FindInLog, SelectsTheHitAndBringsItIntoView) {
  appendLines(500);
  theTextPane->findText("LINE 321", false, false, false);
  EXPECT_EQ(theTextPane->selection().str(), "line 321");
  EXPECT_EQ(theTextPane->insertionPosition(), theTextPane->selectionRange()->to);
  theTextPane->findText("e 32.$", false, false, true);
  EXPECT_EQ(theTextPane->selection().str(), "e 320");
  theTextPane->findText("e 32.$", true, false, true);
  EXPECT_EQ(theTextPane->selection().str(), "e 321");
}

TEST_F(FindInLog, TellsThatThereIsNoHitAndKeepsTheSelection) {
  theTextPane->appendText("abc\nabc\n");
  theTextPane->findText("abc", false, true, false);
  EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{4, 7}));
  ui::ModalScript script;
  script.onDialog("Korvane UI", XK_Return);
  script.run([] {
    theTextPane->findText("abc", true, true, false);
    return 0;
  });
  EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{4, 7}));
  ui::ModalScript regexp;
  regexp.onDialog("Korvane UI", XK_Return);
  regexp.run([] {
    theTextPane->findText("x*y", true, true, true);
    return 0;
  });
}

TEST_F(FindInLog, TellsThatAPatternIsWrong) {
  theTextPane->appendText("abc\nabc\n");
  ui::ModalScript script;
  script.onDialog("ERR", XK_Return);
  script.run([] {
    theTextPane->findText("\\(a", false, true, true);
    return 0;
  });
  EXPECT_FALSE(theTextPane->selectionRange());
}

}  // namespace
