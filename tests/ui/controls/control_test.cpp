// What all controls share: the holder and its place, the road of events, notifications.

#include "framework/controls/control.h"

#include "framework/controls/button.h"
#include "framework/controls/combo_box.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/application.h"
#include "framework/core/interfaces.h"
#include "framework/layout/sizers.h"
#include "resources/dialogs.h"
#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kBothBars = kStyleVertScroll | kStyleHorzScroll;

/// A button that notes what reaches its own operations.
class ProbeButton : public zPushButton {
 public:
  ProbeButton(zWindow* parent, Journal& shared)
      : zPushButton(parent, new zSizer(20, 20, 100, 30), 0x50010000, "Probe", 7), journal(shared) {}

  int handle(zEvent* event) override { return note("handle", event); }
  int character(zEvent* event) override { return note("char", event); }
  int mouseButtonDown(zEvent* event) override { return note("down", event); }
  int mouseButtonUp(zEvent* event) override { return note("up", event); }
  int mouseMove(zEvent* event) override { return note("move", event); }
  int focus(zEvent* event) override { return note("focus", event); }

  int taken = 0;

 private:
  int note(const char* operation, const zEvent* event) {
    journal.push_back(std::string(operation) + " " + std::to_string(event->message));
    return taken;
  }
  Journal& journal;
};

TEST_F(ControlTest, ItsHolderHasThePlaceAndTheWidgetFillsIt) {
  const auto push = [&](zSizer* sizer) {
    return new zPushButton(frame.get(), sizer, kShownTabStop, "x", 1);
  };
  const zControl* alone = push(new zSizer());
  const zControl* atBottom = push(new zGravSizer(kGravityBottom, 25, frame->sizer()));
  zControl* moved = push(new zSizer(10, 20, 80, 30));
  moved->moveResize(30, 40, 120, 50);
  zControl* extreme = push(new zSizer(10, 20, 80, 30));
  extreme->moveResize(-90000, 5, 0, 90000);
  zEditBox box(frame.get(), new zSizer(10, 60, 200, 100), kShownTabStop | kBothBars, "text", 2);
  zSizer unplaced(nullptr);
  const zPushButton lost(frame.get(), new zGravSizer(kGravityRight, 20, &unplaced), kShownTabStop,
                         "", 1);
  ui::drain();
  EXPECT_THAT(
      (Journal{placeOf(alone->holder()), placeOf(atBottom->holder()), placeOf(moved->holder()),
               placeOf(moved->widget()), placeOf(extreme->holder()), placeOf(box.holder())}),
      ElementsAre("0,0 100x10", "0,275 400x25", "30,40 120x50", "30,40 120x50", "-32767,5 1x32767",
                  "10,60 200x100"))
      << "alone, by a layout, moved, beyond what the server knows, with bars";
  EXPECT_EQ(lost.sizer()->rect(), zRect(zPoint{}, lost.sizer()->size()));
  zRect exterior;
  moved->getExterior(exterior);
  const ui::ScreenArea area = ui::areaOf(moved->holder());
  EXPECT_EQ(exterior, zRect(zPoint{area.x, area.y}, zDimension{120, 50}));
  EXPECT_EQ(extreme->sizer()->rect(), zRect(zPoint{-90000, 5}, zDimension{1, 32767}));
}

