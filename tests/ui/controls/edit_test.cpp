// The edit controls: text, selection, limits, notifications.

#include "framework/controls/edit.h"

#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;

class EditTest : public ControlTest {
 protected:
  static constexpr std::uint32_t kLineStyle = 0x50890080;
  static constexpr std::uint32_t kLogStyle = 0x50B108C4;

  zEditLine* makeLine(const char* text = "", int id = 1, int y = 10) {
    auto* line = new zEditLine(frame.get(), new zSizer(10, y, 200, 30), kLineStyle, text, id);
    ui::drain();
    return line;
  }
  zEditBox* makeLog() {
    auto* box = new zEditBox(frame.get(), new zSizer(10, 60, 300, 120), kLogStyle, "", 2);
    ui::drain();
    return box;
  }
};

TEST_F(EditTest, SelectionIsCutToTheText) {
  zEditLine* edit = makeLine("abc");
  edit->setSelection(1, 3);
  EXPECT_EQ(edit->selection().str(), "bc");
  EXPECT_EQ(edit->selectionRange(), (zTextRange{1, 3}));
  edit->setSelection(2, 90);
  EXPECT_EQ(edit->selection().str(), "c");
  edit->setSelection(5, 5);
  EXPECT_FALSE(edit->selectionRange());
  EXPECT_EQ(edit->selection().str(), "");
  EXPECT_EQ(edit->insertionPosition(), 3);
}

TEST_F(EditTest, OnlyTheInsertionPointMovesBeforeTheWidgetIsRealized) {
  ControlFrame hidden;
  auto* edit = new zEditLine(&hidden, new zSizer(0, 0, 80, 30), kLineStyle, "abc", 1);
  edit->setSelection(0, 2);
  EXPECT_FALSE(edit->selectionRange());
  EXPECT_EQ(edit->insertionPosition(), 2);
}

TEST_F(EditTest, ReplacesTheSelectionOrInsertsAtTheInsertionPoint) {
  for (zEditBase* edit :
       {static_cast<zEditBase*>(makeLine()), static_cast<zEditBase*>(makeLog())}) {
    edit->setText("one two");
    EXPECT_EQ(edit->insertionPosition(), 7);
    edit->setSelection(4, 7);
    edit->replaceSelection("three");
    EXPECT_EQ(edit->text().str(), "one three");
    EXPECT_EQ(edit->insertionPosition(), 9);
    edit->setSelection(3, 3);
    edit->replaceSelection(" and");
    EXPECT_EQ(edit->text().str(), "one and three");
    EXPECT_EQ(edit->insertionPosition(), 7);
    edit->insertAt(4000, "!");
    EXPECT_EQ(edit->text().str(), "one and three!");
    EXPECT_EQ(edit->insertionPosition(), 14);
  }
}

TEST_F(EditTest, MaximumLengthBindsTheUserOnly) {
  zEditLine* edit = makeLine();
  edit->setMaxLength(3);
  focus(*edit);
  ui::typeText("abcde");
  EXPECT_EQ(edit->text().str(), "abc");
  edit->setText("longer text");
  EXPECT_EQ(edit->text().str(), "longer text");

  edit->setMaxLength(0);
  edit->setText(std::string(zEditBase::kDefaultMaxLength - 1, 'x').c_str());
  ui::typeText("yz");
  EXPECT_EQ(edit->textLength(), zEditBase::kDefaultMaxLength);
}

TEST_F(EditTest, TellsTheParentOfFocusChangesAndReturn) {
  zEditLine* edit = makeLine("", 1, 10);
  zEditLine* other = makeLine("", 2, 50);
  focus(*other);
  edit->setFocus();
  ui::waitForFocus(edit->widget());
  EXPECT_THAT(frame->takeCommands(), testing::IsSupersetOf({Notification{2, kEditFocusLost},
                                                            Notification{1, kEditFocusGained}}));
  ui::typeText("x");
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{1, kEditChanged}));
  ui::pressKey(XK_Return);
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{1, kEditReturn}));
  edit->setText("y");
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{1, kEditChanged}));
  EXPECT_EQ(edit->lastSetText().str(), "y");
}

TEST_F(EditTest, ClipboardOperationsMoveText) {
  zEditLine* edit = makeLine("abcdef");
  edit->setSelection(0, 3);
  edit->cut();
  EXPECT_EQ(edit->text().str(), "def");
  edit->setSelection(3, 3);
  edit->paste();
  ui::waitFor([&] { return edit->text() == RWCString("defabc"); }, "the pasted text");
  edit->setSelection(0, 1);
  edit->copy();
  edit->setSelection(6, 6);
  edit->paste();
  ui::waitFor([&] { return edit->text() == RWCString("defabcd"); }, "the copied text");
}

TEST_F(EditTest, ALineStaysOneLineWhateverIsPutIn) {
  zEditLine* edit = makeLine("one\n");
  EXPECT_EQ(edit->text().str(), "one");
  edit->setText("two\nlines\n");
  EXPECT_EQ(edit->text().str(), "two lines");
  RWCString bound;
  edit->setBoundString(&bound);
  edit->storeData();
  EXPECT_EQ(bound.str(), "two\nlines\n") << "what the user has left alone";
  edit->replaceSelection("!\n");

  zEditBox* log = makeLog();
  log->setText(
      "a\x01"
      "b\n");
  log->setSelection(0, 4);
  log->copy();
  edit->paste();
  ui::waitFor([&] { return edit->text() == RWCString("two lines!a b"); }, "the pasted text");
  focus(*edit);
  ui::typeText("y");
  EXPECT_EQ(edit->text().str(), "two lines!a by");
  edit->storeData();
  EXPECT_EQ(bound, edit->text());
}

}  // namespace
