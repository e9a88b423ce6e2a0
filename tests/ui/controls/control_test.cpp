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

/// A button that notes what reaches its own operations.
class ProbeButton : public zPushButton {
 public:
  explicit ProbeButton(ControlFrame* parent)
      : zPushButton(parent, new zSizer(20, 20, 100, 30), kStyleControlStop, "Probe", 7),
        journal(parent->journal) {}

  int handle(zEvent* event) override { return note("crossing" + std::to_string(event->message)); }
  int character(zEvent* /*event*/) override { return note("char"); }
  int mouseButtonDown(zEvent* /*event*/) override { return note("down"); }
  int mouseButtonUp(zEvent* /*event*/) override { return note("up"); }
  int mouseMove(zEvent* /*event*/) override { return note("move"); }
  int focus(zEvent* /*event*/) override { return note("focus"); }

  int taken = 0;

 private:
  int note(const std::string& operation) {
    journal += operation + " ";
    return taken;
  }
  std::string& journal;
};

TEST_F(ControlTest, ItsHolderHasThePlaceAndTheWidgetFillsItInAnyFont) {
  const auto push = [&](zSizer* sizer) {
    return new zPushButton(frame.get(), sizer, kStyleControl, "x", 1);
  };
  const zControl* alone = push(new zSizer());
  const zControl* atBottom = push(new zGravSizer(kGravityBottom, 25, frame->sizer()));
  zControl* moved = push(new zSizer(10, 20, 80, 30));
  moved->moveResize(30, 40, 120, 50);
  zControl* extreme = push(new zSizer(10, 20, 80, 30));
  extreme->moveResize(-90000, 5, 0, 90000);
  EXPECT_EQ(placesOf({alone->holder(), atBottom->holder(), moved->holder(), moved->widget(),
                      extreme->holder()}),
            "0,0 100x10; 0,275 400x25; 30,40 120x50; 30,40 120x50; -32768,5 1x32767; ")
      << "alone, by a layout, moved, beyond what the server knows";
  EXPECT_EQ(extreme->sizer()->rect(), zRect(zPoint{-90000, 5}, zDimension{1, 32767}));
  zRect exterior;
  moved->getExterior(exterior);
  const ui::ScreenArea area = ui::areaOf(moved->holder());
  EXPECT_EQ(exterior, zRect(zPoint{area.x, area.y}, zDimension{120, 50}));

  zEditBox box(frame.get(), new zSizer(10, 60, 200, 100), kStyleControl | kStyleBothScrolls, "", 2);
  zEditLine line(frame.get(), new zSizer(10, 170, 300, 40), kStyleControl, "text", 2);
  zListBoxUnsorted list(frame.get(), new zSizer(10, 210, 200, 80), kStyleControl, 3);
  const auto inner = [&] {
    return placesOf({box.widget(), line.widget(), ui::part(list.holder(), "ScrolledListBoxSW")});
  };
  const std::string before = inner();
  for (zControl* control : std::initializer_list<zControl*>{&box, &line, &list}) {
    control->setFontSpec(zFontSpec("courier", {0, 24}), 1);
  }
  EXPECT_EQ(inner(), before);
}

