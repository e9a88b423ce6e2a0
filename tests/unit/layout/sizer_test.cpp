#include "framework/layout/sizer.h"

#include <gtest/gtest.h>

#include <memory>

#include "fake_window.h"
#include "framework/layout/sizers.h"

namespace {

TEST(Sizer, StartsUnsetAndAtItsOwnPosition) {
  const zSizer sizer;
  EXPECT_EQ(sizer.pos(), (zPoint{kNotSet, kNotSet}));
  EXPECT_EQ(sizer.size(), (zDimension{kNotSet, kNotSet}));
  EXPECT_EQ(sizer.gravity(), kGravityOwnPosition);
  EXPECT_EQ(sizer.windowMode(), kWindowNone);
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

TEST(Sizer, ChildrenOfAWindowHaveCoordinatesRelativeToIt) {
  FakeWindow window;
  zSizer parent;
  const zGravSizer child(kGravityFill, 0, &parent);
  parent.apply({10, 20, 60, 90}, kApplyMoves);
  EXPECT_EQ(child.rect(), zRect(10, 20, 60, 90));
  parent.setWindow(&window);
  parent.apply({10, 20, 60, 90}, kApplyMoves);
  EXPECT_EQ(child.rect(), zRect(0, 0, 50, 70));
  EXPECT_EQ(parent.rect(), zRect(10, 20, 60, 90));
}

TEST(Sizer, UpdateLaysOutAgainInTheStoredRectangleWithoutMovingItsOwnWindow) {
  FakeWindow own;
  FakeWindow childWindow;
  zSizer parent(10, 20, 100, 50);
  parent.setGravity(kGravityFill);
  parent.setWindow(&own);
  zGravSizer child(kGravityLeft, 30, &parent);
  child.setWindow(&childWindow);

  parent.update(nullptr);
  EXPECT_EQ(childWindow.place, zRect(0, 0, 30, 50));
  const zRect larger(0, 0, 200, 80);
  parent.update(&larger);
  EXPECT_EQ(childWindow.place, zRect(0, 0, 30, 80));
  EXPECT_EQ(parent.rect(), larger);
  EXPECT_EQ(own.moves, 0);
}

TEST(Sizer, AWindowMovesOnlyWithModeGravityAndWidget) {
  struct Row {
    zWindowMode mode;
    zGravity gravity;
    bool widget;
    int noMove;
    int moves;
  };
  for (const Row& row : {Row{kWindowMoved, kGravityLeft, true, kApplyMoves, 1},
                         Row{kWindowMovedCtrl, kGravityLeft, true, kApplyMoves, 1},
                         Row{kWindowNotMoved, kGravityLeft, true, kApplyMoves, 0},
                         Row{kWindowMoved, kGravityOwnPosition, true, kApplyMoves, 0},
                         Row{kWindowMoved, kGravityLeft, false, kApplyMoves, 0},
                         Row{kWindowMoved, kGravityLeft, true, kApplyDoesNotMove, 0}}) {
    SCOPED_TRACE(testing::Message() << "mode " << row.mode << " gravity " << row.gravity);
    FakeWindow window;
    window.widget = row.widget;
    zSizer sizer;
    sizer.setGravity(row.gravity);
    sizer.setWindow(&window, row.mode);
    sizer.apply({1, 2, 30, 40}, row.noMove);
    EXPECT_EQ(window.moves, row.moves);
    EXPECT_EQ(sizer.rect(), zRect(1, 2, 30, 40));
  }
}

TEST(GravSizer, ReportsItsExtentWhateverItsChildrenAre) {
  zGravSizer strip(kGravityBottom, 24);
  const zGravSizer child(kGravityTop, 500, &strip);
  zLayoutInfo info;
  strip.getInfo(info);
  EXPECT_EQ(info.gravity, kGravityBottom);
  for (const zDimension& size : {info.minSize, info.size, info.maxSize}) {
    EXPECT_EQ(size, (zDimension{0, 24}));
  }
  EXPECT_EQ(zGravSizer(kGravityRight, 9).extent(), (zDimension{9, 0}));
  EXPECT_EQ(zGravSizer(kGravityCentre, 9).extent(), (zDimension{9, 9}));
}

TEST(GrowToFitSizer, FollowsItsChildrenButForTheFixedExtent) {
  zGrowToFitSizer sizer(kGravityLeft, kGrowFixedHeight, 17);
  zLayoutInfo info;
  sizer.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{0, 17}));
  sizer.setSize({120, 25});
  sizer.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{120, 25}));

  const zGravSizer child(kGravityTop, zDimension{60, 40}, &sizer);
  sizer.getInfo(info);
  EXPECT_EQ(info.minSize, (zDimension{60, 17}));
  EXPECT_EQ(info.maxSize, (zDimension{60, 17}));

  zGrowToFitSizer column(kGravityTop, kGrowFixedWidth, 17);
  const zGravSizer columnChild(kGravityTop, zDimension{60, 40}, &column);
  column.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{17, 40}));
}

TEST(LeafSizer, HoldsARectangleAndNeverPlacesChildren) {
  zLeafSizer leaf(1, 2, 3, 4);
  const zGravSizer child(kGravityFill, 0, &leaf);
  const zRect rect(5, 6, 70, 80);
  leaf.update(&rect);
  EXPECT_EQ(leaf.rect(), rect);
  EXPECT_EQ(child.pos().x, kNotSet);
  zLayoutInfo info;
  leaf.getInfo(info);
  EXPECT_EQ(info.size, (zDimension{65, 74}));
}

TEST(SizeWithParent, FollowsTheParentsSizeAndAsksForAllRoom) {
  FakeWindow window;
  zSizeWithParent sizer;
  sizer.parentSized(window, {320, 240});
  EXPECT_EQ(window.place, zRect(0, 0, 320, 240));
  zLayoutInfo info;
  sizer.getInfo(info);
  EXPECT_EQ(info.gravity, kGravityCentre);
  EXPECT_EQ(info.size, (zDimension{0, 0}));
}

TEST(Sizer, AnswersItsOwnKindAndThoseOfItsBases) {
  zGrowToFitSizer grow(kGravityLeft, kGrowFixedHeight, 1);
  zLeafSizer leaf;
  zSizeWithParent whole;
  EXPECT_EQ(grow.query(kSizerGrowToFit), &grow);
  EXPECT_EQ(grow.query(kSizerGrav), &grow);
  EXPECT_EQ(grow.query(kSizerPlain), &grow);
  EXPECT_EQ(grow.query(kSizerLeaf), nullptr);
  EXPECT_EQ(leaf.query(kSizerLeaf), &leaf);
  EXPECT_EQ(leaf.query(kSizerOwnPosition), nullptr);
  EXPECT_EQ(whole.query(kSizerSizeWithParent), &whole);
}

}  // namespace
