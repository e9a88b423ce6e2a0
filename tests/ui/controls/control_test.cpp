// What all controls share: the holder and its place, the road of events, notifications.

#include "framework/controls/control.h"

#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/core/application.h"
#include "framework/core/interfaces.h"
#include "framework/layout/sizers.h"
#include "resources/dialogs.h"
#include "tests/ui/controls/list_view.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Keeps the message and code of what its handlers are offered.
class Listener : public zEvH {
 public:
  int onEvent(zEvent* event) {
    seen.push_back(std::to_string(event->message) + " " + std::to_string(event->wparam));
    return taken;
  }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  int taken = 0;

 private:
  std::vector<std::string> seen;
};

const zHandler kOnEvent = toHandler(&Listener::onEvent);

/// A button that keeps what reaches its own operations.
class ProbeButton : public zPushButton {
 public:
  ProbeButton(zWindow* parent, std::uint32_t style)
      : zPushButton(parent, new zSizer(20, 20, 100, 30), style, "Probe", 7) {}

  int handle(zEvent* event) override { return note("handle", event); }
  int character(zEvent* event) override { return note("char", event); }
  int mouseButtonDown(zEvent* event) override { return note("down", event); }
  int mouseButtonUp(zEvent* event) override { return note("up", event); }
  int mouseMove(zEvent* event) override { return note("move", event); }
  int focus(zEvent* event) override { return note("focus", event); }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  int taken = 0;

 private:
  int note(const char* operation, const zEvent* event) {
    seen.push_back(std::string(operation) + " " + std::to_string(event->message));
    return taken;
  }
  std::vector<std::string> seen;
};

TEST_F(ControlTest, OfUnknownSizeGetsWhatItsLayoutGivesOr100By10) {
  auto* alone = new zPushButton(frame.get(), new zSizer(), kShownTabStop, "x", 1);
  EXPECT_EQ(alone->sizer()->size(), (zDimension{100, 10}));
  ui::drain();
  EXPECT_EQ(ui::areaOf(alone->holder()).width, 100);
  EXPECT_EQ(ui::areaOf(alone->holder()).height, 10);

  auto* filler = new zPushButton(frame.get(), new zGravSizer(kGravityBottom, 25, frame->sizer()),
                                 kShownTabStop, "y", 2);
  EXPECT_EQ(filler->sizer()->size(), (zDimension{400, 25}));
}

TEST_F(ControlTest, WidgetFillsTheHolderWhichIsWhatMoves) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 20, 80, 30), kShownTabStop, "x", 1);
  auto* box =
      new zEditBox(frame.get(), new zSizer(10, 60, 200, 100), kShownTabStop | 0x300000, "text", 2);
  button->moveResize(30, 40, 120, 50);
  ui::drain();
  zRect place;
  button->getExterior(place);
  EXPECT_EQ(place.size(), (zDimension{120, 50}));
  EXPECT_EQ(ui::areaOf(button->widget()), ui::areaOf(button->holder()));
  const ui::ScreenArea board = ui::areaOf(frame->widget());
  EXPECT_EQ(place.pos(), (zPoint{board.x + 30, board.y + 40}));
  box->getExterior(place);
  EXPECT_EQ(place.size(), (zDimension{200, 100})) << "the scroll bars are inside";
}

TEST_F(ControlTest, WithoutASizeItAsksOnlyAParentThatHasOne) {
  zSizer unplaced(nullptr);
  const zPushButton button(frame.get(), new zGravSizer(kGravityRight, 20, &unplaced), kShownTabStop,
                           "a", 1);
  EXPECT_EQ(button.sizer()->pos(), zPoint{});
}

zWindow* makeLabel(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  return new zStaticText(parent, sizer, record.style, record.text, static_cast<int>(record.id));
}

TEST_F(ControlTest, DialogsMakeRegisteredClassesToo) {
  registerRecordControls();
  ControlRecord record{};
  record.controlClass = registerControlClass("label", makeLabel);
  record.text = "text";
  const auto make = [&](zSizer* sizer) { return recordControlMaker()(frame.get(), record, sizer); };
  const zWindow* made = make(new zSizer(0, 0, 50, 20));
  ASSERT_NE(made, nullptr);
  EXPECT_TRUE(made->isA(kClassStaticText));
  zSizer kept(0, 0, 50, 20);
  record.controlClass = registerControlClass("known by name");
  EXPECT_EQ(make(&kept), nullptr);
  EXPECT_EQ(registerControlClass("known by name"), record.controlClass);
  ++record.controlClass;
  EXPECT_EQ(make(&kept), nullptr);
}