TEST_F(ControlTest, ARecordSaysItsClassAndItsStyleHowItIsShown) {
  registerRecordControls();
  std::unique_ptr<zControl> made;
  const auto make = [&](std::uint32_t controlClass, std::uint32_t style) {
    const ControlRecord record{controlClass, 0, 4, "text", style, 0, 0, 0, 0};
    zWindow* window = recordControlMaker()(frame.get(), record, new zSizer(10, 10, 120, 90));
    made.reset(static_cast<zControl*>(window));
    EXPECT_EQ(made->id(), 4);
  };
  const auto looks = [&] {
    ui::drain();
    return (ui::isViewable(made->holder()) ? "seen " : "") +
           numbers(made->widget(), {"sensitive", "traversalOn"});
  };
  const struct {
    std::uint32_t controlClass, style;
    int made;
    const char* edge;
    const char* edges;  // as it is and with the border bit
  } rows[] = {
      {kControlButton, kButtonPush, kClassPushButton, "borderWidth", "0 1 "},
      {kControlButton, kButtonDefault, kClassDefPushButton, "borderWidth", "1 1 "},
      {kControlButton, kButtonCheck, kClassCheckBox, "borderWidth", "0 1 "},
      {kControlButton, kButtonAutoCheck, kClassCheckBox, "borderWidth", "0 1 "},
      {kControlImageButton, kButtonPush, kClassPushButton, "borderWidth", "0 1 "},
      {kControlStaticText, 0, kClassStaticText, "borderWidth", "0 1 "},
      {kControlEdit, 0, kClassEditLine, "shadowThickness", "1 2 "},
      {kControlEdit, kEditMultiLine, kClassEditBox, "shadowThickness", "1 2 "},
      {kControlListBox, 0, kClassListBoxUnsorted, "borderWidth", "0 0 "},
      {kControlListBox, kListSorted, kClassListBox, "borderWidth", "0 0 "},
      {kControlListBox, kListSorted | kListMultiple, kClassListBoxBase, "borderWidth", "0 0 "},
      {kControlScrollBar, 0, kClassScrollBarCtrl, "borderWidth", "0 0 "},
      {kControlComboBox, kComboSimple, kClassComboBox, "borderWidth", "0 0 "},
      {kControlComboBox, kComboDropDown, kClassComboBoxFull, "borderWidth", "0 0 "},
      {kControlComboBox, kComboDropDownStatic, kClassComboBoxStatic, "borderWidth", "0 0 "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.controlClass << " style " << row.style);
    make(row.controlClass, row.style | kStyleControlStop);
    EXPECT_TRUE(made->isA(row.made));
    EXPECT_EQ(looks(), "seen 1 1 ");
    std::string edges = numbers(made->widget(), {row.edge});
    made->show(kShowHide);
    made->disable();
    EXPECT_EQ(looks(), "0 1 ");
    make(row.controlClass, row.style | kStyleChild | kStyleDisabled | kStyleBorder);
    EXPECT_EQ(looks(), "0 0 ");
    edges += numbers(made->widget(), {row.edge});
    made->show();
    made->enable();
    EXPECT_EQ(looks() + edges, std::string("seen 1 0 ") + row.edges);
  }
  for (const std::uint32_t kind : {kButtonGroup, kButtonRadio, kButtonAutoRadio, 13U}) {
    make(kControlButton, kStyleControl | kind);
    EXPECT_EQ(looks(), "seen 1 1 ") << "whether the style says so or not";
    EXPECT_TRUE(made->isA(kind == 13U            ? kClassPushButton
                          : kind == kButtonGroup ? kClassGroupBox
                                                 : kClassRadioButton));
  }
}

TEST_F(ControlTest, InputGoesToHandlersThenAcceleratorsThenTheOperationThenTheWidget) {
  auto* button = new ProbeButton(frame.get());
  const zEditLine edit(frame.get(), new zSizer(20, 60, 80, 30), kStyleControlStop, "", 2);
  for (const int message : {kMsgKeyDown, kMsgKeyUp, kMsgButtonDown, kMsgFocusIn, kMsgFocusOut}) {
    button->addHandler(frame.get(), kNoted, message);
  }
  zApp::instance()->handlers().add(std::make_unique<zNotifyNode>(frame.get(), kNoted, kMsgKeyDown));
  ui::moveTo(button->widget(), 5, 5);
  heard();
  // What a handler, and what an operation gives back.
  const auto act = [&](int byHandler, int byOperation, const std::function<void()>& action) {
    frame->taken = byHandler;
    button->taken = byOperation;
    action();
    return heard();
  };
  const auto type = [] { ui::typeText(" "); };
  const auto click = [&] { ui::click(button->widget(), 9, 9); };
  EXPECT_EQ(act(0, 0, [&] { focus(*button); }), "7(0) focus ");
  EXPECT_EQ(act(0, 0, type), "256(32) 256(32) char 7:0 257(32) ");
  EXPECT_EQ(act(0, 1, type), "256(32) 256(32) char 257(32) ");
  EXPECT_EQ(act(1, 0, type), "256(32) 257(32) ");
  EXPECT_EQ(act(0, 0, [] { ui::pressKey(XK_F5); }), "256(65474) 256(65474) 257(65474) ")
      << "the keysym, and no character";
  EXPECT_EQ(act(0, 0, click), "move 513(0) down up 7:0 ");
  EXPECT_EQ(act(0, 1, click), "move 513(0) down up ");
  EXPECT_EQ(act(1, 0, click), "move 513(0) up ");
  EXPECT_EQ(act(0, 0, [&] { ui::click(edit.widget(), ui::kRightButton); }), "crossing0 ");
  EXPECT_EQ(act(0, 0, [&] { ui::click(edit.widget(), ui::kMiddleButton); }), "8(0) focus 2:256 ");
  zApp::instance()->handlers().remove(zEvent::of(kMsgKeyDown), frame.get(), kNoted);
}

