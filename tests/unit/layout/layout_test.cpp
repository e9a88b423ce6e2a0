// The tree of sizers and how its layouts share a rectangle.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "framework/layout/sizers.h"
#include "framework/layout/slot_layout.h"

namespace {

constexpr zGravity kLeft = kGravityLeft, kRight = kGravityRight, kTop = kGravityTop;
constexpr zGravity kBottom = kGravityBottom, kCentre = kGravityCentre, kFill = kGravityFill;

/// "left top right bottom; "
std::string shown(const zRect& r) {
  return (testing::Message() << r.left << ' ' << r.top << ' ' << r.right << ' ' << r.bottom << "; ")
      .GetString();
}

/// The least, usual and largest size that a sizer asks for, and its gravity.
std::string asked(zSizer& sizer) {
  zLayoutInfo info{{9, 9}, {99, 99}, {99, 99}, {99, 99}, kFill};  // told anew, whatever stood there
  sizer.getInfo(info);
  testing::Message text;
  for (const zDimension& size : {info.minSize, info.size, info.maxSize}) {
    text << size.width << 'x' << size.height << ' ';
  }
  return (text << "by " << info.gravity << "; ").GetString();
}

/// A window that remembers where it was put.
class FakeWindow : public ziSizerWindow {
 public:
  void moveResize(int x, int y, int width, int height) override {
    moves += shown(zRect(zPoint{x, y}, zDimension{width, height}));
  }
  bool hasWidget() const override { return widget; }
  void sizerReplaced(zSizer& /*sizer*/) override {}

