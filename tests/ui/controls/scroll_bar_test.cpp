// Scroll bars and scrollers.

#include "framework/controls/scroll_bar.h"

#include "framework/controls/button.h"
#include "framework/core/pane.h"
#include "tests/ui/controls/control_fixture.h"
#include "tests/ui/controls/scroll_bar_view.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Journal = std::vector<std::string>;

std::string entry(int message, int code, int position) {
  return std::to_string(message) + " code " + std::to_string(code) + " at " +
         std::to_string(position);
}

/// Overrides only the two actions in which all others end.
template <class Base>
class Recording : public Base {
 public:
  using Base::Base;
  int vertThumbPosition(zEvent* event) override { return record(event); }
  int horzThumbPosition(zEvent* event) override { return record(event); }
  int beforeScroll(zEvent* /*event*/) override { return ++announced; }
  Journal take() { return std::exchange(seen, {}); }
  int announced = 0;

 private:
  int record(zEvent* event) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): messages carry the object as a number
    const auto* bar = reinterpret_cast<ziScrollBar*>(event->lparam);
    seen.push_back(entry(event->message, static_cast<int>(event->wparam), bar->position()));
    return 1;
  }
  Journal seen;
};

class ScrollBar : public ControlTest {
 protected:
  static constexpr int kLength = 200;
  static constexpr int kThickness = 20;
  static constexpr int kInArrow = 8;
  static constexpr int kPastArrow = 30;

  zScrollBarCtrl* makeBar(bool vertical) {
    auto* sizer = vertical ? new zSizer(10, 10, kThickness, kLength)
                           : new zSizer(10, 10, kLength, kThickness);
    auto* bar = new zScrollBarCtrl(frame.get(), sizer,
                                   kShownTabStop | (vertical ? kScrollBarVertical : 0U));
    bar->setScroller(&scroller);
    ui::drain();
    return bar;
  }
  static void moveAlong(zScrollBarBase& bar, int distance) {
    constexpr int kMiddle = kThickness / 2;
    const bool vertical = ui::areaOf(bar.widget()).height > kThickness;
    ui::moveTo(bar.widget(), vertical ? kMiddle : distance, vertical ? distance : kMiddle);
  }
  static void clickAlong(zScrollBarBase& bar, int distance) {
    moveAlong(bar, distance);
    ui::pressButton();
    ui::releaseButton();
  }

  Recording<zControlScroller> scroller;
};
/// The parameter says whether the bar is vertical.
class DirectedScrollBar : public ScrollBar, public testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(, DirectedScrollBar, testing::Bool());

TEST_P(DirectedScrollBar, TellsEachActionOfMouseAndKeyboardWithTheNewPosition) {
  const int message = GetParam() ? kMsgVertScroll : kMsgHorzScroll;
  zScrollBarCtrl* bar = makeBar(GetParam());
  bar->scrollPos()->setPage(30);
  bar->scrollPos()->setLine(10);
  for (const int place : {kLength - kInArrow, kLength - kPastArrow, kInArrow, kPastArrow}) {
    clickAlong(*bar, place);
  }
  EXPECT_THAT(scroller.take(),
              ElementsAre(entry(message, kScrollLineDown, 10), entry(message, kScrollPageDown, 40),
                          entry(message, kScrollLineUp, 30), entry(message, kScrollPageUp, 0)));
  focus(*bar);
  ui::pressKey(GetParam() ? XK_Down : XK_Right);
  ui::pressKey(XK_End, ui::kControl);
  ui::pressKey(GetParam() ? XK_Down : XK_Right);
  ui::pressKey(XK_Home, ui::kControl);
  EXPECT_THAT(scroller.take(),
              ElementsAre(entry(message, kScrollLineDown, 10), entry(message, kScrollBottom, 100),
                          entry(message, kScrollTop, 0)));

  moveAlong(*bar, kPastArrow);
  ui::pressButton();
  moveAlong(*bar, 2 * kPastArrow);
  const int dragged = bar->scrollPos()->position();
  EXPECT_GT(dragged, 0);
  EXPECT_EQ(scroller.take().back(), entry(message, kScrollThumbTrack, dragged));
  moveAlong(*bar, 2 * kLength);
  ui::releaseButton();
  EXPECT_EQ(scroller.take().back(), entry(message, kScrollThumbPosition, 100));
}

