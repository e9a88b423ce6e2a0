#include "framework/layout/slot_layout.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "fake_window.h"
#include "framework/layout/slot_sizer.h"

namespace {

constexpr int kFree = 0;    // a child at a position of its own, `extent` its size
constexpr int kCombo = -1;  // number of the row's combo box is kComboSlot, its position (0, 6)
constexpr int kComboSlot = 1;

struct Child {
  int number;
  zDimension extent;
  zRect expected;
};

struct Case {
  const char* name;
  bool horizontal;
  std::vector<Child> children;
  zRect shrunk;  ///< what apply() makes of the rectangle
};

// All in (100, 10) to (300, 50), less a margin of 5 by 4; gaps and defaults are 7 by 9.
const std::vector<Case> kCases{
    {"numbers decide, not the order; a missing one leaves a gap",
     true,
     {{3, {30, 32}, {132, 14, 162, 46}}, {1, {20, 32}, {105, 14, 125, 46}}},
     {100, 10, 157, 10}},
    {"a shorter tool is centred across the bar, a taller one too",
     true,
     {{1, {20, 21}, {105, 19, 125, 40}}, {2, {20, 42}, {125, 9, 145, 51}}},
     {100, 10, 140, 10}},
    {"an extent of 0 reaches the inner edge, and the next slot comes after that",
     true,
     {{1, {0, 0}, {105, 14, 295, 46}}, {2, {10, 0}, {295, 14, 305, 46}}},
     {100, 10, 300, 10}},
    {"-1 is the default size", true, {{1, {-1, -1}, {105, 25, 112, 34}}}, {100, 10, 107, 10}},
    {"of two with one number the second gets nothing, and so does number -5",
     true,
     {{1, {20, 32}, {105, 14, 125, 46}}, {1, {30, 32}, {}}, {-5, {30, 32}, {}}},
     {100, 10, 120, 10}},
    {"a child without a slot stands where it says",
     true,
     {{kFree, {24, 22}, {2, 3, 26, 25}}, {1, {20, 32}, {105, 14, 125, 46}}},
     {100, 10, 120, 10}},
    {"a free child without a size reaches to the inner edges",
     true,
     {{kFree, {kNotSet, kNotSet}, {2, 3, 295, 46}}},
     {100, 10, 100, 10}},
    {"a combo box keeps its bottom and takes its top from its position",
     true,
     {{kCombo, {50, 20}, {105, 6, 155, 34}}},
     {100, 10, 150, 10}},
    {"downward, slots are centred across and gaps are as high as the default",
     false,
     {{2, {20, 12}, {190, 23, 210, 35}}, {3, {190, 6}, {105, 35, 295, 41}}},
     {100, 10, 100, 37}},
    {"downward, the height of a combo box comes from its position",
     false,
     {{kCombo, {190, 20}, {105, 14, 295, 20}}},
     {100, 10, 100, 16}},
};

std::unique_ptr<zSizer> makeSizer(const Child& child) {
  switch (child.number) {
    case kFree:
      return std::make_unique<zSizer>(zPoint{2, 3}, child.extent);
    case kCombo:
      return std::make_unique<zSlotSizerForComboBox>(kComboSlot, zPoint{0, 6}, child.extent);
    default:
      return std::make_unique<zSlotSizer>(child.number, child.extent);
  }
}

TEST(SlotLayout, PlacesChildrenByTheirNumbers) {
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.name);
    zSlotLayout layout;
    layout.setHorizontal(row.horizontal);
    layout.setMargin({5, 4});
    layout.setDefaultSlotSize({7, 9});
    zSizerDlist children;
    std::vector<std::unique_ptr<zSizer>> sizers;
    for (const Child& child : row.children) {
      sizers.push_back(makeSizer(child));
      children.append(sizers.back().get());
    }
    zRect rect(100, 10, 300, 50);
    layout.apply(rect, children, static_cast<int>(sizers.size()));
    for (std::size_t i = 0; i < sizers.size(); ++i) {
      EXPECT_EQ(sizers[i]->rect(), row.children[i].expected) << "child " << i;
    }
    EXPECT_EQ(rect, row.shrunk);
  }
}

// Intended: the height is raised to the right edge, as in the default layout.
TEST(SlotLayout, AsksOnlyForItsChildrenAtPositionsOfTheirOwn) {
  zSlotLayout layout;
  zSizer parent;
  parent.setLayout(&layout);
  const zSizer fixed(10, 100, 20, 20, &parent);
  const zSlotSizer slot(1, {500, 500}, &parent);
  zLayoutInfo info;
  parent.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{30, 30}));
  EXPECT_EQ(info.maxSize, (zDimension{30, 30}));
  EXPECT_EQ(info.minSize, (zDimension{0, 0}));
}

}  // namespace