TEST_F(ControlTest, IsShownByItsStyleAndByShow) {
  auto* visible = new zPushButton(frame.get(), new zSizer(0, 0, 50, 20), 0x50000000, "a", 1);
  auto* hidden = new zPushButton(frame.get(), new zSizer(60, 0, 50, 20), 0x40000000, "b", 2);
  auto* dead = new zPushButton(frame.get(), new zSizer(120, 0, 50, 20), 0x58000000, "c", 3);
  ui::drain();
  EXPECT_TRUE(ui::isViewable(visible->holder()));
  EXPECT_FALSE(ui::isViewable(hidden->holder()));
  hidden->show();
  visible->show(kShowHide);
  ui::drain();
  EXPECT_FALSE(ui::isViewable(visible->holder()));
  EXPECT_TRUE(ui::isViewable(hidden->holder()));
  EXPECT_FALSE(dead->isEnabled());
  dead->enable();
  EXPECT_TRUE(dead->isEnabled());
}

TEST_F(ControlTest, KeepsItsPlaceWhenTheFontChanges) {
  auto* box = new zEditBox(frame.get(), new zSizer(10, 10, 300, 150), kShownTabStop | 0x300000,
                           "some text", 1);
  auto* line = new zEditLine(frame.get(), new zSizer(10, 170, 300, 40), kShownTabStop, "text", 2);
  auto* list = new zListBoxUnsorted(frame.get(), new zSizer(10, 210, 200, 80), 0x50B10001, 3);
  list->add("row");
  ui::drain();
  const std::vector<Widget> widgets = {box->widget(), line->widget(),
                                       part(list->holder(), "ScrolledListBoxSW")};
  std::vector<ui::ScreenArea> before(widgets.size());
  const auto areaOf = [](Widget widget) { return ui::areaOf(widget); };
  std::transform(widgets.begin(), widgets.end(), before.begin(), areaOf);
  zFontSpec large = zFontSpec::stock(11);
  large.log().height = 24;
  for (zControl* control : std::initializer_list<zControl*>{box, line, list}) {
    control->setFont(zRCFont(large), 1);
  }
  ui::drain();
  for (std::size_t i = 0; i < widgets.size(); ++i) {
    EXPECT_EQ(ui::areaOf(widgets[i]), before[i]) << i;
  }
}

TEST_F(ControlTest, KeysGoToHandlersThenAcceleratorsThenTheOperation) {
  auto* button = new ProbeButton(frame.get(), kShownTabStop);
  Listener handler;
  Listener application;
  button->addPlainHandler(&handler, kOnEvent, kMsgKeyDown);
  button->addPlainHandler(&handler, kOnEvent, kMsgKeyUp);
  zApp::instance()->handlers().add(
      std::make_unique<zNotifyNode>(&application, kOnEvent, kMsgKeyDown));
  focus(*button);
  button->take();

  ui::pressKey('q');
  EXPECT_THAT(handler.take(), ElementsAre("256 113", "257 113"));
  EXPECT_THAT(application.take(), ElementsAre("256 113"));
  EXPECT_THAT(button->take(), ElementsAre("char 258"));

  ui::pressKey(XK_F5);
  EXPECT_THAT(handler.take(), ElementsAre("256 65474", "257 65474")) << "the keysym";
  EXPECT_THAT(button->take(), IsEmpty()) << "no character, no character message";

  handler.taken = 1;
  application.take();
  ui::pressKey(XK_Return);
  EXPECT_THAT(application.take(), IsEmpty());
  EXPECT_THAT(frame->takeCommands(), IsEmpty()) << "a key that a handler took presses no button";
  zApp::instance()->handlers().remove(zEvent::of(kMsgKeyDown), &application, kOnEvent);
}

TEST_F(ControlTest, EditKeepsPlainTypingToItselfAndOffersTheRest) {
  auto* edit = new zEditLine(frame.get(), new zSizer(10, 10, 200, 30), kShownTabStop, "", 1);
  Listener handler;
  edit->addPlainHandler(&handler, kOnEvent, kMsgKeyDown);
  edit->addPlainHandler(&handler, kOnEvent, kMsgKeyUp);
  focus(*edit);

  ui::typeText("aB\xe4");
  EXPECT_THAT(handler.take(), ElementsAre("256 65505")) << "only the Shift key";
  EXPECT_EQ(edit->text().str(), "aB\xe4");

  ui::pressKey('o', ui::kControl);
  EXPECT_THAT(handler.take(), ElementsAre("256 65507", "256 15")) << "the control character";
  ui::pressKey('A', ui::kAlt);
  EXPECT_THAT(handler.take(), testing::Contains("256 65"));
  ui::pressKey(XK_Page_Up);
  EXPECT_THAT(handler.take(), ElementsAre("256 65365"));

  handler.taken = 1;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(edit->text().str(), "aB\xe4") << "a key that a handler took";
  handler.taken = 0;
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(edit->text().str(), "aB");
}

TEST_F(ControlTest, MouseEventsReachHandlersThenOperationsAndCanBeKeptFromTheWidget) {
  auto* button = new ProbeButton(frame.get(), kShownTabStop);
  Listener handler;
  button->addHandler(&handler, kOnEvent, kMsgButtonDown);
  ui::moveTo(frame->widget(), 300, 200);
  button->take();
  ui::moveTo(button->widget(), 5, 5);
  EXPECT_THAT(button->take(), testing::Contains("handle 0")) << "the crossing";
  ui::moveTo(button->widget(), 9, 9);
  EXPECT_THAT(button->take(), testing::Contains("move 512"));

  ui::click(button->widget());
  EXPECT_EQ(handler.take().size(), 1U);
  EXPECT_THAT(button->take(), testing::IsSupersetOf({"down 513", "up 514"}));
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{7, kNotifyClicked}));

  handler.taken = 1;
  ui::click(button->widget());
  EXPECT_THAT(button->take(), testing::Not(testing::Contains("down 513")));
  EXPECT_THAT(frame->takeCommands(), IsEmpty());
}

