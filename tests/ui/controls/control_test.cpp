// What all controls share: the look that a record gives them, the road of events, their end.

#include "framework/controls/control.h"

#include "framework/controls/button.h"
#include "framework/controls/combo_box.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/application.h"
#include "framework/core/interfaces.h"
#include "resources/dialogs.h"
#include "tests/ui/controls/control_fixture.h"

namespace {

/// A button that notes what reaches its own operations.
class ProbeButton : public zPushButton {
 public:
  using zPushButton::zPushButton;

  int handle(zEvent* event) override { return note("crossing" + std::to_string(event->message)); }
  int character(zEvent* /*event*/) override { return note("char"); }
  int mouseButtonDown(zEvent* /*event*/) override { return note("down"); }
  int mouseButtonUp(zEvent* /*event*/) override { return note("up"); }
  int mouseMove(zEvent* /*event*/) override { return note("move"); }
  int focus(zEvent* /*event*/) override { return note("focus"); }

  int taken = 0;

 private:
  int note(const std::string& operation) {
    static_cast<ControlFrame*>(parent())->journal += operation + " ";
    return taken;
  }
};

TEST_F(ControlTest, ARecordSaysItsClassAndItsStyleHowItIsShown) {
  registerRecordControls();
  frame.setBackground(zColor(0x8090A0));
  std::unique_ptr<zControl> made;
  // Whether it is seen, enabled and a stop of Tab; the thickness of its border and of its shadow;
  // whether it has the colour of the ground.
  const auto look = [&] {
    ui::drain();
    const auto is = [&](const char* resource) { return ui::resource(made->widget(), resource); };
    const bool isGround = is("background") == static_cast<int>(frame.background());
    return std::string(ui::isViewable(made->widget()) ? "s" : "") +
           (is("sensitive") != 0 ? "e" : "") + (is("traversalOn") != 0 ? "t " : " ") +
           ui::numbers(made->widget(), {"borderWidth", "shadowThickness"}) + (isGround ? "g" : "");
  };
  const auto make = [&](std::uint32_t controlClass, std::uint32_t style) {
    const ControlRecord record{controlClass, 0, 4, "text", style, 0, 0, 0, 0};
    zWindow* window = recordControlMaker()(&frame, record, new zSizer(10, 10, 120, 90));
    made.reset(static_cast<zControl*>(window));
    EXPECT_EQ(made->id(), 4);
    return look();
  };
  const std::tuple<std::uint32_t, std::uint32_t, int, const char*, const char*> rows[] = {
      // The record; what it makes, with all that it can show, and disabled with a border.
      {kControlButton, kButtonPush, kClassPushButton, "set 0 2 g", " 1 2 g"},
      {kControlButton, kButtonDefault, kClassDefPushButton, "set 1 2 g", " 1 2 g"},
      {kControlButton, kButtonCheck, kClassCheckBox, "set 0 0 g", " 1 0 g"},
      {kControlButton, kButtonRadio, kClassRadioButton, "set 0 0 g", "t 1 0 g"},
      {kControlButton, kButtonGroup, kClassGroupBox, "set 0 2 g", "t 1 2 g"},
      {kControlStaticText, 0, kClassStaticText, "set 0 0 g", " 1 0 g"},
      {kControlEdit, 0, kClassEditLine, "set 0 1 ", " 0 2 "},
      {kControlEdit, kEditMultiLine, kClassEditBox, "set 0 1 ", " 0 2 "},
      {kControlListBox, 0, kClassListBoxUnsorted, "set 0 2 ", " 0 2 "},
      {kControlListBox, kListSorted, kClassListBox, "set 0 2 ", " 0 2 "},
      {kControlListBox, kListSorted | kListMultiple, kClassListBoxBase, "set 0 2 ", " 0 2 "},
      {kControlScrollBar, 0, kClassScrollBarCtrl, "set 0 2 ", " 0 2 "},
      {kControlComboBox, kComboSimple, kClassComboBox, "set 0 2 ", " 0 2 "},
      {kControlComboBox, kComboDropDown, kClassComboBoxFull, "set 0 2 ", " 0 2 "},
      {kControlComboBox, kComboDropDownStatic, kClassComboBoxStatic, "set 0 2 ", " 0 2 "},
  };
  for (const auto& [controlClass, style, result, plain, other] : rows) {
    SCOPED_TRACE(testing::Message() << controlClass << " style " << style);
    EXPECT_EQ(make(controlClass, style | kStyleControlStop), plain);
    EXPECT_TRUE(made->isA(result));
    EXPECT_EQ(make(controlClass, style | kStyleChild | kStyleDisabled | kStyleBorder), other);
  }
}

TEST_F(ControlTest, InputGoesToHandlersThenAcceleratorsThenTheOperationThenTheWidget) {
  auto* button = new ProbeButton(&frame, place(), kStyleControlStop, "Probe", 7);
  zEditLine edit(&frame, place(60), kStyleControlStop, "", 2);
  for (const int message : {kMsgKeyDown, kMsgKeyUp, kMsgButtonDown, kMsgFocusIn, kMsgFocusOut}) {
    button->addHandler(&frame, kNoted, message);
  }
  zApp::instance()->handlers().add(std::make_unique<zNotifyNode>(&frame, kNoted, kMsgKeyDown));
  ui::moveTo(button->widget(), 5, 5);
  heard();
  // What a handler, and what an operation gives back.
  const auto act = [&](int byHandler, int byOperation, const std::function<void()>& action) {
    frame.taken = byHandler;
    button->taken = byOperation;
    action();
    return heard();
  };
  const auto type = [] { ui::typeText(" "); };
  const auto click = [&] { ui::click(button->widget(), 9, 9); };
  EXPECT_EQ(act(0, 0, [&] { ui::focus(*button); }), "7(0) focus ");
  EXPECT_EQ(act(0, 0, type), "256(32) 256(32) char 7:0 257(32) ");
  EXPECT_EQ(act(0, 1, type), "256(32) 256(32) char 257(32) ");
  EXPECT_EQ(act(1, 0, type), "256(32) 257(32) ");
  EXPECT_EQ(act(0, 0, click), "move 513(0) down up 7:0 ");
  EXPECT_EQ(act(1, 0, click), "move 513(0) up ");
  EXPECT_EQ(act(0, 0, [&] { ui::click(edit.widget(), ui::kRightButton); }), "crossing0 ");
  EXPECT_EQ(act(0, 0, [&] { ui::click(edit.widget(), ui::kMiddleButton); }), "8(0) focus 2:256 ");

  // An edit keeps plain typing and the releases of keys to itself.
  edit.addHandler(&frame, kNoted, kMsgKeyUp);
  EXPECT_EQ(act(0, 0, [] { ui::typeText("a\xe4"); }), "2:768 2:768 ");
  EXPECT_EQ(act(0, 0, [] { ui::pressKey('o', ui::kControl); }), "256(65507) 256(15) ");
  EXPECT_EQ(act(1, 0, [] { ui::pressKey(XK_BackSpace); }), "256(8) ");
  EXPECT_EQ(ui::textView(edit.widget()), "a\xe4^") << "the key was taken";
  zApp::instance()->handlers().remove(zEvent::of(kMsgKeyDown), &frame, kNoted);
}

TEST_F(ControlTest, MayBeDestroyedByAnyOfItsHandlers) {
  zControl* victim = nullptr;
  // The parent keeps what is bound to the id of a control that has gone.
  int id = 100;
  const auto push = [&] { victim = new zPushButton(&frame, place(), kStyleControlStop, "", ++id); };
  const auto edit = [&] { victim = new zEditLine(&frame, place(), kStyleControlStop, "", ++id); };
  const auto fill = [&](auto* made) {
    made->addAll({"alpha", "beta"});
    victim = made;
  };
  const auto list = [&] {
    fill(new zListBoxUnsorted(&frame, place(10, 100), kStyleControlStop, ++id));
  };
  const auto combo = [&] {
    fill(new zComboBoxFull(&frame, place(10, 100), kStyleControlStop, ++id));
  };
  const auto dropped = [&] {
    combo();
    static_cast<zComboBoxFull*>(victim)->showDropDown();
  };
  const auto click = [&] { ui::click(victim->widget()); };
  const auto type = [] { ui::typeText("x"); };
  const auto leave = [&] { ui::focus(*elsewhere); };
  const auto choose = [&] { ui::clickRow(ui::part(victim->holder(), "ScrolledList"), 1); };
  using Step = std::function<void()>;
  const std::tuple<Step, int, int, Step> ends[] = {
      // What is made; the message, or the code of a notification, that destroys it; its cause.
      {push, kMsgKeyDown, 0, type},
      {push, kMsgButtonDown, 0, click},
      {push, 0, kNotifyClicked, click},
      {edit, 0, kEditChanged, type},
      {list, 0, kListSelectionChanged, [&] { ui::clickRow(victim->widget(), 1); }},
      {list, 0, kListDoubleClick, [&] { ui::doubleClickRow(victim->widget(), 1); }},
      {combo, 0, kComboEditUpdate, type},
      {combo, 0, kComboEditChanged, type},
      {combo, 0, kComboSelectionChanged, [] { ui::pressKey(XK_Down); }},
      {combo, 0, kComboFocusOut, leave},
      {combo, 0, kComboShown, [] { ui::pressKey(XK_Down, ui::kAlt); }},
      {dropped, 0, kComboEditChanged, type},
      {dropped, 0, kComboSelectionChanged, choose},
      {dropped, 0, kComboHidden, choose},
      {dropped, 0, kComboHidden, leave},
      {dropped, 0, kComboHidden, [&] { victim->moveResize(20, 20, 50, 50); }},
  };
  for (const auto& [make, message, code, cause] : ends) {
    SCOPED_TRACE(testing::Message() << "message " << message << " code " << code);
    make();
    ui::drain();
    ui::focus(*victim);
    if (message != 0) {
      victim->addPlainHandler(&frame, kNoted, message);
    } else {
      victim->setNotify(&frame, kNoted, code);
    }
    frame.action = [&] { delete std::exchange(victim, nullptr); };
    cause();
    ASSERT_EQ(victim, nullptr);
    EXPECT_EQ(openCombo, nullptr);
    ui::waitFor([] { return !ui::user().hasPopup(); }, "the end of the list that was shown");
  }
}

}  // namespace