TEST_F(ControlTest, ItsStyleSaysWhetherItIsSeenEnabledWalkedToAndFramed) {
  using Maker = std::function<zControl*(std::uint32_t style)>;
  const auto place = [] { return new zSizer(10, 10, 120, 90); };
  zWindow* in = frame.get();
  struct Kind {
    const char* name;
    Maker make;
    const char* frameResource;
    std::vector<int> frames;  // without the border bit and with it
  };
  const Kind kinds[] = {
      {"push",
       [&](std::uint32_t s) { return new zPushButton(in, place(), s, "x", 1); },
       "borderWidth",
       {0, 1}},
      {"default",
       [&](std::uint32_t s) { return new zDefPushButton(in, place(), s, "x", 1); },
       "borderWidth",
       {1, 1}},
      {"check",
       [&](std::uint32_t s) { return new zCheckBox(in, place(), s, "x", 1); },
       "borderWidth",
       {0, 1}},
      {"text",
       [&](std::uint32_t s) { return new zStaticText(in, place(), s, "x", 1); },
       "borderWidth",
       {0, 1}},
      {"line",
       [&](std::uint32_t s) { return new zEditLine(in, place(), s, "x", 1); },
       "shadowThickness",
       {1, 2}},
      {"list",
       [&](std::uint32_t s) { return new zListBox(in, place(), s, 1); },
       "shadowThickness",
       {2, 2}},
      {"combo",
       [&](std::uint32_t s) { return new zComboBoxFull(in, place(), s | 2U, 1); },
       "shadowThickness",
       {2, 2}},
      {"bar",
       [&](std::uint32_t s) { return new zScrollBarCtrl(in, place(), s); },
       "shadowThickness",
       {2, 2}},
  };
  const auto looks = [](const zControl& control) {
    ui::drain();
    EXPECT_EQ(control.isEnabled(), ui::resource(control.widget(), "sensitive") != 0);
    return std::string(ui::isViewable(control.holder()) ? "seen " : "") +
           (control.isEnabled() ? "enabled " : "") +
           (ui::resource(control.widget(), "traversalOn") != 0 ? "walked to" : "");
  };
  for (const Kind& kind : kinds) {
    SCOPED_TRACE(kind.name);
    const std::unique_ptr<zControl> plain(kind.make(kShownTabStop));
    const std::unique_ptr<zControl> other(kind.make(kStyleChild | kStyleDisabled | kStyleBorder));
    Journal seen = {looks(*plain), looks(*other)};
    plain->show(kShowHide);
    plain->disable();
    other->show();
    other->enable();
    seen.insert(seen.end(), {looks(*plain), looks(*other)});
    EXPECT_THAT(seen, ElementsAre("seen enabled walked to", "", "walked to", "seen enabled "));
    EXPECT_EQ((std::vector{ui::resource(plain->widget(), kind.frameResource),
                           ui::resource(other->widget(), kind.frameResource)}),
              kind.frames);
  }
}

zWindow* makeLabel(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  return new zStaticText(parent, sizer, record.style, record.text, static_cast<int>(record.id));
}

TEST_F(ControlTest, IsMadeFromTheRecordOfADialogByItsClassAndStyle) {
  registerRecordControls();
  const std::uint32_t ownClass = registerControlClass("label", makeLabel);
  const std::uint32_t onlyName = registerControlClass("known by name");
  EXPECT_EQ(registerControlClass("known by name"), onlyName);
  struct Row {
    std::uint32_t controlClass;
    std::uint32_t style;
    int made;  // 0 for nothing
    bool isTabStop = false;
  };
  const Row rows[] = {
      {kControlButton, kButtonPush, kClassPushButton},
      {kControlButton, kButtonPush | kStyleTabStop, kClassPushButton, true},
      {kControlButton, kButtonDefault, kClassDefPushButton},
      {kControlButton, kButtonCheck, kClassCheckBox},
      {kControlButton, kButtonAutoCheck, kClassCheckBox},
      {kControlButton, kButtonRadio, kClassRadioButton, true},
      {kControlButton, kButtonAutoRadio, kClassRadioButton, true},
      {kControlButton, kButtonGroup, kClassGroupBox},
      {kControlButton, 13, kClassPushButton, true},
      {kControlImageButton, kButtonPush, kClassPushButton},
      {kControlEdit, 0, kClassEditLine},
      {kControlEdit, kEditMultiLine, kClassEditBox},
      {kControlStaticText, 0, kClassStaticText},
      {kControlListBox, 0, kClassListBoxUnsorted},
      {kControlListBox, kListSorted, kClassListBox},
      {kControlListBox, kListSorted | kListMultiple, kClassListBoxBase},
      {kControlScrollBar, 0, kClassScrollBarCtrl},
      {kControlComboBox, kComboSimple, kClassComboBox},
      {kControlComboBox, kComboDropDown, kClassComboBoxFull},
      {kControlComboBox, kComboDropDownStatic, kClassComboBoxStatic},
      {ownClass, 0, kClassStaticText},
      {onlyName, 0, 0},
      {onlyName + 1, 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.controlClass << " style " << row.style);
    ControlRecord record{};
    record.controlClass = row.controlClass;
    record.style = row.style;
    record.id = 4;
    record.text = "text";
    auto sizer = std::make_unique<zSizer>(0, 0, 50, 40);
    zWindow* made = recordControlMaker()(frame.get(), record, sizer.get());
    EXPECT_EQ(made != nullptr, row.made != 0);
    if (made != nullptr) {
      EXPECT_EQ(made->sizer(), sizer.release());
      EXPECT_TRUE(made->isA(row.made));
      EXPECT_EQ(made->id(), 4);
      EXPECT_EQ((made->style() & kStyleTabStop) != 0, row.isTabStop);
    }
  }
}

