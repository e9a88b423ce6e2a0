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

TEST_F(ControlTest, ItsHolderHasThePlaceAndTheWidgetFillsItInAnyFont) {
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
  zEditLine line(frame.get(), new zSizer(10, 170, 300, 40), kShownTabStop, "text", 2);
  zListBoxUnsorted list(frame.get(), new zSizer(10, 210, 200, 80), 0x50B10001, 3);
  zSizer unplaced(nullptr);
  const zControl* lost = push(new zGravSizer(kGravityRight, 20, &unplaced));
  const auto inner = [&] {
    ui::drain();
    return placesOf({box.widget(), line.widget(), ui::part(list.holder(), "ScrolledListBoxSW")});
  };
  const std::string before = inner();
  EXPECT_EQ(placesOf({alone->holder(), atBottom->holder(), moved->holder(), moved->widget(),
                      extreme->holder(), box.holder()}),
            "0,0 100x10; 0,275 400x25; 30,40 120x50; 30,40 120x50; -32768,5 1x32767; "
            "10,60 200x100; ")
      << "alone, by a layout, moved, beyond what the server knows, with bars";
  for (zControl* control : std::initializer_list<zControl*>{&box, &line, &list}) {
    control->setFontSpec(zFontSpec("courier", {0, 24}), 1);
  }
  EXPECT_EQ(inner(), before);
  EXPECT_EQ(lost->sizer()->rect(), zRect(zPoint{}, lost->sizer()->size()));
  zRect exterior;
  moved->getExterior(exterior);
  EXPECT_EQ(exterior.pos(), (zPoint{ui::areaOf(moved->holder()).x, ui::areaOf(moved->holder()).y}));
  EXPECT_EQ(exterior.size(), (zDimension{120, 50}));
  EXPECT_EQ(extreme->sizer()->rect(), zRect(zPoint{-90000, 5}, zDimension{1, 32767}));
}

zWindow* makeLabel(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  return new zStaticText(parent, sizer, record.style, record.text, static_cast<int>(record.id));
}

class RecordTest : public ControlTest {
 protected:
  RecordTest() { registerRecordControls(); }

  std::unique_ptr<zControl> make(std::uint32_t controlClass, std::uint32_t style) {
    ControlRecord record{};
    record.controlClass = controlClass;
    record.style = style;
    record.id = 4;
    record.text = "text";
    auto sizer = std::make_unique<zSizer>(10, 10, 120, 90);
    zWindow* made = recordControlMaker()(frame.get(), record, sizer.get());
    EXPECT_TRUE(made == nullptr || (made->id() == 4 && made->sizer() == sizer.release()));
    return std::unique_ptr<zControl>(dynamic_cast<zControl*>(made));
  }
  static std::string looks(const zControl& control) {
    ui::drain();
    EXPECT_EQ(control.isEnabled(), ui::resource(control.widget(), "sensitive") != 0);
    return std::string(ui::isViewable(control.holder()) ? "seen " : "") +
           (control.isEnabled() ? "enabled " : "") +
           (ui::resource(control.widget(), "traversalOn") != 0 ? "walked to" : "");
  }
  /// The style says whether it is seen, enabled and walked to, and how its frame is drawn, without
  /// the border bit and with it.
  void check(std::uint32_t controlClass, std::uint32_t kind, const std::vector<int>& frames) {
    const auto plain = make(controlClass, kind | kShownTabStop);
    const auto other = make(controlClass, kind | kStyleChild | kStyleDisabled | kStyleBorder);
    Journal seen = {looks(*plain), looks(*other)};
    plain->show(kShowHide);
    plain->disable();
    other->show();
    other->enable();
    seen.insert(seen.end(), {looks(*plain), looks(*other)});
    EXPECT_THAT(seen, ElementsAre("seen enabled walked to", "", "walked to", "seen enabled "));
    const bool isFlat = plain->kind() == kKindButton || plain->kind() == kKindStatic;
    const char* frameResource = isFlat ? "borderWidth" : "shadowThickness";
    EXPECT_EQ((std::vector{ui::resource(plain->widget(), frameResource),
                           ui::resource(other->widget(), frameResource)}),
              frames);
  }
};