  bool widget = true;
  std::string moves;
};

TEST(NormalLayout, PlacesChildrenByGravityInListOrder) {
  struct Row {
    const char* rule;
    std::vector<std::pair<zGravity, zDimension>> children;
    const char* places;  ///< in 10 20 210 120, and in the end what they took of it
  };
  const Row rows[] = {
      {"strips take their part from what the earlier ones left",
       {{kTop, {0, 30}}, {kBottom, {0, 10}}, {kLeft, {40, 0}}, {kRight, {20, 0}}, {kCentre, {}}},
       "10 20 210 50; 10 110 210 120; 10 50 50 110; 190 50 210 110; 50 50 190 110; 10 20 210 "
       "120; "},
      {"those may be shorter than their edge, and later ones too",
       {{kRight, {20, 15}}, {kLeft, {7, 0}}, {kBottom, {25, 10}}, {kTop, {0, 9}}},
       "190 20 210 35; 10 20 17 120; 17 110 42 120; 17 20 190 29; 10 20 37 39; "},
      {"a strip without an extent takes no room, and who fills leaves all to the next",
       {{kTop, {}}, {kRight, {}}, {kFill, {}}, {kFill, {50, 41}}},
       "10 20 210 20; 210 20 210 120; 10 20 210 120; 10 20 60 61; 10 20 210 120; "},
      {"a centred one is shifted by half of the room, truncated, or not at all",
       {{kCentre, {51, 40}}, {kCentre, {300, 40}}},
       "84 50 135 90; 10 50 310 90; 10 20 210 120; "},
  };
  for (const Row& row : rows) {
    zSizerDlist children;
    std::vector<std::unique_ptr<zSizer>> sizers;
    for (const auto& [gravity, extent] : row.children) {
      sizers.push_back(std::make_unique<zGravSizer>(gravity, extent));
      children.append(sizers.back().get());
    }
    zRect rect(10, 20, 210, 120);
    zNormalLayout::shared().apply(rect, children, 0);
    std::string places;
    for (const auto& sizer : sizers) {
      places += shown(sizer->rect());
    }
    EXPECT_EQ(places + shown(rect), row.places) << row.rule;
  }
}

TEST(NormalLayout, AsksForWhatItsChildrenNeedTogether) {
  zSizer parent;
  const zGravSizer top(kTop, {50, 10}, &parent), second(kTop, {80, 15}, &parent);
  const zGravSizer left(kLeft, {90, 22}, &parent);
  EXPECT_EQ(asked(parent), "90x25 90x25 90x25 by 6; ") << "strips at the top stack";
  const zGravSizer bottom(kBottom, {20, 26}, &parent);
  // Intended: the height is raised to the right edge of the fixed children.
  const zSizer fixed(10, 100, 20, 20, &parent), before(1, 2, 3, 4, &parent);
  EXPECT_EQ(asked(parent), "90x26 90x30 90x30 by 6; ");
}

TEST(Layouts, KeepOwnPositionsAndLetUnsetSizesReachToTheEdges) {
  zSlotLayout slots;
  slots.setMargin({5, 4});
  zSizer parent;
  const zGravSizer strip(kRight, 30, &parent);
  const zSizer fixed(5, 6, 70, 60, &parent);
  EXPECT_EQ(asked(parent), "30x0 75x75 75x75 by 6; ");
  const zSizer open({5, 6}, {kNotSet, kNotSet}, &parent);
  parent.apply({10, 20, 210, 120}, kApplyMoves);
  EXPECT_EQ(shown(fixed.rect()) + shown(open.rect()), "5 6 75 66; 5 6 180 120; ");

  zSizer bar;
  bar.setLayout(&slots);
  zSizer first(2, 30, 24, 22, &bar);
  EXPECT_EQ(asked(bar), "0x0 26x26 26x26 by 6; ") << "as in the default layout";
  zSizer second({6, 7}, {kNotSet, kNotSet}, &bar);
  bar.apply({10, 20, 210, 120}, kApplyMoves);
  EXPECT_EQ(shown(first.rect()) + shown(second.rect()), "2 30 26 52; 6 7 205 116; ");
}

TEST(Sizer, LeavesNobodyWithAPointerToItWhenItGoes) {
  auto parent = std::make_unique<zSizer>();
  auto first = std::make_unique<zSizer>(parent.get());
  zSizer second(parent.get());
  zSizer third(parent.get());
  third.setParent(&second);
  third.setParent(nullptr);
  first.reset();
  EXPECT_EQ(parent->childCount(), 1);
  parent.reset();
  EXPECT_EQ(second.parent(), nullptr);
}

TEST(Sizer, ChildrenOfAWindowAreRelativeToItAndUpdateMovesThemWithoutIt) {
  FakeWindow own, inner;
  zSizer parent;
  parent.setGravity(kFill);
  zGravSizer child(kLeft, 30, &parent);
  child.setWindow(&inner);
  parent.apply({10, 20, 110, 70}, kApplyMoves);
  parent.setWindow(&own);
  parent.update(nullptr);
  const zRect larger(3, 4, 200, 80);
  parent.update(&larger);
  EXPECT_EQ(inner.moves, "10 20 40 70; 0 0 30 50; 0 0 30 76; ");
  EXPECT_EQ(own.moves, "");
  EXPECT_EQ(parent.rect(), larger);
}

TEST(Sizer, AWindowMovesOnlyWithModeGravityAndWidget) {
  const auto moves = [](zWindowMode mode, zGravity gravity, bool hasWidget, zApplyMode apply) {
    FakeWindow window;
    window.widget = hasWidget;
    zSizer sizer;
    sizer.setGravity(gravity);
    sizer.setWindow(&window, mode);
    sizer.apply({1, 2, 30, 40}, apply);
    return window.moves;
  };
  EXPECT_EQ(moves(kWindowMoved, kLeft, true, kApplyMoves), "1 2 30 40; ");
  EXPECT_EQ(moves(kWindowMovedCtrl, kLeft, true, kApplyMoves), "1 2 30 40; ");
  EXPECT_EQ(moves(kWindowNotMoved, kLeft, true, kApplyMoves), "");
  EXPECT_EQ(moves(kWindowMoved, kGravityOwnPosition, true, kApplyMoves), "");
  EXPECT_EQ(moves(kWindowMoved, kLeft, false, kApplyMoves), "");
  EXPECT_EQ(moves(kWindowMoved, kLeft, true, kApplyDoesNotMove), "");
}

TEST(Sizer, EachKindAsksForWhatItIsMadeFor) {
  zGravSizer strip(kBottom, 24), side(kRight, 9), middle(kCentre, 9);
  EXPECT_EQ(asked(strip) + asked(side) + asked(middle),
            "0x24 0x24 0x24 by 3; 9x0 9x0 9x0 by 1; 9x9 9x9 9x9 by 4; ");

  zGrowToFitSizer row(kLeft, kGrowFixedHeight, 17), column(kTop, kGrowFixedWidth, 17);
  EXPECT_EQ(asked(row) + asked(column), "0x17 0x17 0x17 by 0; 17x0 17x0 17x0 by 2; ");
  row.setSize({120, 25});
  EXPECT_EQ(asked(row), "120x25 120x25 120x25 by 0; ") << "without children its own size";
  const zGravSizer inRow(kTop, zDimension{60, 40}, &row), inColumn(kTop, {60, 40}, &column);
  EXPECT_EQ(asked(row) + asked(column), "60x17 60x17 60x17 by 6; 17x40 17x40 17x40 by 6; ");
  EXPECT_EQ(row.query(kSizerGrowToFit), &row);
  EXPECT_EQ(row.query(kSizerGrav), &row) << "the kinds of its bases too";
  EXPECT_EQ(row.query(kSizerPlain), &row);
  EXPECT_EQ(row.query(kSizerLeaf), nullptr);

  FakeWindow window;
  zLeafSizer leaf(1, 2, 3, 4);
  leaf.setWindow(&window);
  const zGravSizer unplaced(kFill, 0, &leaf);
  const zRect rect(5, 6, 70, 80);
  leaf.update(&rect);
  leaf.update(nullptr);
  EXPECT_EQ(asked(leaf) + shown(leaf.rect()), "65x74 65x74 65x74 by 6; 5 6 70 80; ");
  EXPECT_EQ(unplaced.pos().x, kNotSet) << "it lays out no children";

  zSizeWithParent whole;
  whole.parentSized(window, {320, 240});
  EXPECT_EQ(window.moves, "0 0 320 240; ");
  EXPECT_EQ(asked(whole), "0x0 0x0 0x0 by 4; ");
  EXPECT_EQ(leaf.query(kSizerLeaf), &leaf);
  EXPECT_EQ(whole.query(kSizerSizeWithParent), &whole);
}

}  // namespace
