// Scroll bars and scrollers.

#include "framework/controls/scroll_bar.h"

#include "framework/controls/edit.h"
#include "framework/core/pane.h"
#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Overrides only the two actions in which all others end, and notes "CODE at POSITION" for each.
class Recording : public zControlScroller {
 public:
  int vertThumbPosition(zEvent* event) override { return record("vertical", event); }
  int horzThumbPosition(zEvent* event) override { return record("horizontal", event); }
  int beforeScroll(zEvent* /*event*/) override { return ++announced; }
  Journal take() { return std::exchange(seen, {}); }
  int announced = 0;
  std::function<void()> action;

 private:
  int record(const std::string& direction, zEvent* event) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): messages carry the object as a number
    const auto* bar = reinterpret_cast<ziScrollBar*>(event->lparam);
    seen.push_back(direction + " " + std::to_string(event->wparam) + " at " +
                   std::to_string(bar->position()));
    if (action) {
      std::exchange(action, nullptr)();
    }
    return 1;
  }
  Journal seen;
};

class ScrollBar : public ControlTest {
 protected:
  static constexpr int kLength = 200;
  static constexpr int kThickness = 20;
  static constexpr int kMiddle = kThickness / 2;

  zScrollBarCtrl* makeBar(bool vertical) {
    auto* sizer = vertical ? new zSizer(10, 10, kThickness, kLength)
                           : new zSizer(10, 10, kLength, kThickness);
    auto* bar = new zScrollBarCtrl(frame.get(), sizer,
                                   kShownTabStop | (vertical ? kScrollBarVertical : 0U));
    bar->setScroller(&scroller);
    ui::drain();
    return bar;
  }

  Recording scroller;
};

TEST_F(ScrollBar, TellsEachActionOfMouseAndKeyboardWithTheNewPosition) {
  constexpr int kInArrow = 8;
  constexpr int kPastArrow = 30;
  for (const bool vertical : {true, false}) {
    zScrollBarCtrl* bar = makeBar(vertical);
    bar->scrollPos()->setPage(30);
    bar->scrollPos()->setLine(10);
    const auto moveAlong = [&](int distance) {
      ui::moveTo(bar->widget(), vertical ? kMiddle : distance, vertical ? distance : kMiddle);
    };
    for (const int place : {kLength - kInArrow, kLength - kPastArrow, kInArrow, kPastArrow}) {
      moveAlong(place);
      ui::pressButton();
      ui::releaseButton();
    }
    focus(*bar);
    ui::pressKey(vertical ? XK_Down : XK_Right);
    ui::pressKey(XK_End, ui::kControl);
    ui::pressKey(vertical ? XK_Down : XK_Right);
    ui::pressKey(XK_Home, ui::kControl);
    moveAlong(kPastArrow);
    ui::pressButton();
    moveAlong(2 * kPastArrow);
    const int dragged = bar->scrollPos()->position();
    EXPECT_GT(dragged, 0);
    moveAlong(2 * kLength);
    ui::releaseButton();
    Journal told = {"1 at 10",  "3 at 40",  "0 at 30", "2 at 0",
                    "1 at 10",  "7 at 100", "6 at 0",  "5 at " + std::to_string(dragged),
                    "5 at 100", "4 at 100"};
    for (std::string& line : told) {
      line.insert(0, vertical ? "vertical " : "horizontal ");
    }
    EXPECT_EQ(scroller.take(), told);
    delete bar;
  }
  EXPECT_GT(scroller.announced, 16);
  zEvent end = zEvent::of(kMsgVertScroll, kScrollEnd);
  zEvent other = zEvent::of(kMsgCommand, kScrollTop);
  scroller.announced = 0;
  EXPECT_EQ(scroller.dispatch(&end), 1);
  EXPECT_EQ(scroller.announced, 0) << "the end of scrolling is not announced";
  EXPECT_EQ(scroller.dispatch(&other), 0);
}

