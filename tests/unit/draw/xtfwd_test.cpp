#include "framework/draw/xtfwd.h"

// The real headers come second here: that this compiles is half of the test.
#include <gtest/gtest.h>

#include "framework/draw/x_handles.h"

#include <X11/Intrinsic.h>
#include <X11/Xutil.h>

#include <type_traits>

namespace {

static_assert(std::is_same_v<::Region, _XRegion*>);
static_assert(std::is_same_v<::GC, _XGC*>);
static_assert(std::is_same_v<::Widget, _WidgetRec*>);
static_assert(std::is_same_v<::XtAppContext, _XtAppStruct*>);
static_assert(std::is_same_v<decltype(XEvent::type), int>);

TEST(Region, IsAValueThatAddsAndIntersects) {
  zRegion first(zRect(0, 0, 10, 10));
  const zRegion copy = first;
  first.add({20, 20, 30, 40});
  EXPECT_EQ(first.clipBox(), zRect(0, 0, 30, 40));
  EXPECT_EQ(copy.clipBox(), zRect(0, 0, 10, 10));
  EXPECT_FALSE(first.contains({15, 15}));
  first.intersect(zRegion(zRect(5, 5, 25, 25)));
  EXPECT_EQ(first.clipBox(), zRect(5, 5, 25, 25));
  first.intersect(zRegion());
  EXPECT_TRUE(first.isEmpty());
}

TEST(Region, PullsCoordinatesIntoXsRange) {
  const zRegion region(zRect(-100000, 0, 100000, 50));
  EXPECT_TRUE(region.contains({30000, 10}));
  EXPECT_TRUE(region.contains({-30000, 10}));
  EXPECT_TRUE(zRegion(zRect(10, 10, 5, 5)).isEmpty());
}

}  // namespace
