// The tree of sizers and how its layouts share a rectangle.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "framework/layout/sizers.h"
#include "framework/layout/slot_layout.h"

namespace {

/// "left top right bottom; "
std::string shown(const zRect& r) {
  return (testing::Message() << r.left << ' ' << r.top << ' ' << r.right << ' ' << r.bottom << "; ")
      .GetString();
}

/// The least, usual and largest size that a sizer asks for, and its gravity.
std::string asked(zSizer& sizer) {
  zLayoutInfo info;
  sizer.getInfo(info);
  testing::Message text;
  for (const zDimension& size : {info.minSize, info.size, info.maxSize}) {
    text << size.width << 'x' << size.height << ' ';
  }
  return (text << "by " << info.gravity).GetString();
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
    const char* places;  ///< in 10 20 210 120
  };
  constexpr zGravity kLeft = kGravityLeft, kRight = kGravityRight, kTop = kGravityTop;
  constexpr zGravity kBottom = kGravityBottom, kCentre = kGravityCentre, kFill = kGravityFill;
  const Row rows[] = {
      {"strips take their part from what the earlier ones left",
       {{kTop, {0, 30}}, {kBottom, {0, 10}}, {kLeft, {40, 0}}, {kRight, {20, 0}}, {kCentre, {}}},
       "10 20 210 50; 10 110 210 120; 10 50 50 110; 190 50 210 110; 50 50 190 110; "},
      {"those may be shorter than their edge, and later ones too",
       {{kRight, {20, 15}}, {kBottom, {25, 10}}},
       "190 20 210 35; 10 110 35 120; "},
      {"a strip without an extent takes no room, and who fills leaves all to the next",
       {{kTop, {}}, {kRight, {}}, {kFill, {}}, {kFill, {50, 41}}},
       "10 20 210 20; 210 20 210 120; 10 20 210 120; 10 20 60 61; "},
      {"a centred one is shifted by half of the room, truncated, or not at all",
       {{kCentre, {51, 40}}, {kCentre, {300, 40}}},
       "84 50 135 90; 10 50 310 90; "},
  };
  for (const Row& row : rows) {
    zSizer parent;
    std::vector<std::unique_ptr<zGravSizer>> sizers;
    for (const auto& [gravity, extent] : row.children) {
      sizers.push_back(std::make_unique<zGravSizer>(gravity, extent, &parent));
    }
    parent.apply({10, 20, 210, 120}, kApplyMoves);
    std::string places;
    for (const auto& sizer : sizers) {
      places += shown(sizer->rect());
    }
    EXPECT_EQ(places, row.places) << row.rule;
  }
}

TEST(NormalLayout, WithoutAFillTheCallersRectangleShrinksToTheStrips) {
  zSizerDlist children;
  zGravSizer top(kGravityTop, 12), left(kGravityLeft, 34), fill(kGravityFill, 0);
  children.append(&top);
  children.append(&left);
  zRect rect(10, 20, 210, 120);
  zNormalLayout::shared().apply(rect, children, 2);
  EXPECT_EQ(shown(rect), "10 20 44 32; ");
  children.append(&fill);
  zRect filled(10, 20, 210, 120);
  zNormalLayout::shared().apply(filled, children, 3);
  EXPECT_EQ(shown(filled), "10 20 210 120; ");
}

// Answers for a strip, yet wants to be placed at its own position.
class SelfPlaced : public zGravSizer {
 public:
  using zGravSizer::zGravSizer;
  zSizer* query(int kind) override {
    return kind == kSizerOwnPosition ? this : zGravSizer::query(kind);
  }
};

TEST(NormalLayout, OwnPositionsAreKeptAndUnsetSizesReachToTheEdges) {
  zSizer parent;
  const zGravSizer strip(kGravityRight, 30, &parent);
  const zSizer fixed(5, 6, 70, 80, &parent);
  SelfPlaced odd(kGravityTop, zDimension{10, 20}, &parent);
  odd.setPos({7, 8});
  EXPECT_EQ(asked(parent), "30x20 75x75 75x75 by 6") << "the odd one by its gravity";
  const zSizer open({5, 6}, {kNotSet, kNotSet}, &parent);
  parent.apply({0, 0, 200, 100}, kApplyMoves);
  EXPECT_EQ(shown(fixed.rect()) + shown(open.rect()) + shown(odd.rect()),
            "5 6 75 86; 5 6 170 100; 7 8 17 28; ");
}

/// Asks for whatever it is told to.
class Asking : public zSizer {
 public:
  Asking(zSizer* parent, const zLayoutInfo& wanted) : zSizer(parent), info(wanted) {}
  void getInfo(zLayoutInfo& told) override { told = info; }

 private:
  zLayoutInfo info;
};

TEST(NormalLayout, AsksForWhatItsChildrenNeedTogether) {
  const zLayoutInfo fixed{{10, 100}, {1, 1}, {20, 20}, {20, 20}, kGravityOwnPosition};
  const std::pair<std::vector<zLayoutInfo>, const char*> rows[] = {
      // Top strips stack, others raise to the largest.
      {{{{}, {50, 10}, {51, 11}, {52, 12}, kGravityTop},
        {{}, {80, 15}, {70, 16}, {60, 17}, kGravityTop},
        {{}, {20, 21}, {22, 23}, {24, 30}, kGravityBottom},
        {{}, {30, 22}, {90, 22}, {31, 22}, kGravityLeft}},
       "80x25 90x27 60x30 by 6"},
      // Intended: the height is raised to the right edge of the fixed children. Larger ones stay.
      {{fixed, fixed}, "0x0 30x30 30x30 by 6"},
      {{{{}, {5, 5}, {50, 10}, {60, 15}, kGravityLeft}, fixed}, "5x5 50x30 60x30 by 6"},
      {{{{}, {0, 0}, {10, 40}, {90, 80}, kGravityFill}, fixed}, "0x0 30x40 90x80 by 6"},
  };
  for (const auto& [children, expected] : rows) {
    zSizer parent;
    std::vector<std::unique_ptr<Asking>> sizers;
    for (const zLayoutInfo& child : children) {
      sizers.push_back(std::make_unique<Asking>(&parent, child));
    }
    EXPECT_EQ(asked(parent), expected);
  }
}