TEST_F(ControlTest, KeepsItsPlaceWhenTheFontChanges) {
  const zRCFont& large = [] {
    zFontSpec spec = zFontSpec::stock(11);
    spec.log().height = 24;
    return zRCFont(spec);
  }();
  zControl* controls[] = {
      new zEditBox(frame.get(), new zSizer(10, 10, 300, 150), kShownTabStop | kBothBars, "text", 1),
      new zEditLine(frame.get(), new zSizer(10, 170, 300, 40), kShownTabStop, "text", 2),
      new zListBoxUnsorted(frame.get(), new zSizer(10, 210, 200, 80), 0x50B10001, 3)};
  const auto places = [&] {
    ui::drain();
    return Journal{placeOf(controls[0]->widget()), placeOf(controls[1]->widget()),
                   placeOf(ui::part(controls[2]->holder(), "ScrolledListBoxSW"))};
  };
  const Journal before = places();
  for (zControl* control : controls) {
    control->setFont(large, 1);
  }
  EXPECT_EQ(places(), before);
}

TEST_F(ControlTest, KeysGoToHandlersThenAcceleratorsThenTheOperationThenTheWidget) {
  auto* button = new ProbeButton(frame.get(), journal);
  Listener application(journal, "application");
  for (const int message : {kMsgKeyDown, kMsgKeyUp}) {
    button->addPlainHandler(&listener, Listener::handler(), message);
  }
  zApp::instance()->handlers().add(
      std::make_unique<zNotifyNode>(&application, Listener::handler(), kMsgKeyDown));
  focus(*button);
  heard();
  const auto press = [&](ui::KeySymbol key) {
    ui::pressKey(key);
    return heard();
  };
  EXPECT_THAT(press('q'),
              ElementsAre("handler 256 113", "application 256 113", "char 258", "handler 257 113"));
  EXPECT_THAT(press(XK_F5),
              ElementsAre("handler 256 65474", "application 256 65474", "handler 257 65474"))
      << "the keysym, and no character";
  EXPECT_THAT(press(XK_Return), Contains("char 258"));
  EXPECT_EQ(told(), (Told{{7, kNotifyClicked}}));
  button->taken = 1;
  press(XK_Return);
  EXPECT_EQ(told(), Told{}) << "an operation took it";
  listener.taken = 1;
  EXPECT_THAT(press(XK_Return), ElementsAre("handler 256 13", "handler 257 13"));
  zApp::instance()->handlers().remove(zEvent::of(kMsgKeyDown), &application, Listener::handler());
}

TEST_F(ControlTest, AnEditKeepsPlainTypingToItselfAndOffersTheRest) {
  auto* edit = new zEditLine(frame.get(), new zSizer(10, 10, 200, 30), kShownTabStop, "", 1);
  for (const int message : {kMsgKeyDown, kMsgKeyUp}) {
    edit->addPlainHandler(&listener, Listener::handler(), message);
  }
  focus(*edit);
  ui::typeText("aB\xe4");
  EXPECT_THAT(heard(), ElementsAre("handler 256 65505")) << "only the Shift key";
  ui::pressKey('o', ui::kControl);
  EXPECT_THAT(heard(), ElementsAre("handler 256 65507", "handler 256 15"));
  ui::pressKey('A', ui::kAlt);
  EXPECT_THAT(heard(), Contains("handler 256 65"));
  ui::pressKey(XK_Page_Up);
  EXPECT_THAT(heard(), ElementsAre("handler 256 65365"));
  listener.taken = 1;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(textView(edit->widget()), "aB\xe4^") << "a key that a handler took";
  listener.taken = 0;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(textView(edit->widget()), "aB^");
}

TEST_F(ControlTest, MouseEventsReachHandlersThenOperationsAndCanBeKeptFromTheWidget) {
  auto* button = new ProbeButton(frame.get(), journal);
  button->addHandler(&listener, Listener::handler(), kMsgButtonDown);
  focus(*button);
  ui::moveTo(frame->widget(), 300, 200);
  heard();
  ui::moveTo(button->widget(), 5, 5);
  EXPECT_THAT(heard(), Contains("handle 0")) << "the crossing";
  ui::moveTo(button->widget(), 9, 9);
  EXPECT_THAT(heard(), ElementsAre("move 512"));
  ui::pressButton();
  ui::releaseButton();
  EXPECT_THAT(heard(), ElementsAre("handler 513 0", "down 513", "up 514"));
  EXPECT_EQ(told(), (Told{{7, kNotifyClicked}}));
  button->taken = 1;
  ui::click(button->widget());
  EXPECT_EQ(told(), Told{}) << "an operation took the press";
  heard();
  listener.taken = 1;
  ui::click(button->widget());
  EXPECT_THAT(heard(), testing::Not(Contains("down 513")));
}