TEST_F(ScrollBar, KeepsItsPositionInTheRangeAndItsWidgetInStep) {
  zScrollBarCtrl* bar = makeBar(true);
  zScrollPos* pos = bar->scrollPos();
  // Intended: a new widget has a slider of 1 whatever the page is.
  EXPECT_THAT(viewOfBar(bar->widget()), ElementsAre(0, 100, 1, 0));
  pos->setPosition(200);
  EXPECT_EQ(viewOfBar(bar->widget()).back(), 99) << "the last place that the widget has";
  pos->setPosition(-5);
  EXPECT_EQ(pos->position(), 0);
  EXPECT_EQ(pos->previousPosition(), 100);

  struct Row {
    int minimum, maximum, page, wanted;
    int position;
    std::vector<int> view;
  };
  const Row rows[] = {
      {50, 70, 25, 200, 70, {50, 95, 25, 70}}, {0, 10, 0, 10, 10, {0, 11, 1, 10}},
      {0, 0, 5000, 3, 0, {0, 5000, 5000, 0}},  {-20, -10, 4, 0, -10, {-20, -6, 4, -10}},
      {90, 10, 5, 50, 90, {10, 95, 5, 90}},
  };
  pos->setLine(7);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.minimum);
    pos->setRange(row.minimum, row.maximum);
    EXPECT_EQ(pos->position(), row.minimum) << "not the nearest end";
    pos->setPage(row.page);
    pos->setPosition(row.wanted);
    EXPECT_EQ(pos->position(), row.position);
    EXPECT_EQ(viewOfBar(bar->widget()), row.view);
    EXPECT_THAT(stepsOfBar(bar->widget()), ElementsAre(7, pos->page()));
  }
}

TEST_F(ScrollBar, TakesTheWheelOfTheWindowsThatItScrolls) {
  auto* pane = new zPane(frame.get(), new zSizer(60, 60, 200, 100), 0x50000000, 5);
  pane->show();
  makeBar(false)->takeWheelOf(*pane);
  zScrollBarCtrl* vertical = makeBar(true);
  vertical->takeWheelOf(*pane);
  vertical->scrollPos()->setLine(10);
  ui::wheel(pane->widget(), 50, 50, -2);
  EXPECT_THAT(scroller.take(), ElementsAre(entry(kMsgVertScroll, kScrollLineDown, 30),
                                           entry(kMsgVertScroll, kScrollLineDown, 60)));
  ui::wheel(vertical->widget(), kThickness / 2, kPastArrow, 2);
  EXPECT_EQ(scroller.take().back(), entry(kMsgVertScroll, kScrollLineUp, 0));
  ui::click(pane->widget());
  vertical->scrollLines(-1);
  EXPECT_EQ(scroller.take().size(), 1U) << "told although it is at the end";
  vertical->disable();
  ui::wheel(pane->widget(), 50, 50, 1);
  EXPECT_THAT(scroller.take(), IsEmpty());
}

TEST_F(ScrollBar, MayBeDestroyedByWhatItScrolls) {
  struct Destroyer : zControlScroller {
    int vertThumbPosition(zEvent* /*event*/) override {
      delete owner();
      return 1;
    }
  };
  Destroyer destroyer;
  zScrollBarCtrl* bar = makeBar(true);
  bar->setScroller(&destroyer);
  const ziAlive alive(bar);
  clickAlong(*bar, kLength - kInArrow);
  EXPECT_FALSE(alive);
}

}  // namespace