TEST(SlotLayout, LeavesChildrenWithoutASlotAtTheirPositionsAndAsksForThem) {
  zSlotLayout layout;
  layout.setMargin({5, 4});
  zSizerDlist children;
  zSizer fixed(2, 30, 24, 22);
  zSizer open({6, 7}, {kNotSet, kNotSet});
  children.append(&fixed);
  children.append(&open);
  zRect rect(100, 10, 300, 50);
  layout.apply(rect, children, 2);
  EXPECT_EQ(shown(fixed.rect()) + shown(open.rect()), "2 30 26 52; 6 7 295 46; ");
  EXPECT_EQ(shown(rect), "100 10 100 10; ") << "there are no slots";
  zSizer parent;
  parent.setLayout(&layout);
  fixed.setParent(&parent);
  EXPECT_EQ(asked(parent), "0x0 26x26 26x26 by 6") << "as in the default layout";
}

TEST(Sizer, DeletionOrphansChildrenAndLeavesTheParent) {
  auto parent = std::make_unique<zSizer>();
  auto first = std::make_unique<zSizer>(parent.get());
  const zSizer second(parent.get());
  ASSERT_EQ(parent->childCount(), 2);
  first.reset();
  EXPECT_EQ(parent->childCount(), 1);
  parent.reset();
  EXPECT_EQ(second.parent(), nullptr);
}

TEST(Sizer, ChildrenOfAWindowAreRelativeToItAndUpdateMovesThemWithoutIt) {
  FakeWindow own, inner;
  zSizer parent;
  parent.setGravity(kGravityFill);
  zGravSizer child(kGravityLeft, 30, &parent);
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
  struct Row {
    zWindowMode mode;
    zGravity gravity;
    bool widget;
    int noMove;
    bool moves;
  };
  for (const Row& row : {Row{kWindowMoved, kGravityLeft, true, kApplyMoves, true},
                         Row{kWindowMovedCtrl, kGravityLeft, true, kApplyMoves, true},
                         Row{kWindowNotMoved, kGravityLeft, true, kApplyMoves, false},
                         Row{kWindowMoved, kGravityOwnPosition, true, kApplyMoves, false},
                         Row{kWindowMoved, kGravityLeft, false, kApplyMoves, false},
                         Row{kWindowMoved, kGravityLeft, true, kApplyDoesNotMove, false}}) {
    FakeWindow window;
    window.widget = row.widget;
    zSizer sizer;
    sizer.setGravity(row.gravity);
    sizer.setWindow(&window, row.mode);
    sizer.apply({1, 2, 30, 40}, row.noMove);
    EXPECT_EQ(window.moves, row.moves ? "1 2 30 40; " : "") << row.mode << ' ' << row.gravity;
    EXPECT_EQ(shown(sizer.rect()), "1 2 30 40; ");
  }
}

TEST(Sizer, EachKindAsksForWhatItIsMadeFor) {
  zGravSizer strip(kGravityBottom, 24);
  const zGravSizer ignored(kGravityTop, 500, &strip);
  EXPECT_EQ(asked(strip), "0x24 0x24 0x24 by 3");
  zGravSizer side(kGravityRight, 9), middle(kGravityCentre, 9);
  EXPECT_EQ(asked(side) + asked(middle), "9x0 9x0 9x0 by 19x9 9x9 9x9 by 4");

  zGrowToFitSizer row(kGravityLeft, kGrowFixedHeight, 17);
  EXPECT_EQ(asked(row), "0x17 0x17 0x17 by 0");
  row.setSize({120, 25});
  EXPECT_EQ(asked(row), "120x25 120x25 120x25 by 0") << "without children its own size";
  const zGravSizer rowChild(kGravityTop, zDimension{60, 40}, &row);
  zGrowToFitSizer column(kGravityTop, kGrowFixedWidth, 17);
  const zGravSizer columnChild(kGravityTop, zDimension{60, 40}, &column);
  EXPECT_EQ(asked(row) + asked(column), "60x17 60x17 60x17 by 617x40 17x40 17x40 by 6");

  zLeafSizer leaf(1, 2, 3, 4);
  const zGravSizer unplaced(kGravityFill, 0, &leaf);
  const zRect rect(5, 6, 70, 80);
  leaf.update(&rect);
  EXPECT_EQ(asked(leaf), "65x74 65x74 65x74 by 6");
  EXPECT_EQ(leaf.pos(), rect.pos());
  EXPECT_EQ(unplaced.pos().x, kNotSet);

  FakeWindow window;
  zSizeWithParent whole;
  whole.parentSized(window, {320, 240});
  EXPECT_EQ(window.moves, "0 0 320 240; ");
  EXPECT_EQ(asked(whole), "0x0 0x0 0x0 by 4");

  EXPECT_EQ(row.query(kSizerGrowToFit), &row);
  EXPECT_EQ(row.query(kSizerGrav), &row);
  EXPECT_EQ(row.query(kSizerPlain), &row) << "the kinds of its bases too";
  EXPECT_EQ(row.query(kSizerLeaf), nullptr);
  EXPECT_EQ(leaf.query(kSizerLeaf), &leaf);
  EXPECT_EQ(whole.query(kSizerSizeWithParent), &whole);
}

}  // namespace