TEST_F(ControlTest, FocusChangesReachHandlersAndTheOperation) {
  auto* button = new ProbeButton(frame.get(), kShownTabStop);
  auto* other = new zPushButton(frame.get(), new zSizer(20, 60, 80, 30), kShownTabStop, "x", 2);
  Listener handler;
  button->addHandler(&handler, kOnEvent, kMsgFocusIn);
  button->addHandler(&handler, kOnEvent, kMsgFocusOut);
  focus(*other);
  handler.take();
  button->take();
  focus(*button);
  EXPECT_THAT(handler.take(), ElementsAre("7 0"));
  EXPECT_THAT(button->take(), testing::Contains("focus 7"));
  focus(*other);
  EXPECT_THAT(handler.take(), ElementsAre("8 0"));
}

TEST_F(ControlTest, AClickWithTheFirstTwoButtonsGivesTheFocus) {
  auto* first = new zEditLine(frame.get(), new zSizer(10, 10, 200, 30), kShownTabStop, "", 1);
  auto* second = new zEditLine(frame.get(), new zSizer(10, 60, 200, 30), kShownTabStop, "", 2);
  focus(*first);
  ui::click(second->widget(), ui::kRightButton);
  EXPECT_TRUE(ui::focusIs(first->widget()));
  ui::click(second->widget(), ui::kLeftButton);
  ui::waitForFocus(second->widget());
  ui::click(first->widget(), ui::kMiddleButton);
  ui::waitForFocus(first->widget());
}

TEST_F(ControlTest, NotificationsReachTheHandlerOfTheirCodeFirst) {
  auto* button = new zPushButton(frame.get(), new zSizer(10, 10, 90, 30), kShownTabStop, "x", 5);
  Listener clicked;
  Listener other;
  button->setNotify(&clicked, kOnEvent, kNotifyClicked);
  button->setNotify(&other, kOnEvent, kNotifyClicked + 1);
  clicked.taken = 1;
  ui::click(button->widget());
  EXPECT_THAT(clicked.take(), ElementsAre("273 5"));
  EXPECT_THAT(other.take(), IsEmpty());
  EXPECT_THAT(frame->takeCommands(), IsEmpty());

  button->removeNotify(&clicked, kOnEvent, kNotifyClicked);
  ui::click(button->widget());
  EXPECT_THAT(clicked.take(), IsEmpty());
  EXPECT_THAT(frame->takeCommands(), ElementsAre(Notification{5, kNotifyClicked}));
}

TEST_F(ControlTest, MayBeDestroyedByAnyOfItsHandlers) {
  const zHandler execute = Executioner<zControl>::handler();
  const auto place = [] { return new zSizer(10, 10, 100, 30); };
  Executioner<zControl> doer;

  doer.victim = new ProbeButton(frame.get(), kShownTabStop);
  focus(*doer.victim);
  doer.victim->addPlainHandler(&doer, execute, kMsgKeyDown);
  ui::pressKey('x');
  EXPECT_EQ(doer.victim, nullptr) << "a key";

  doer.victim = new ProbeButton(frame.get(), kShownTabStop);
  doer.victim->addHandler(&doer, execute, kMsgButtonDown);
  ui::click(frame->widget(), 30, 30);
  EXPECT_EQ(doer.victim, nullptr) << "a press";

  doer.victim = new zPushButton(frame.get(), place(), kShownTabStop, "x", 1);
  doer.victim->setNotify(&doer, execute, kNotifyClicked);
  ui::click(doer.victim->widget());
  EXPECT_EQ(doer.victim, nullptr) << "a click";

  for (const bool typed : {true, false}) {
    auto* edit = new zEditLine(frame.get(), place(), kShownTabStop, "", 1);
    doer.victim = edit;
    focus(*edit);
    edit->setNotify(&doer, execute, kEditChanged);
    typed ? ui::typeText("x") : edit->setText("gone");
    EXPECT_EQ(doer.victim, nullptr) << "a change";
  }
  ui::drain();
}

TEST_F(ControlTest, TakesTheColourOfItsParentWhereItIsPartOfTheGround) {
  frame->setBackground(zColor(0x8090A0));
  auto* label = new zStaticText(frame.get(), new zSizer(0, 0, 80, 20), 0x50000000, "label");
  auto* edit = new zEditLine(frame.get(), new zSizer(0, 30, 80, 30), kShownTabStop, "", 1);
  EXPECT_EQ(label->background(), frame->background());
  EXPECT_EQ(edit->background(), zWindow::kNoBackground);
}

}  // namespace
