// The buttons and static texts.

#include "framework/controls/button.h"

#include "framework/core/pane.h"
#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

class Buttons : public ControlTest {
 protected:
  static zSizer* place(int y = 10) { return new zSizer(10, y, 90, 40); }
};

TEST_F(Buttons, ArePressedByReturnAndSpaceAndAClickMayLeaveTheFocusWhereItIs) {
  auto* first = new zDefPushButton(frame.get(), place(), kShownTabStop, "a", 1);
  zButton* others[] = {new zPushButton(frame.get(), place(50), kShownTabStop, "b", 2),
                       new zCheckBox(frame.get(), place(90), kShownTabStop, "c", 3)};
  focus(*first);
  for (zButton* clicked : others) {
    clicked->keepFocusOnClick();
    ui::click(clicked->widget(), ui::kRightButton);
    ui::click(clicked->widget());
    ui::pressKey(XK_Return);
    ui::pressKey(' ');
    EXPECT_EQ(told(), (Told{{clicked->id(), 0}, {1, 0}, {1, 0}}));
  }
  focus(*others[0]);
  ui::pressKey(XK_Return);
  EXPECT_EQ(told(), (Told{{2, kNotifyClicked}}));
}

TEST_F(Buttons, LabelsShowMnemonicsAndTabsInTheToolkitsForm) {
  zControl* controls[] = {new zPushButton(frame.get(), place(), kShownTabStop, "old", 1),
                          new zCheckBox(frame.get(), place(), kShownTabStop, "old", 1),
                          new zStaticText(frame.get(), place(), 0x50000000, "old")};
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

TEST_F(Buttons, ThatAreLowHaveThinEdgesAndRoomForTheirText) {
  zPushButton button(frame.get(), place(), kShownTabStop, "Xg", 1);
  zPushButton hidden(frame.get(), place(60), 0x00810000, "Xg", 2);
  const int text = labelHeight(button.widget());
  const std::pair<int, std::vector<int>> rows[] = {// what is to spare; shadow, focus rectangle
                                                   {40, {2, 2}}, {8, {2, 2}}, {6, {2, 1}},
                                                   {4, {1, 1}},  {2, {1, 0}}, {0, {1, 0}},
                                                   {-8, {1, 0}}, {9, {2, 2}}};
  for (const auto& [spare, edges] : rows) {
    button.moveResize(10, 10, 90, text + spare);
    // The border takes two pixels; and it is placed before it is shown.
    hidden.moveResize(10, 60, 90, text + spare + 2);
    for (const zPushButton* fitted : {&button, &hidden}) {
      EXPECT_EQ(numbers(fitted->widget(), {"shadowThickness", "highlightThickness"}), edges)
          << spare;
    }
  }
  button.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  EXPECT_EQ(ui::resource(button.widget(), "highlightThickness"), 0) << "the font has grown";
}

TEST_F(Buttons, AGroupBoxHoldsTogglesAtTheirOwnPlacesAndExchangesTheirData) {
  auto* group = new zGroupBox(frame.get(), new zSizer(20, 20, 300, 200), 0x50000007, "&Options", 9);
  auto* check = new zCheckBox(group, new zSizer(15, 30, 100, 30), kShownTabStop | 3U, "one", 1);
  auto* radio = new zRadioButton(group, new zSizer(130, 90, 80, 30), kShownTabStop | 9U, "r", 2);
  const auto places = [&] {
    ui::drain();
    return placesOf({group->widget(), check->holder(), radio->holder()});
  };
  EXPECT_EQ(places(), "20,20 300x200; 35,50 100x30; 150,110 80x30; ");
  group->moveResize(40, 10, 250, 150);
  EXPECT_EQ(places(), "40,10 250x150; 55,40 100x30; 170,100 80x30; ");

  Widget title = ui::part(group->holder(), "Label");
  EXPECT_EQ(labelOf(title), "Options|O");
  group->setBackground(zColor(0x8090A0));
  EXPECT_EQ(ui::resource(title, "background"), ui::resource(group->widget(), "background"));
  group->setText("");
  ui::drain();
  EXPECT_FALSE(ui::isViewable(title)) << "it would cut a gap into the edge";
  std::vector<int> shadows;
  for (const int relief : {0, 1, 2}) {
    group->setRelief(static_cast<zGroupBox::Relief>(relief));
    shadows.push_back(ui::resource(group->widget(), "shadowType"));
  }
  EXPECT_EQ(shadows, (std::vector{5, 7, 8})) << "etched in, in, out";

  EXPECT_NE(ui::resource(check->widget(), "indicatorType"),
            ui::resource(radio->widget(), "indicatorType"));
  for (ziToggle* toggle : std::initializer_list<ziToggle*>{check, radio}) {
    EXPECT_EQ(toggle->storeData() + toggle->showData(), 0);
    int value = 7;
    toggle->setBoundValue(&value);
    EXPECT_EQ(toggle->showData(), 1);
    frame->storeChildren();
    EXPECT_EQ(value, 1) << "through the group";
    toggle->check(true);
    EXPECT_EQ(told(), Told{}) << "not the user";
    ui::click(toggle->widget());
    EXPECT_FALSE(toggle->checked());
    frame->storeChildren();
    EXPECT_EQ(value, 0);
    toggle->setBoundValue(nullptr);
  }
  delete group;
  ui::drain();
}

TEST_F(Buttons, ThePointerIsToldWhereItIsAndStaysWithItsGrab) {
  auto* button = new zPushButton(frame.get(), place(), kShownTabStop, "a", 1);
  zPane pane(frame.get(), new zSizer(150, 10, 100, 100), 0x50000000, 5);
  pane.show();
  XEvent press{};
  press.xbutton.button = 3;
  press.xbutton.x = 4;
  press.xbutton.y = 5;
  zEvent event;
  EXPECT_EQ(pointerOf(event).button, 0U);
  event.xevent = &press;
  for (const int type : {ButtonPress, ButtonRelease, MotionNotify}) {
    press.type = type;
    const bool isButton = type != MotionNotify;
    EXPECT_EQ(pointerOf(event).button, isButton ? 3U : 0U);
    EXPECT_EQ(pointerOf(event).pos, isButton ? (zPoint{4, 5}) : zPoint{});
  }
  ui::drain();
  EXPECT_TRUE(isReleaseLost(pane));
  pane.addHandler(&listener, Listener::handler(), kMsgButtonUp);
  ui::moveTo(pane.widget(), 5, 5);
  ui::pressButton();
  EXPECT_FALSE(isReleaseLost(pane));
  grabPointer(pane);
  ui::moveTo(button->widget(), 5, 5);
  ui::releaseButton();
  EXPECT_EQ(heard(), Journal{"handler 514 0"});
  releasePointer(pane);
  ui::click(button->widget());
  EXPECT_EQ(told(), (Told{{1, kNotifyClicked}}));
}

}  // namespace
