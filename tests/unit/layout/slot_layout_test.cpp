#include "framework/layout/slot_layout.h"

#include <gtest/gtest.h>

#include "fake_window.h"
#include "framework/layout/sizer.h"

namespace {

TEST(SlotLayout, LeavesChildrenWithoutASlotAtTheirPositions) {
  zSlotLayout layout;
  layout.setMargin({5, 4});
  zSizerDlist children;
  zSizer fixed(2, 3, 24, 22);
  zSizer open({6, 7}, {kNotSet, kNotSet});
  children.append(&fixed);
  children.append(&open);
  zRect rect(100, 10, 300, 50);
  layout.apply(rect, children, 2);
  EXPECT_EQ(fixed.rect(), zRect(2, 3, 26, 25));
  EXPECT_EQ(open.rect(), zRect(6, 7, 295, 46)) << "to the inner edges";
  EXPECT_EQ(rect, zRect(100, 10, 100, 10)) << "there are no slots";
}

// Intended: the height is raised to the right edge, as in the default layout.
TEST(SlotLayout, AsksForItsChildrenAtPositionsOfTheirOwn) {
  zSlotLayout layout;
  zSizer parent;
  parent.setLayout(&layout);
  const zSizer fixed(10, 100, 20, 20, &parent);
  zLayoutInfo info;
  parent.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{30, 30}));
  EXPECT_EQ(info.maxSize, (zDimension{30, 30}));
  EXPECT_EQ(info.minSize, (zDimension{0, 0}));
}

}  // namespace