TEST_F(RecordTest, SaysTheClassAndTheStyleOfAControl) {
  const std::uint32_t ownClass = registerControlClass("label", makeLabel);
  const std::uint32_t onlyName = registerControlClass("known by name");
  EXPECT_EQ(registerControlClass("known by name"), onlyName);
  const struct {
    std::uint32_t controlClass, style;
    int made;  // 0 for nothing
    std::vector<int> frames = {};
    bool isTabStop = false;
  } rows[] = {
      {kControlButton, kButtonPush, kClassPushButton, {0, 1}},
      {kControlButton, kButtonPush | kStyleTabStop, kClassPushButton, {}, true},
      {kControlButton, kButtonDefault, kClassDefPushButton, {1, 1}},
      {kControlButton, kButtonCheck, kClassCheckBox, {0, 1}},
      {kControlButton, kButtonAutoCheck, kClassCheckBox},
      {kControlButton, kButtonRadio, kClassRadioButton, {}, true},
      {kControlButton, kButtonAutoRadio, kClassRadioButton, {}, true},
      {kControlButton, kButtonGroup, kClassGroupBox},
      {kControlButton, 13, kClassPushButton, {}, true},
      {kControlImageButton, kButtonPush, kClassPushButton},
      {kControlEdit, 0, kClassEditLine, {1, 2}},
      {kControlEdit, kEditMultiLine, kClassEditBox},
      {kControlStaticText, 0, kClassStaticText, {0, 1}},
      {kControlListBox, 0, kClassListBoxUnsorted, {2, 2}},
      {kControlListBox, kListSorted, kClassListBox},
      {kControlListBox, kListSorted | kListMultiple, kClassListBoxBase},
      {kControlScrollBar, 0, kClassScrollBarCtrl, {2, 2}},
      {kControlComboBox, kComboSimple, kClassComboBox},
      {kControlComboBox, kComboDropDown, kClassComboBoxFull, {2, 2}},
      {kControlComboBox, kComboDropDownStatic, kClassComboBoxStatic},
      {ownClass, 0, kClassStaticText},
      {onlyName, 0, 0},
      {onlyName + 1, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.controlClass << " style " << row.style);
    const auto made = make(row.controlClass, row.style);
    ASSERT_EQ(made != nullptr, row.made != 0);
    EXPECT_TRUE(made == nullptr || made->isA(row.made));
    EXPECT_EQ(made != nullptr && (made->style() & kStyleTabStop) != 0, row.isTabStop);
    if (!row.frames.empty()) {
      check(row.controlClass, row.style, row.frames);
    }
  }
}

TEST_F(ControlTest, KeysGoToHandlersThenAcceleratorsThenTheOperationThenTheWidget) {
  auto* button = new ProbeButton(frame.get(), journal);
  Listener application(journal, "application");
  button->addPlainHandler(&listener, Listener::handler(), kMsgKeyDown);
  button->addPlainHandler(&listener, Listener::handler(), kMsgKeyUp);
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
  button->taken = 1;
  press(XK_Return);
  EXPECT_EQ(told(), (Told{{7, kNotifyClicked}})) << "only the one that no operation took";
  listener.taken = 1;
  EXPECT_THAT(press(XK_Return), ElementsAre("handler 256 13", "handler 257 13"));
  zApp::instance()->handlers().remove(zEvent::of(kMsgKeyDown), &application, Listener::handler());
}

TEST_F(ControlTest, AnEditKeepsPlainTypingToItselfAndOffersTheRest) {
  auto* edit = new zEditLine(frame.get(), new zSizer(10, 10, 200, 30), kShownTabStop, "", 1);
  edit->addPlainHandler(&listener, Listener::handler(), kMsgKeyDown);
  edit->addPlainHandler(&listener, Listener::handler(), kMsgKeyUp);
  focus(*edit);
  ui::typeText("aB\xe4");
  ui::pressKey('o', ui::kControl);
  ui::pressKey(XK_Page_Up);
  EXPECT_THAT(heard(), ElementsAre("handler 256 65505", "handler 256 65507", "handler 256 15",
                                   "handler 256 65365"))
      << "of the typing only the Shift key";
  ui::pressKey('A', ui::kAlt);
  EXPECT_THAT(heard(), Contains("handler 256 65"));
  listener.taken = 1;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(textView(edit->widget()), "aB\xe4^") << "a key that a handler took";
  listener.taken = 0;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(textView(edit->widget()), "aB^");
}