TEST_F(ControlTest, AnEditKeepsPlainTypingToItselfAndOffersTheRest) {
  zEditLine edit(frame.get(), new zSizer(10, 10, 200, 30), kStyleControlStop, "", 1);
  for (const int message : {kMsgKeyDown, kMsgKeyUp}) {
    edit.addHandler(frame.get(), kNoted, message);
  }
  focus(edit);
  ui::typeText("a\xe4");
  EXPECT_EQ(heard(), "1:256 1:768 1:768 ");
  ui::pressKey('o', ui::kControl);
  ui::pressKey(XK_Page_Up);
  EXPECT_EQ(heard(), "256(65507) 256(15) 256(65365) ");
  frame->taken = 1;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(textView(edit.widget()), "a\xe4^") << "a key that a handler took";
}

TEST_F(ControlTest, NotificationsReachTheHandlerOfTheirCodeFirst) {
  zPushButton button(frame.get(), new zSizer(10, 10, 90, 30), kStyleControlStop, "x", 5);
  frame->taken = 1;
  for (const int code : {kNotifyClicked, kNotifyClicked + 1}) {
    button.setNotify(frame.get(), kNoted, code);
  }
  ui::click(button.widget());
  button.removeNotify(frame.get(), kNoted, kNotifyClicked);
  ui::click(button.widget());
  EXPECT_EQ(heard(), "273(5) 5:0 ");
}

TEST_F(ControlTest, MayBeDestroyedByAnyOfItsHandlers) {
  zControl* victim = nullptr;
  // The parent keeps what is bound to the id of a control that has gone.
  int id = 100;
  const auto place = [] { return new zSizer(10, 10, 100, 100); };
  const auto filled = [&](auto* made) {
    made->addAll({"alpha", "beta"});
    victim = made;
  };
  const auto push = [&] {
    victim = new zPushButton(frame.get(), place(), kStyleControlStop, "x", ++id);
  };
  const auto edit = [&] {
    victim = new zEditLine(frame.get(), place(), kStyleControlStop, "", ++id);
  };
  const auto list = [&] {
    filled(new zListBoxUnsorted(frame.get(), place(), kStyleControlStop, ++id));
  };
  const auto combo = [&] {
    filled(new zComboBoxFull(frame.get(), place(), kStyleControlStop, ++id));
  };
  const auto dropped = [&] {
    combo();
    static_cast<zComboBoxBase*>(victim)->showDropDown();
  };
  const auto click = [&] { ui::click(victim->widget()); };
  const auto type = [] { ui::typeText("x"); };
  const auto leave = [&] { focus(*elsewhere); };
  const auto choose = [&] { ui::clickRow(ui::part(victim->holder(), "ScrolledList"), 1); };
  using Step = std::function<void()>;
  const std::tuple<Step, int, int, Step> ends[] = {
      // What is made; the message, or the code of a notification, that destroys it; its cause.
      {push, kMsgKeyDown, 0, type},
      {push, kMsgButtonDown, 0, click},
      {push, 0, kNotifyClicked, click},
      {edit, 0, kEditChanged, type},
      {edit, 0, kEditChanged, [&] { victim->setText("gone"); }},
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
      {dropped, 0, kComboHidden, [&] { victim->show(kShowHide); }},
  };
  for (const auto& [make, message, code, cause] : ends) {
    SCOPED_TRACE(testing::Message() << "message " << message << " code " << code);
    make();
    ui::drain();
    focus(*victim);
    if (message != 0) {
      victim->addPlainHandler(frame.get(), kNoted, message);
    } else {
      victim->setNotify(frame.get(), kNoted, code);
    }
    frame->action = [&] { delete std::exchange(victim, nullptr); };
    cause();
    ASSERT_EQ(victim, nullptr);
    EXPECT_EQ(openCombo, nullptr);
    ui::waitFor([] { return !ui::user().hasPopup(); }, "the end of the list that was shown");
  }
}

TEST_F(ControlTest, TakesTheColourOfItsParentWhereItIsPartOfTheGround) {
  frame->setBackground(zColor(0x8090A0));
  const auto place = [] { return new zSizer(0, 0, 80, 20); };
  const zStaticText label(frame.get(), place(), kStyleControl, "label");
  const zPushButton button(frame.get(), place(), kStyleControl, "button", 1);
  const zEditLine edit(frame.get(), place(), kStyleControl, "", 1);
  const auto colour = static_cast<int>(frame->background());
  for (Widget widget : {label.widget(), label.holder(), button.widget()}) {
    EXPECT_EQ(ui::resource(widget, "background"), colour);
  }
  EXPECT_NE(ui::resource(edit.widget(), "background"), colour);
}

}  // namespace
