#include "framework/layout/sizers.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "fake_window.h"

namespace {

struct Child {
  zGravity gravity;
  zDimension extent;
  zRect expected;
};

struct Case {
  const char* name;
  std::vector<Child> children;
};

// All in a rectangle of (10, 20) to (210, 120).
const std::vector<Case> kCases{
    {"strips take their part from what the earlier ones left",
     {{kGravityTop, {0, 30}, {10, 20, 210, 50}},
      {kGravityBottom, {0, 10}, {10, 110, 210, 120}},
      {kGravityLeft, {40, 0}, {10, 50, 50, 110}},
      {kGravityRight, {20, 0}, {190, 50, 210, 110}},
      {kGravityCentre, {0, 0}, {50, 50, 190, 110}}}},
    {"a strip placed before a top strip isn't shortened by it",
     {{kGravityLeft, {40, 0}, {10, 20, 50, 120}}, {kGravityTop, {0, 30}, {50, 20, 210, 50}}}},
    {"a strip may be shorter than its edge",
     {{kGravityRight, {20, 15}, {190, 20, 210, 35}},
      {kGravityBottom, {25, 10}, {10, 110, 35, 120}}}},
    {"a strip without an extent takes no room",
     {{kGravityTop, {0, 0}, {10, 20, 210, 20}},
      {kGravityRight, {0, 0}, {210, 20, 210, 120}},
      {kGravityFill, {0, 0}, {10, 20, 210, 120}}}},
    {"two that fill get the same rectangle",
     {{kGravityFill, {0, 0}, {10, 20, 210, 120}}, {kGravityFill, {0, 0}, {10, 20, 210, 120}}}},
    {"a fill with a size stays at the left top", {{kGravityFill, {50, 41}, {10, 20, 60, 61}}}},
    {"a centred one is shifted by half of the room, truncated",
     {{kGravityCentre, {51, 40}, {84, 50, 135, 90}}}},
    {"a centred one larger than the room isn't shifted",
     {{kGravityCentre, {300, 40}, {10, 50, 310, 90}}}},
};

TEST(NormalLayout, PlacesChildrenByGravityInListOrder) {
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.name);
    zSizer parent;
    std::vector<std::unique_ptr<zGravSizer>> sizers;
    for (const Child& child : row.children) {
      sizers.push_back(std::make_unique<zGravSizer>(child.gravity, child.extent, &parent));
    }
    parent.apply({10, 20, 210, 120}, kApplyMoves);
    for (std::size_t i = 0; i < sizers.size(); ++i) {
      EXPECT_EQ(sizers[i]->rect(), row.children[i].expected) << "child " << i;
    }
  }
}

TEST(NormalLayout, OwnPositionsAreKeptAndUnsetSizesReachToTheEdges) {
  zSizer parent;
  const zGravSizer strip(kGravityRight, 30, &parent);
  const zSizer fixed(5, 6, 70, 80, &parent);
  const zSizer open({5, 6}, {kNotSet, kNotSet}, &parent);
  parent.apply({0, 0, 200, 100}, kApplyMoves);
  EXPECT_EQ(fixed.rect(), zRect(5, 6, 75, 86));
  EXPECT_EQ(open.rect(), zRect(5, 6, 170, 100));
}

TEST(NormalLayout, WithoutAFillTheCallersRectangleShrinksToTheStrips) {
  zSizerDlist children;
  zGravSizer top(kGravityTop, 12);
  zGravSizer left(kGravityLeft, 34);
  children.append(&top);
  children.append(&left);
  zRect rect(10, 20, 210, 120);
  zNormalLayout::shared().apply(rect, children, 2);
  EXPECT_EQ(rect, zRect(10, 20, 44, 32));

  zGravSizer fill(kGravityFill, 0);
  children.append(&fill);
  rect = {10, 20, 210, 120};
  zNormalLayout::shared().apply(rect, children, 3);
  EXPECT_EQ(rect, zRect(10, 20, 210, 120));
}

// Answers for a strip, yet wants to be placed at its own position.
class SelfPlaced : public zGravSizer {
 public:
  using zGravSizer::zGravSizer;
  zSizer* query(int kind) override {
    return kind == kSizerOwnPosition ? this : zGravSizer::query(kind);
  }
};

TEST(NormalLayout, ASizerThatSaysSoIsPlacedAtItsOwnPositionButMeasuredByItsGravity) {
  zSizer parent;
  SelfPlaced odd(kGravityTop, zDimension{10, 20}, &parent);
  odd.setPos({7, 8});
  zLayoutInfo info;
  parent.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{10, 20}));
  parent.apply({0, 0, 100, 100}, kApplyMoves);
  EXPECT_EQ(odd.rect(), zRect(7, 8, 17, 28));
}

/// Asks for whatever it is told to.
class Asking : public zSizer {
 public:
  Asking(zSizer* parent, zLayoutInfo info) : zSizer(parent), asked(info) {}
  void getInfo(zLayoutInfo& info) override { info = asked; }

 private:
  zLayoutInfo asked;
};

struct InfoCase {
  const char* name;
  std::vector<zLayoutInfo> children;  ///< position, least, usual and largest size, gravity
  zDimension min, usual, max;
};

TEST(NormalLayout, AsksForWhatItsChildrenNeedTogether) {
  const zLayoutInfo fixed{{10, 100}, {1, 1}, {20, 20}, {20, 20}, kGravityOwnPosition};
  const InfoCase rows[] = {
      {"top strips stack, others raise to the largest",
       {{{}, {50, 10}, {51, 11}, {52, 12}, kGravityTop},
        {{}, {80, 15}, {70, 16}, {60, 17}, kGravityTop},
        {{}, {20, 21}, {22, 23}, {24, 30}, kGravityBottom},
        {{}, {30, 22}, {90, 22}, {31, 22}, kGravityLeft}},
       {80, 25},
       {90, 27},
       {60, 30}},
      // Intended: the height is raised to the right edge of the fixed children.
      {"fixed children raise both to their right edge", {fixed, fixed}, {0, 0}, {30, 30}, {30, 30}},
      {"what is larger already stays",
       {{{}, {5, 5}, {50, 10}, {60, 15}, kGravityLeft}, fixed},
       {5, 5},
       {50, 30},
       {60, 30}},
      {"also what is larger at most",
       {{{}, {0, 0}, {10, 40}, {90, 80}, kGravityFill}, fixed},
       {0, 0},
       {30, 40},
       {90, 80}},
  };
  for (const InfoCase& row : rows) {
    SCOPED_TRACE(row.name);
    zSizer parent;
    std::vector<std::unique_ptr<Asking>> sizers;
    for (const zLayoutInfo& child : row.children) {
      sizers.push_back(std::make_unique<Asking>(&parent, child));
    }
    zLayoutInfo info;
    parent.getInfo(info);
    EXPECT_EQ(info.minSize, row.min);
    EXPECT_EQ(info.size, row.usual);
    EXPECT_EQ(info.maxSize, row.max);
  }
}

}  // namespace
