// The buttons and static texts.

#include "framework/controls/button.h"

#include "framework/controls/edit.h"
#include "framework/layout/sizers.h"
#include "tests/ui/controls/control_fixture.h"

namespace {

using Buttons = ControlTest;

TEST_F(Buttons, ArePressedByReturnAndSpaceAndAClickMayLeaveTheFocusWhereItIs) {
  const zDefPushButton first(&frame, place(), kStyleControlStop, "a", 1);
  zPushButton second(&frame, place(50), kStyleControlStop, "b", 2);
  zCheckBox third(&frame, place(90), kStyleControlStop, "c", 3);
  focus(first);
  for (zButton* clicked : std::initializer_list<zButton*>{&second, &third}) {
    clicked->keepFocusOnClick();
    ui::click(clicked->widget(), ui::kRightButton);
    ui::click(clicked->widget());
    ui::typeText("\n ");
  }
  EXPECT_EQ(heard(), "2:0 1:0 1:0 3:0 1:0 1:0 ");
  focus(second);
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
    EXPECT_EQ(ui::textOf(label) + "|" + numbers(label, {"mnemonic"}), "Old|79 ");
    control->setText("a\tb\nR&&D &Group");
    EXPECT_EQ(ui::textOf(label) + "|" + numbers(label, {"mnemonic"}), "a       b\nR&D Group|71 ");
    EXPECT_EQ(control->text(), RWCString("a\tb\nR&&D &Group"));
  }
}

TEST_F(Buttons, AndLinesThatAreLowGiveTheirEdgesUpBeforeTheirText) {
  zPushButton button(&frame, place(), kStyleControl, "Xg", 1);
  zPushButton hidden(&frame, place(60), kStyleChild | kStyleBorder, "Xg", 2);
  zEditLine line(&frame, place(110), kStyleControl | kStyleBorder, "Xg", 3);
  const zStaticText label(&frame, place(160), kStyleControl, "Xg");
  const int text = label.textSize().height;
  line.setFontSpec(zFontSpec("fixed", {0, text}), 1);
  // What is to spare; the shadow and the focus rectangle of buttons; the latter and the margin of
  // a line.
  const std::tuple<int, const char*, const char*> rows[] = {
      {40, "2 2 ", "2 1 "}, {10, "2 2 ", "2 1 "}, {9, "2 2 ", "2 0 "}, {8, "2 2 ", "2 0 "},
      {6, "2 1 ", "1 0 "},  {4, "1 1 ", "0 0 "},  {2, "1 0 ", "0 0 "}, {-8, "1 0 ", "0 0 "}};
  for (const auto& [spare, buttonEdges, lineEdges] : rows) {
    SCOPED_TRACE(spare);
    button.moveResize(10, 10, 90, text + spare);
    // The border takes two pixels; and it is placed before it is shown.
    hidden.moveResize(10, 60, 90, text + spare + 2);
    line.moveResize(10, 110, 90, text + spare);
    for (const zPushButton* fitted : {&button, &hidden}) {
      EXPECT_EQ(numbers(fitted->widget(), {"shadowThickness", "highlightThickness"}), buttonEdges);
    }
    EXPECT_EQ(numbers(line.widget(), {"highlightThickness", "marginHeight"}), lineEdges);
  }
  for (zControl* fitted : std::initializer_list<zControl*>{&button, &line}) {
    fitted->moveResize(10, 10, 90, text + 8);
    fitted->setFontSpec(zFontSpec("courier", {0, 24}), 1);
    EXPECT_EQ(numbers(fitted->widget(), {"highlightThickness"}), "0 ") << "the font has grown";
  }
}

TEST_F(Buttons, AGroupBoxHoldsTogglesAtTheirOwnPlacesAndExchangesTheirData) {
  auto* group = new zGroupBox(&frame, new zSizer(20, 20, 300, 200), kStyleControl, "Name", 9);
  auto* check = new zCheckBox(group, new zSizer(15, 30, 100, 30), kStyleControlStop, "one", 1);
  auto* radio = new zRadioButton(group, new zSizer(130, 90, 80, 30), kStyleControlStop, "r", 2);
  const auto* below = new zPushButton(&frame, new zGravSizer(kGravityBottom, 25, frame.sizer()),
                                      kStyleControl, "", 3);
  group->moveResize(40, 10, 250, 150);
  EXPECT_EQ(placesOf({group->widget(), check->holder(), radio->holder(), below->widget()}),
            "40,10 250x150; 55,40 100x30; 170,100 80x30; 0,275 400x25; ");
  zRect exterior;
  check->getExterior(exterior);
  const ui::ScreenArea seen = ui::areaOf(check->holder());
  EXPECT_EQ(exterior, zRect(zPoint{seen.x, seen.y}, zDimension{100, 30}));
  Widget title = ui::part(group->holder(), "Label");
  group->setBackground(zColor(0x8090A0));
  EXPECT_EQ(numbers(title, {"background"}), numbers(group->widget(), {"background"}));
  group->setText("");
  EXPECT_FALSE(ui::isViewable(title)) << "it would cut a gap into the edge";
  group->setRelief(zGroupBox::Relief::sunken);
  EXPECT_EQ(numbers(group->widget(), {"shadowType"}), "7 ");

  EXPECT_NE(numbers(check->widget(), {"indicatorType"}),
            numbers(radio->widget(), {"indicatorType"}));
  for (ziToggle* toggle : std::initializer_list<ziToggle*>{check, radio}) {
    EXPECT_EQ(toggle->storeData() + toggle->showData(), 0);
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