TEST_F(ControlTest, FocusChangesReachHandlersAndTheOperation) {
  auto* button = new ProbeButton(frame.get(), journal);
  auto* first = new zEditLine(frame.get(), new zSizer(20, 60, 80, 30), kShownTabStop, "", 2);
  button->addHandler(&listener, Listener::handler(), kMsgFocusIn);
  button->addHandler(&listener, Listener::handler(), kMsgFocusOut);
  focus(*first);
  heard();
  focus(*button);
  EXPECT_THAT(heard(), ElementsAre("handler 7 0", "focus 7"));
  // By a click with the first two mouse buttons.
  ui::click(first->widget(), ui::kRightButton);
  EXPECT_THAT(heard(), testing::Not(Contains("handler 8 0")));
  ui::click(first->widget(), ui::kLeftButton);
  ui::waitForFocus(first->widget());
  EXPECT_THAT(heard(), ElementsAre("handler 8 0", "focus 8"));
  focus(*button);
  ui::click(first->widget(), ui::kMiddleButton);
  ui::waitForFocus(first->widget());
}

TEST_F(ControlTest, NotificationsReachTheHandlerOfTheirCodeFirst) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "x", 5);
  Listener other(journal, "other");
  button->setNotify(&listener, Listener::handler(), kNotifyClicked);
  button->setNotify(&other, Listener::handler(), kNotifyClicked + 1);
  listener.taken = 1;
  ui::click(button->widget());
  EXPECT_THAT(heard(), ElementsAre("handler 273 5"));
  EXPECT_EQ(told(), Told{});
  button->removeNotify(&listener, Listener::handler(), kNotifyClicked);
  ui::click(button->widget());
  EXPECT_THAT(heard(), IsEmpty());
  EXPECT_EQ(told(), (Told{{5, kNotifyClicked}}));
}

TEST_F(ControlTest, MayBeDestroyedByAnyOfItsHandlers) {
  zControl* victim = nullptr;
  const auto doom = [&](zControl* made) {
    victim = made;
    listener.action = [&] { delete std::exchange(victim, nullptr); };
  };
  const auto place = [] { return new zSizer(10, 10, 100, 30); };

  doom(new ProbeButton(frame.get(), journal));
  focus(*victim);
  victim->addPlainHandler(&listener, Listener::handler(), kMsgKeyDown);
  ui::pressKey('x');
  EXPECT_EQ(victim, nullptr) << "a key";

  doom(new ProbeButton(frame.get(), journal));
  victim->addHandler(&listener, Listener::handler(), kMsgButtonDown);
  ui::click(frame->widget(), 30, 30);
  EXPECT_EQ(victim, nullptr) << "a press";

  doom(new zPushButton(frame.get(), place(), kShownTabStop, "x", 1));
  victim->setNotify(&listener, Listener::handler(), kNotifyClicked);
  ui::click(victim->widget());
  EXPECT_EQ(victim, nullptr) << "a click";

  for (const bool typed : {true, false}) {
    doom(new zEditLine(frame.get(), place(), kShownTabStop, "", 1));
    focus(*victim);
    victim->setNotify(&listener, Listener::handler(), kEditChanged);
    typed ? ui::typeText("x") : victim->setText("gone");
    EXPECT_EQ(victim, nullptr) << "a change";
  }
  ui::drain();
}

TEST_F(ControlTest, TakesTheColourOfItsParentWhereItIsPartOfTheGround) {
  frame->setBackground(zColor(0x8090A0));
  const zStaticText label(frame.get(), new zSizer(0, 0, 80, 20), 0x50000000, "label");
  const zPushButton button(frame.get(), new zSizer(0, 0, 80, 20), 0x50000000, "button", 1);
  const zEditLine edit(frame.get(), new zSizer(0, 30, 80, 30), kShownTabStop, "", 1);
  const int colour = static_cast<int>(frame->background());
  for (Widget widget : {label.widget(), label.holder(), button.widget()}) {
    EXPECT_EQ(ui::resource(widget, "background"), colour);
  }
  EXPECT_NE(ui::resource(edit.widget(), "background"), colour);
}

}  // namespace
