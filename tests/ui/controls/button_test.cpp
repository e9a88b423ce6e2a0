// The buttons and static texts.

#include "framework/controls/button.h"

#include "tests/ui/controls/control_fixture.h"

namespace {

using Buttons = ControlTest;

TEST_F(Buttons, ArePressedByReturnAndSpaceAndAClickMayLeaveTheFocusWhereItIs) {
  zDefPushButton first(&frame, place(), kStyleControlStop, "a", 1);
  zPushButton second(&frame, place(50), kStyleControlStop, "b", 2);
  zCheckBox third(&frame, place(90), kStyleControlStop, "c", 3);
  ui::focus(first);
  for (zButton* clicked : std::initializer_list<zButton*>{&second, &third}) {
    clicked->keepFocusOnClick();
    ui::click(clicked->widget(), ui::kRightButton);
    ui::click(clicked->widget());
    ui::typeText("\n ");
  }
  EXPECT_EQ(heard(), "2:0 1:0 1:0 3:0 1:0 1:0 ");
  ui::focus(second);
  ui::typeText("\n");
  EXPECT_EQ(heard(), "2:0 ");
}

TEST_F(Buttons, LabelsShowMnemonicsAndTabsInTheToolkitsForm) {
  const std::unique_ptr<zControl> controls[] = {
      std::make_unique<zPushButton>(&frame, place(), kStyleControl, "&Old", 1),
      std::make_unique<zCheckBox>(&frame, place(), kStyleControl, "&Old", 1),
      std::make_unique<zGroupBox>(&frame, place(), kStyleControl, "&Old", 1),
      std::make_unique<zStaticText>(&frame, place(), kStyleControl, "&Old")};
  for (const auto& control : controls) {
    Widget inside = ui::part(control->holder(), "Label");
    Widget label = inside != nullptr ? inside : control->widget();
    EXPECT_EQ(ui::textOf(label) + "|" + ui::numbers(label, {"mnemonic"}), "Old|79 ");
    control->setText("a\tb\nR&&D &Group");
    EXPECT_EQ(ui::textOf(label) + "|" + ui::numbers(label, {"mnemonic"}),
              "a       b\nR&D Group|71 ");
    EXPECT_EQ(control->text(), RWCString("a\tb\nR&&D &Group"));
  }
}

TEST_F(Buttons, AGroupBoxHoldsTogglesAtTheirOwnPlacesAndExchangesTheirData) {
  auto* group = new zGroupBox(&frame, new zSizer(20, 20, 300, 200), kStyleControl, "Name", 9);
  auto* check = new zCheckBox(group, new zSizer(15, 30, 100, 30), kStyleControlStop, "one", 1);
  auto* radio = new zRadioButton(group, new zSizer(130, 90, 80, 30), kStyleControlStop, "r", 2);
  group->moveResize(40, 10, 250, 150);
  EXPECT_EQ(placesOf({group->widget(), check->holder(), radio->holder()}),
            "40,10 250x150; 55,40 100x30; 170,100 80x30; ");
  EXPECT_NE(ui::numbers(check->widget(), {"indicatorType"}),
            ui::numbers(radio->widget(), {"indicatorType"}));
  for (ziToggle* toggle : std::initializer_list<ziToggle*>{check, radio}) {
    int value = 7;
    toggle->setBoundValue(&value);
    EXPECT_EQ(toggle->showData(), 1);
    EXPECT_EQ(frame.storeChildren(), 1);
    EXPECT_EQ(std::to_string(value) + heard(), "1") << "through the group; and not by the user";
    ui::click(toggle->widget());
    EXPECT_EQ(toggle->storeData(), 1);
    EXPECT_EQ(value, 0);
    toggle->setBoundValue(nullptr);
  }
}

}  // namespace
