// The buttons and static texts.

#include "framework/controls/button.h"

#include "tests/ui/controls/control_fixture.h"
#include "tests/ui/controls/label_view.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ControlTest, ReturnPressesTheButtonThatHasTheFocus) {
  auto* first = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "a", 1);
  auto* second =
      new zDefPushButton(frame.get(), new zSizer(10, 50, 90, 30), kShownTabStop | 1U, "b", 2);
  focus(*first);
  ui::pressKey(XK_Return);
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{1, kNotifyClicked}));
  focus(*second);
  ui::pressKey(XK_Return);
  ui::pressKey(' ');
  EXPECT_THAT(frame->takeCommands(),
              ElementsAre(Notification{2, kNotifyClicked}, Notification{2, kNotifyClicked}));
  EXPECT_EQ(frame->defaultButton(), second);
}

TEST_F(ControlTest, AClickMayLeaveTheFocusWhereItIs) {
  auto* first = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "a", 1);
  auto* second = new zPushButton(frame.get(), new zSizer(10, 50, 90, 30), kShownTabStop, "b", 2);
  auto* third = new zCheckBox(frame.get(), new zSizer(10, 90, 90, 30), kShownTabStop, "c", 3);
  focus(*first);
  for (zButton* clicked : {static_cast<zButton*>(second), static_cast<zButton*>(third)}) {
    clicked->keepFocusOnClick();
    ui::click(clicked->widget());
    ui::pressKey(XK_Return);
    EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{clicked->id(), kNotifyClicked},
                                                   Notification{1, kNotifyClicked}));
  }
  focus(*second);
  ui::pressKey(XK_Return);
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{2, kNotifyClicked}));
}

TEST_F(ControlTest, LabelsShowMnemonicsAndTabsInTheToolkitsForm) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "a\tb", 1);
  EXPECT_EQ(viewOf(button->widget()).text, "a       b");
  EXPECT_EQ(button->text().str(), "a\tb");
  button->setText("R&&D &Group");
  EXPECT_EQ(viewOf(button->widget()).text, "R&D Group");
  EXPECT_EQ(viewOf(button->widget()).mnemonic, static_cast<unsigned long>('G'));
  EXPECT_EQ(button->text().str(), "R&&D &Group");

  auto* label = new zStaticText(frame.get(), new zSizer(10, 50, 90, 40), 0x50000000, "&Name:\nx");
  const int oneLine = viewOf(button->widget()).textHeight;
  EXPECT_EQ(viewOf(label->widget()).text, "Name:");
  EXPECT_EQ(viewOf(label->widget()).textHeight, 2 * oneLine);
  label->setText("other");
  EXPECT_EQ(viewOf(label->widget()).text, "other");
}

TEST_F(ControlTest, ALowButtonHasThinEdgesAndRoomForItsText) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 10, 90, 40), kShownTabStop, "Xg", 1);
  const int tall = viewOf(button->widget()).roomForText;
  button->moveResize(10, 10, 90, viewOf(button->widget()).textHeight + 4);
  const LabelView view = viewOf(button->widget());
  EXPECT_GE(view.roomForText, view.textHeight);
  EXPECT_LT(view.roomForText, tall);
  EXPECT_TRUE(view.hasFocusRectangle);

  auto* late = new zPushButton(frame.get(), new zSizer(10, 60, 90, 40), 0x10000, "Xg", 2);
  late->moveResize(10, 60, 90, view.textHeight + 4);
  late->show();
  ui::drain();
  EXPECT_GE(viewOf(late->widget()).roomForText, view.textHeight) << "placed before it was shown";

  button->moveResize(10, 10, 90, 40);
  EXPECT_EQ(viewOf(button->widget()).roomForText, tall);
}

TEST_F(ControlTest, TogglesNotifyWhenTheUserChangesThemOnly) {
  auto* check = new zCheckBox(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop | 3U, "c", 1);
  auto* radio =
      new zRadioButton(frame.get(), new zSizer(10, 50, 90, 30), kShownTabStop | 9U, "r", 2);
  for (ziToggle* toggle : {static_cast<ziToggle*>(check), static_cast<ziToggle*>(radio)}) {
    EXPECT_FALSE(toggle->checked());
    toggle->check(true);
    EXPECT_TRUE(toggle->checked());
    EXPECT_THAT(frame->takeCommands(), IsEmpty());
    ui::click(toggle->widget());
    EXPECT_FALSE(toggle->checked());
    EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{toggle->id(), kNotifyClicked}));
  }
}

TEST_F(ControlTest, AGroupBoxHoldsControlsAtTheirOwnPlaces) {
  auto* group = new zGroupBox(frame.get(), new zSizer(20, 20, 300, 200), 0x50000007, "Options", 9);
  auto* first = new zCheckBox(group, new zSizer(15, 30, 100, 30), kShownTabStop | 3U, "one", 1);
  auto* second = new zPushButton(group, new zSizer(130, 90, 80, 30), kShownTabStop, "two", 2);
  ui::drain();
  const ui::ScreenArea outer = ui::areaOf(group->widget());
  EXPECT_EQ(outer.width, 300);
  EXPECT_EQ(outer.height, 200);
  EXPECT_EQ(ui::areaOf(first->holder()), (ui::ScreenArea{outer.x + 15, outer.y + 30, 100, 30}));
  EXPECT_EQ(ui::areaOf(second->holder()), (ui::ScreenArea{outer.x + 130, outer.y + 90, 80, 30}));
  group->moveResize(40, 10, 250, 150);
  ui::drain();
  EXPECT_EQ(ui::areaOf(second->holder()).x, ui::areaOf(group->widget()).x + 130);
  EXPECT_EQ(ui::areaOf(second->holder()).width, 80);

  EXPECT_EQ(first->storeData(), 0);
  int value = 7;
  first->setBoundValue(&value);
  EXPECT_EQ(first->showData(), 1);
  EXPECT_TRUE(first->checked());
  ui::click(first->widget());
  frame->storeChildren();
  EXPECT_EQ(value, 0) << "data exchange goes through the group";
  delete group;
  ui::drain();
}

}  // namespace
