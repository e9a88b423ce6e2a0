// The buttons and static texts.

#include "framework/controls/button.h"

#include "framework/core/pane.h"
#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

using testing::ElementsAre;

TEST_F(ControlTest, ReturnPressesTheButtonThatHasTheFocus) {
  auto* first = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "a", 1);
  auto* second = new zDefPushButton(frame.get(), new zSizer(10, 50, 90, 30), kShownTabStop, "b", 2);
  focus(*first);
  ui::pressKey(XK_Return);
  EXPECT_EQ(told(), (Told{{1, kNotifyClicked}}));
  focus(*second);
  ui::pressKey(XK_Return);
  ui::pressKey(' ');
  EXPECT_EQ(told(), (Told{{2, kNotifyClicked}, {2, kNotifyClicked}}));
}

TEST_F(ControlTest, AClickMayLeaveTheFocusWhereItIs) {
  auto* first = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "a", 1);
  zButton* others[] = {
      new zPushButton(frame.get(), new zSizer(10, 50, 90, 30), kShownTabStop, "b", 2),
      new zCheckBox(frame.get(), new zSizer(10, 90, 90, 30), kShownTabStop, "c", 3)};
  focus(*first);
  for (zButton* clicked : others) {
    clicked->keepFocusOnClick();
    ui::click(clicked->widget(), ui::kRightButton);
    ui::click(clicked->widget());
    ui::pressKey(XK_Return);
    EXPECT_EQ(told(), (Told{{clicked->id(), kNotifyClicked}, {1, kNotifyClicked}}));
  }
  focus(*others[0]);
  ui::pressKey(XK_Return);
  EXPECT_EQ(told(), (Told{{2, kNotifyClicked}}));
}

TEST_F(ControlTest, LabelsShowMnemonicsAndTabsInTheToolkitsForm) {
  const auto place = [] { return new zSizer(10, 10, 90, 40); };
  zControl* controls[] = {
      new zPushButton(frame.get(), place(), kShownTabStop, "old", 1),
      new zCheckBox(frame.get(), place(), kShownTabStop, "old", 1),
      new zStaticText(frame.get(), place(), 0x50000000, "old"),
  };
  const std::pair<const char*, const char*> rows[] = {
      {"a\tb", "a       b"}, {"R&&D &Group", "R&D Group|G"}, {"", ""}, {"&Name:\nx", "Name:\nx|N"}};
  for (zControl* control : controls) {
    EXPECT_EQ(labelOf(control->widget()), "old");
    const int oneLine = labelHeight(control->widget());
    for (const auto& [text, shown] : rows) {
      control->setText(text);
      EXPECT_EQ(labelOf(control->widget()), shown);
      EXPECT_EQ(control->text(), RWCString(text));
    }
    EXPECT_EQ(labelHeight(control->widget()), 2 * oneLine);
  }
  const auto& label = static_cast<zStaticText&>(*controls[2]);
  EXPECT_EQ(label.textSize().height, labelHeight(label.widget()));
  const zStaticText centred(frame.get(), place(), 0x50000000 | kStaticCentred, "x");
  EXPECT_EQ(ui::resource(centred.widget(), "alignment"),
            ui::resource(label.widget(), "alignment") + 1);
}

TEST_F(ControlTest, ALowButtonHasThinEdgesAndRoomForItsText) {
  zPushButton button(frame.get(), new zSizer(10, 10, 90, 40), kShownTabStop, "Xg", 1);
  zPushButton hidden(frame.get(), new zSizer(10, 60, 90, 40), 0x00810000, "Xg", 2);
  const int text = labelHeight(button.widget());
  struct Row {
    int spare;
    std::vector<int> edges;  // shadow, focus rectangle
  };
  const Row rows[] = {{40, {2, 2}}, {8, {2, 2}}, {6, {2, 1}},  {4, {1, 1}},
                      {2, {1, 0}},  {0, {1, 0}}, {-8, {1, 0}}, {9, {2, 2}}};
  for (const Row& row : rows) {
    button.moveResize(10, 10, 90, text + row.spare);
    // The border takes two pixels; and it is placed before it is shown.
    hidden.moveResize(10, 60, 90, text + row.spare + 2);
    for (const zPushButton* fitted : {&button, &hidden}) {
      EXPECT_EQ(numbers(fitted->widget(), {"shadowThickness", "highlightThickness"}), row.edges)
          << row.spare;
    }
  }
  button.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  EXPECT_EQ(ui::resource(button.widget(), "highlightThickness"), 0) << "the font has grown";
}

