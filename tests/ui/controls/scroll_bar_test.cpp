// Scroll bars and scrollers.

#include "framework/controls/scroll_bar.h"

#include "framework/core/pane.h"
#include "tests/ui/controls/control_fixture.h"

namespace {

/// Overrides only the two actions in which all others end, and notes "v" or "h", the code and the
/// position for each.
struct Recording : zControlScroller {
  explicit Recording(std::string& shared) : journal(shared) {}

  int vertThumbPosition(zEvent* event) override { return record("v", *event); }
  int horzThumbPosition(zEvent* event) override { return record("h", *event); }
  int record(const char* direction, const zEvent& event) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): messages carry the object as a number
    const int position = reinterpret_cast<ziScrollBar*>(event.lparam)->position();
    journal += direction + std::to_string(event.wparam) + "@" + std::to_string(position) + " ";
    action();
    return 1;
  }

  std::string& journal;
  std::function<void()> action = [] {};
};

class ScrollBar : public ControlTest {
 protected:
  zScrollBarCtrl* makeBar(bool isVertical) {
    auto* sizer = isVertical ? new zSizer(10, 10, 20, 200) : new zSizer(10, 10, 200, 20);
    auto* bar = new zScrollBarCtrl(&frame, sizer,
                                   kStyleControlStop | (isVertical ? kScrollBarVertical : 0U));
    bar->setScroller(&scroller);
    bar->scrollPos()->setLine(10);
    return bar;
  }

  Recording scroller{frame.journal};
};

TEST_F(ScrollBar, TellsEachActionOfMouseAndKeyboardWithTheNewPosition) {
  for (const bool isVertical : {true, false}) {
    zScrollBarCtrl* bar = makeBar(isVertical);
    bar->scrollPos()->setPage(30);
    const auto at = [&](int along) {
      ui::moveTo(bar->widget(), isVertical ? 10 : along, isVertical ? along : 10);
    };
    for (const int place : {192, 170, 8, 30}) {
      isVertical ? ui::click(bar->widget(), 10, place) : ui::click(bar->widget(), place, 10);
    }
    ui::focus(*bar);
    for (const ui::KeySymbol end : {XK_End, XK_Home}) {
      ui::pressKey(isVertical ? XK_Down : XK_Right);
      ui::pressKey(end, ui::kControl);
    }
    at(30);
    ui::pressButton();
    at(60);
    at(400);
    ui::releaseButton();
    EXPECT_EQ(heard(), isVertical
                           ? "v1@10 v3@40 v0@30 v2@0 v1@10 v7@100 v6@0 v5@25 v5@100 v4@100 "
                           : "h1@10 h3@40 h0@30 h2@0 h1@10 h7@100 h6@0 h5@25 h5@100 h4@100 ");
    delete bar;
  }
}

TEST_F(ScrollBar, KeepsItsPositionInTheRangeAndItsWidgetInStep) {
  const zScrollBarCtrl bar(&frame, new zSizer(), kStyleControl | kStyleVertScroll);
  EXPECT_EQ(placesOf({bar.widget()}), "0,0 16x100; ");
  zScrollPos* pos = bar.scrollPos();
  const auto view = [&] {
    return std::to_string(pos->position()) + " " + ui::look(bar.widget()) +
           ui::numbers(bar.widget(), {"increment", "pageIncrement"});
  };
  pos->setPosition(200);
  EXPECT_EQ(view(), "100 bar 99 of 0 to 100 by 1\n1 10 ")
      << "intended: a new widget has a slider of 1 whatever the page is";
  pos->setLine(0);
  pos->setPosition(-5);
  EXPECT_EQ(view(), "0 bar 0 of 0 to 100 by 1\n1 10 ");
  pos->setLine(7);
  const auto set = [&](int minimum, int maximum, int page, int position) {
    pos->setRange(minimum, maximum);
    EXPECT_EQ(pos->position(), minimum) << "not the nearest end";
    pos->setPage(page);
    pos->setPosition(position);
    return view();
  };
  EXPECT_EQ(set(50, 70, 25, 200), "70 bar 70 of 50 to 95 by 25\n7 25 ");
  EXPECT_EQ(set(0, 10, 0, 10), "10 bar 10 of 0 to 11 by 1\n7 1 ");
  EXPECT_EQ(set(90, 10, 5, 50), "90 bar 90 of 10 to 95 by 5\n7 5 ");
}

TEST_F(ScrollBar, TakesTheWheelOfTheWindowsThatItScrolls) {
  zPane pane(&frame, new zSizer(60, 60, 200, 100), kStyleControl, 5);
  pane.show();
  makeBar(false)->takeWheelOf(pane);
  makeBar(true)->takeWheelOf(pane);
  for (const int button : {5, 5, 4, 7, 7, 6, 8, 1}) {
    ui::click(pane.widget(), static_cast<ui::MouseButton>(button));
  }
  EXPECT_EQ(heard(), "v1@30 v1@60 v0@30 h1@30 h1@60 h0@30 ");
}

TEST_F(ScrollBar, WithoutAScrollerAsksItsParentAndMayBeDestroyedByWhatItScrolls) {
  zScrollBarCtrl* bar = makeBar(true);
  bar->setScroller(nullptr);
  frame.setScroller(&scroller);
  scroller.action = [&] { delete std::exchange(bar, nullptr); };
  ui::click(bar->widget(), 10, 192);
  EXPECT_EQ(bar, nullptr);
  ui::typeText(" ");
  EXPECT_EQ(heard(), "v1@10 0:0 ") << "no grab of the keyboard is left";
  frame.setScroller(nullptr);
}

}  // namespace