TEST_F(ControlTest, TheMouseAndTheFocusReachHandlersThenOperationsAndCanBeKeptFromTheWidget) {
  auto* button = new ProbeButton(frame.get(), journal);
  auto* edit = new zEditLine(frame.get(), new zSizer(20, 60, 80, 30), kShownTabStop, "", 2);
  for (const int message : {kMsgButtonDown, kMsgFocusIn, kMsgFocusOut}) {
    button->addHandler(&listener, Listener::handler(), message);
  }
  focus(*edit);
  heard();
  focus(*button);
  EXPECT_THAT(heard(), ElementsAre("handler 7 0", "focus 7"));
  ui::moveTo(button->widget(), 5, 5);
  EXPECT_THAT(heard(), Contains("handle 0")) << "the crossing";
  ui::moveTo(button->widget(), 9, 9);
  ui::pressButton();
  ui::releaseButton();
  EXPECT_THAT(heard(), ElementsAre("move 512", "handler 513 0", "down 513", "up 514"));
  button->taken = 1;
  ui::click(button->widget());
  EXPECT_EQ(told(), (Told{{7, kNotifyClicked}})) << "only of the press that no operation took";
  heard();
  listener.taken = 1;
  ui::click(button->widget());
  EXPECT_THAT(heard(), testing::Not(Contains("down 513")));
  listener.taken = 0;
  button->taken = 0;
  ui::click(edit->widget(), ui::kRightButton);
  EXPECT_THAT(heard(), testing::Not(Contains("handler 8 0")));
  ui::click(edit->widget(), ui::kLeftButton);
  ui::waitForFocus(edit->widget());
  EXPECT_THAT(heard(), testing::IsSupersetOf({"handler 8 0", "focus 8"}));
  focus(*button);
  ui::click(edit->widget(), ui::kMiddleButton);
  ui::waitForFocus(edit->widget());
}

TEST_F(ControlTest, NotificationsReachTheHandlerOfTheirCodeFirst) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "x", 5);
  Listener other(journal, "other");
  button->setNotify(&listener, Listener::handler(), kNotifyClicked);
  button->setNotify(&other, Listener::handler(), kNotifyClicked + 1);
  listener.taken = 1;
  ui::click(button->widget());
  EXPECT_EQ(told(), Told{});
  button->removeNotify(&listener, Listener::handler(), kNotifyClicked);
  ui::click(button->widget());
  EXPECT_THAT(heard(), ElementsAre("handler 273 5"));
  EXPECT_EQ(told(), (Told{{5, kNotifyClicked}}));
}

TEST_F(ControlTest, MayBeDestroyedByAnyOfItsHandlers) {
  zControl* victim = nullptr;
  const auto click = [&] { ui::click(victim->widget()); };
  const std::tuple<const char*, bool, int, std::function<void()>> ends[] = {
      {"a key", false, kMsgKeyDown, [] { ui::pressKey('x'); }},
      {"a press", false, kMsgButtonDown, click},
      {"a click", false, 0, click},
      {"typing", true, 0, [] { ui::typeText("x"); }},
      {"a new text", true, 0, [&] { victim->setText("gone"); }},
  };
  for (const auto& [way, isEdit, message, act] : ends) {
    zSizer* place = new zSizer(10, 10, 100, 30);
    victim = isEdit
                 ? static_cast<zControl*>(new zEditLine(frame.get(), place, kShownTabStop, "", 1))
                 : new zPushButton(frame.get(), place, kShownTabStop, "x", 1);
    focus(*victim);
    if (message != 0) {
      victim->addPlainHandler(&listener, Listener::handler(), message);
    } else {
      victim->setNotify(&listener, Listener::handler(), isEdit ? kEditChanged : kNotifyClicked);
    }
    listener.action = [&] { delete std::exchange(victim, nullptr); };
    act();
    EXPECT_EQ(victim, nullptr) << way;
    ui::drain();
  }
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