TEST_F(ControlTest, TogglesNotifyWhenTheUserChangesThemOnly) {
  ziToggle* toggles[] = {
      new zCheckBox(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop | 3U, "c", 1),
      new zRadioButton(frame.get(), new zSizer(10, 50, 90, 30), kShownTabStop | 9U, "r", 2)};
  const int shapes[] = {ui::resource(toggles[0]->widget(), "indicatorType"),
                        ui::resource(toggles[1]->widget(), "indicatorType")};
  EXPECT_NE(shapes[0], shapes[1]);
  for (ziToggle* toggle : toggles) {
    EXPECT_FALSE(toggle->checked());
    toggle->check(true);
    EXPECT_TRUE(toggle->checked());
    EXPECT_EQ(told(), Told{});
    ui::click(toggle->widget());
    EXPECT_FALSE(toggle->checked());
    EXPECT_EQ(told(), (Told{{toggle->id(), kNotifyClicked}}));
  }
}

TEST_F(ControlTest, AGroupBoxHoldsControlsAtTheirOwnPlaces) {
  auto* group = new zGroupBox(frame.get(), new zSizer(20, 20, 300, 200), 0x50000007, "&Options", 9);
  auto* check = new zCheckBox(group, new zSizer(15, 30, 100, 30), kShownTabStop | 3U, "one", 1);
  auto* push = new zPushButton(group, new zSizer(130, 90, 80, 30), kShownTabStop, "two", 2);
  const auto places = [&] {
    ui::drain();
    return Journal{placeOf(group->widget()), placeOf(check->holder()), placeOf(push->holder())};
  };
  EXPECT_THAT(places(), ElementsAre("20,20 300x200", "35,50 100x30", "150,110 80x30"));
  group->moveResize(40, 10, 250, 150);
  EXPECT_THAT(places(), ElementsAre("40,10 250x150", "55,40 100x30", "170,100 80x30"));

  Widget title = ui::part(group->holder(), "Label");
  EXPECT_EQ(labelOf(title), "Options|O");
  group->setBackground(zColor(0x8090A0));
  EXPECT_EQ(ui::resource(title, "background"), ui::resource(group->widget(), "background"));
  group->setText("");
  ui::drain();
  EXPECT_FALSE(ui::isViewable(title)) << "it would cut a gap into the edge";
  for (const auto relief :
       {zGroupBox::Relief::etched, zGroupBox::Relief::sunken, zGroupBox::Relief::raised}) {
    constexpr int kShadowTypes[] = {5, 7, 8};  // etched in, in, out
    group->setRelief(relief);
    EXPECT_EQ(ui::resource(group->widget(), "shadowType"), kShadowTypes[static_cast<int>(relief)]);
  }

  EXPECT_EQ(check->storeData(), 0);
  EXPECT_EQ(check->showData(), 0);
  int value = 7;
  check->setBoundValue(&value);
  EXPECT_EQ(check->showData(), 1);
  frame->storeChildren();
  EXPECT_EQ(value, 1);
  ui::click(check->widget());
  frame->storeChildren();
  EXPECT_EQ(value, 0) << "data exchange goes through the group";
  delete group;
  ui::drain();
}

TEST_F(ControlTest, ThePointerIsToldWhereItIsAndStaysWithItsGrab) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "a", 1);
  zPane pane(frame.get(), new zSizer(150, 10, 100, 100), 0x50000000, 5);
  pane.show();
  XEvent press{};
  press.xbutton.type = ButtonPress;
  press.xbutton.button = 3;
  press.xbutton.x = 4;
  press.xbutton.y = 5;
  zEvent event;
  EXPECT_EQ(pointerOf(event).button, 0U);
  event.xevent = &press;
  EXPECT_EQ(pointerOf(event).button, 3U);
  EXPECT_EQ(pointerOf(event).pos, (zPoint{4, 5}));
  press.type = MotionNotify;
  EXPECT_EQ(pointerOf(event).button, 0U);

  ui::drain();
  EXPECT_TRUE(isReleaseLost(pane));
  pane.addHandler(&listener, Listener::handler(), kMsgButtonUp);
  ui::moveTo(pane.widget(), 5, 5);
  ui::pressButton();
  EXPECT_FALSE(isReleaseLost(pane));
  grabPointer(pane);
  ui::moveTo(button->widget(), 5, 5);
  ui::releaseButton();
  EXPECT_THAT(heard(), ElementsAre("handler 514 0"));
  releasePointer(pane);
  ui::click(button->widget());
  EXPECT_EQ(told(), (Told{{1, kNotifyClicked}}));
}

}  // namespace