TEST_F(ScrollBar, KeepsItsPositionInTheRangeAndItsWidgetInStep) {
  zScrollBarCtrl* bar = makeBar(true);
  zScrollPos* pos = bar->scrollPos();
  focus(*bar);
  const auto view = [&] { return ui::look(bar->widget()); };
  // Intended: a new widget has a slider of 1 whatever the page is.
  EXPECT_EQ(view(), "bar 0 of 0 to 100 by 1 focus\n");
  EXPECT_EQ(pos->page() + pos->line(), 11);
  EXPECT_EQ(pos->range(), (zScrollPos::Range{0, 100}));
  pos->setPosition(200);
  EXPECT_EQ(view(), "bar 99 of 0 to 100 by 1 focus\n") << "the last place that the widget has";
  pos->setPosition(-5);
  EXPECT_EQ(pos->position(), 0);
  EXPECT_EQ(pos->previousPosition(), 100);
  pos->setLine(0);
  EXPECT_EQ(ui::resource(bar->widget(), "increment"), 1);
  pos->setLine(7);
  const struct {
    int minimum, maximum, page, wanted, position;
    const char* view;
  } rows[] = {
      {50, 70, 25, 200, 70, "bar 70 of 50 to 95 by 25 focus\n"},
      {0, 10, 0, 10, 10, "bar 10 of 0 to 11 by 1 focus\n"},
      {0, 0, 5000, 3, 0, "bar 0 of 0 to 5000 by 5000 focus\n"},
      {-20, -10, 4, 0, -10, "bar -10 of -20 to -6 by 4 focus\n"},
      {90, 10, 5, 50, 90, "bar 90 of 10 to 95 by 5 focus\n"},
  };
  for (const auto& row : rows) {
    pos->setRange(row.minimum, row.maximum);
    EXPECT_EQ(pos->position(), row.minimum) << "not the nearest end";
    pos->setPage(row.page);
    pos->setPosition(row.wanted);
    EXPECT_EQ(pos->position(), row.position);
    EXPECT_EQ(view(), row.view);
    EXPECT_THAT(numbers(bar->widget(), {"increment", "pageIncrement"}),
                ElementsAre(7, pos->page()));
  }
  pos->setRange(80, 100);
  EXPECT_EQ(pos->position(), 90) << "in the new range";
}

TEST_F(ScrollBar, OfUnknownSizeIsThinAndWithoutAScrollerAsksItsParent) {
  const zScrollBarCtrl vertical(frame.get(), new zSizer(), kShownTabStop | kStyleVertScroll);
  zScrollBarCtrl horizontal(frame.get(), new zSizer(), kShownTabStop);
  ui::drain();
  EXPECT_EQ(placesOf({vertical.widget(), horizontal.widget()}), "0,0 16x100; 0,0 100x16; ");
  Recording ofWindow;
  frame->setScroller(&ofWindow);
  EXPECT_EQ(horizontal.scrollLines(4), 1);
  EXPECT_THAT(ofWindow.take(), ElementsAre("horizontal 1 at 4"));
  frame->setScroller(nullptr);
}

TEST_F(ScrollBar, TakesTheWheelOfTheWindowsThatItScrolls) {
  zPane pane(frame.get(), new zSizer(60, 60, 200, 100), 0x50000000, 5);
  pane.show();
  zScrollBarCtrl* horizontal = makeBar(false);
  zScrollBarCtrl* vertical = makeBar(true);
  horizontal->takeWheelOf(pane);
  vertical->takeWheelOf(pane);
  vertical->scrollPos()->setLine(10);
  ui::wheel(pane.widget(), 50, 50, -2);
  ui::wheel(pane.widget(), 50, 50, 1);
  EXPECT_THAT(scroller.take(),
              ElementsAre("vertical 1 at 30", "vertical 1 at 60", "vertical 0 at 30"));
  const std::pair<unsigned, unsigned> turns[] = {{4, ShiftMask}, {5, ShiftMask}, {6, 0},
                                                 {7, 0},         {8, 0},         {1, 0}};
  XEvent press{};
  press.xbutton.type = ButtonPress;
  for (const auto& [button, state] : turns) {
    press.xbutton.button = button;
    press.xbutton.state = state;
    zEvent event = zEvent::of(kMsgButtonDown, 0, &pane);
    event.xevent = &press;
    zDispatch(event, &pane);
  }
  EXPECT_THAT(scroller.take(), ElementsAre("horizontal 0 at 0", "horizontal 1 at 3",
                                           "horizontal 0 at 0", "horizontal 1 at 3"));
  vertical->disable();
  ui::wheel(pane.widget(), 50, 50, 1);
  EXPECT_THAT(scroller.take(), IsEmpty());
}

TEST_F(ScrollBar, MayBeDestroyedByWhatItScrolls) {
  zScrollBarCtrl* bar = makeBar(true);
  scroller.action = [&] { delete std::exchange(bar, nullptr); };
  ui::click(bar->widget(), kMiddle, kLength - 8);
  EXPECT_EQ(bar, nullptr);
  zEditLine edit(frame.get(), new zSizer(100, 10, 100, 30), kShownTabStop, "", 3);
  focus(edit);
  ui::typeText("x");
  EXPECT_EQ(edit.text(), RWCString("x")) << "no grab of the keyboard is left";
}

}  // namespace
