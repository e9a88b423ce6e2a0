// Number input: what keys, the clipboard and the bound value do to it.

#include "framework/controls/formatted_edit.h"

#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LongEditTest : public ControlTest {
 protected:
  static constexpr std::uint32_t kStyle = 0x50810080;

  zLongEdit* make(long* value) {
    auto* edit = new zLongEdit(frame.get(), new zSizer(10, 10, 200, 30), kStyle, 1, value);
    ui::drain();
    return edit;
  }
};

TEST_F(LongEditTest, ShowsItsValueAndStoresWhatIsTyped) {
  long value = 0;
  zLongEdit* edit = make(&value);
  EXPECT_EQ(edit->text().str(), "0");
  auto* marked = new zEditLine(frame.get(), new zSizer(10, 50, 200, 30), kShownTabStop, "mark", 2);
  ui::drain();
  marked->setSelection(0, 4);
  value = -45;
  edit->showData();
  EXPECT_EQ(edit->text().str(), "-45");
  EXPECT_EQ(edit->selection().str(), "-45") << "typing replaces it";
  EXPECT_EQ(marked->selection().str(), "mark") << "and what the user has marked can be pasted";
  focus(*edit);
  ui::typeText("9876543210");
  EXPECT_EQ(edit->storeData(), 1);
  EXPECT_EQ(value, 9876543210L);
  edit->setText("");
  edit->storeData();
  EXPECT_EQ(value, 0);
  EXPECT_EQ(make(nullptr)->storeData(), 0);
}

TEST_F(LongEditTest, SwallowsWhatIsNoNumber) {
  zLongEdit* edit = make(nullptr);
  focus(*edit);
  ui::typeText("a-1-2b34567890123\xe4");
  EXPECT_EQ(edit->text().str(), "-1234567890");
  EXPECT_EQ(edit->formattedText(kNumRead).str(), "-1234567890");
  frame->takeCommands();
  ui::typeText("x");
  EXPECT_THAT(frame->takeCommands(), IsEmpty()) << "no change, no notification";
  ui::pressKey(XK_Home);
  ui::typeText("7");
  EXPECT_EQ(edit->text().str(), "-1234567890") << "nothing goes before the sign";
}

TEST_F(LongEditTest, EditingKeysWorkAsInAnyField) {
  zLongEdit* edit = make(nullptr);
  focus(*edit);
  ui::typeText("12345");
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(edit->text().str(), "1234");
  ui::pressKey(XK_Left);
  ui::pressKey(XK_Left);
  ui::typeText("9");
  EXPECT_EQ(edit->text().str(), "12934");
  edit->setSelection(1, 4);
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(edit->text().str(), "14");
  ui::pressKey(XK_Delete);
  EXPECT_EQ(edit->text().str(), "1");
  frame->takeCommands();
  ui::pressKey(XK_Return);
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{1, kEditReturn}));
}

TEST_F(LongEditTest, RefusesAPasteThatIsNoNumber) {
  auto* source = new zEditLine(frame.get(), new zSizer(10, 50, 200, 30), kShownTabStop, "12x", 2);
  zLongEdit* edit = make(nullptr);
  edit->setText("5");
  source->setSelection(0, 3);
  source->copy();
  edit->paste();
  ui::drain();
  EXPECT_EQ(edit->text().str(), "5");
  source->setSelection(0, 2);
  source->copy();
  edit->paste();
  ui::waitFor([&] { return edit->text() == RWCString("512"); }, "the pasted number");
}

TEST_F(LongEditTest, AnInvalidTextKeepsTheDialogAndIsSelected) {
  long value = 3;
  zLongEdit* edit = make(&value);
  edit->setText("-");
  EXPECT_EQ(frame->storeChildren(), 0);
  EXPECT_FALSE(edit->isValid());
  EXPECT_EQ(edit->selectionRange(), (zTextRange{0, 1}));
  edit->setText("12");
  edit->insertAt(2, "x4");
  EXPECT_EQ(edit->text().str(), "12x4") << "the program may put in what it likes";
  EXPECT_EQ(frame->storeChildren(), 0);
  EXPECT_EQ(edit->selectionRange(), (zTextRange{2, 4}));
  EXPECT_EQ(value, 3);
  ui::waitForFocus(edit->widget());
  ui::typeText("8");
  EXPECT_EQ(frame->storeChildren(), 1);
  EXPECT_EQ(value, 128);
  edit->insertAt(3, "xyz");
  edit->setSelection(5, 6);
  ui::pressKey(XK_BackSpace);
  ui::pressKey(XK_BackSpace);
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(edit->text().str(), "128") << "mended from its end";
}

}  // namespace
