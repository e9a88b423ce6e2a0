#include <gtest/gtest.h>

#include "fake_pane.h"
#include "framework/draw/pictures.h"

namespace {

class ReadyDisplay : public testing::Test {
 protected:
  ReadyDisplay() {
    pane.makeReady(display);
    display.lock();
  }
  ~ReadyDisplay() override { display.unlock(); }

  FakePane pane;
  zWinDisplay display{pane};
  zPen red{kRed};
  zBrush blue{kBlue};
};

TEST_F(ReadyDisplay, DrawsAtItsOriginWithThePenAndTheBrushInForce) {
  zBrush hollow(kStockHollowBrush);
  zPen null(kStockNullPen);
  zPen wide(kRed, kPenSolid, 3);
  display.setOrigin({2, 1});
  EXPECT_EQ(display.fillRect({0, 0, 4, 3}, &blue), kDrawn);
  display.fillRect({18, 12, 20, 14});  // white, the base
  display.setBrush(&blue);
  display.pushPen(&red);
  EXPECT_EQ(display.polyline({{6, 0}, {9, 3}, {9, 5}}), kDrawn);
  EXPECT_EQ(display.polyline({}), kDrawn);
  display.fillRect({12, 0, 14, 2});
  display.pushPen(&wide);
  display.polyline({{1, 7}, {6, 7}});
  display.popPen();
  display.polyline({{1, 10}, {6, 10}});
  display.pushPen(&null);
  display.setBrush(&hollow);
  display.polyline({{0, 12}, {9, 12}});
  display.fillRect({0, 10, 9, 14});
  display.popPen();
  display.popPen();
  display.popBrush();
  display.popBrush();
  display.polyline({{12, 5}, {14, 5}});
  EXPECT_EQ(display.setPixel(12, 7, kYellow), kDrawn);
  display.polyline({{12, 9}, {14, 9}});
  EXPECT_EQ(pane.picture(), R"(
........................
..bbbb..r.....bb........
..bbbb...r....bb........
..bbbb....r.............
...........r............ *2
...........r..###.......
..rrrrrrrr..............
..rrrrrrrr....y.........
..rrrrrrrr..............
..............###.......
...rrrrrr...............
........................
....................ww.. *2
........................
)");
}

TEST_F(ReadyDisplay, HugeCoordinatesDoNotComeRoundOnTheOtherSide) {
  display.fillRect({-70000, 1, -65000, 3}, &blue);
  display.fillRect({-70000, 5, 70000, 6}, &blue);
  display.pushPen(&red);
  display.polyline({{-70000, 8}, {70000, 8}});
  EXPECT_EQ(pane.picture({0, 0, 3, 10}), "\n... *5\nbbb\n... *2\nrrr\n...\n");
  EXPECT_EQ(pane.picture({21, 0, 24, 10}), pane.picture({0, 0, 3, 10}));
}

// Intended: a popped pen leaves its dashes behind.
TEST_F(ReadyDisplay, PatternsAndDashesAreThoseOfTheObjectInForce) {
  zBrush hatched(kBlue, kHatchHorizontal);
  zPen dash(kRed, kPenDash);
  zPen dot(kBlue, kPenDot);
  zBrush yellow(kYellow);
  display.fillRect({0, 0, 4, 8}, &hatched);
  display.fillRect({4, 0, 8, 8}, &yellow);
  hatched.setOrigin({0, 2});
  display.fillRect({8, 0, 12, 8}, &hatched);
  display.pushPen(&dash);
  display.polyline({{0, 9}, {23, 9}});
  display.pushPen(&dot);
  display.popPen();
  display.polyline({{0, 11}, {23, 11}});
  display.popPen();
  display.polyline({{0, 13}, {23, 13}});
  EXPECT_EQ(pane.picture({0, 0, 24, 14}), R"(
....yyyy................
....yyyybbbb............
....yyyy................ *5
bbbbyyyy................
........................
rrrr..rrrr..rrrr..rrrr..
........................
r..r..r..r..r..r..r..r..
........................
########################
)");
}

TEST_F(ReadyDisplay, PicturesAreCopiedWithAndWithoutAMaskAndAskForNoPaint) {
  zBitmap bitmap(4, 3);
  zBitmapDisplay canvas(bitmap);
  canvas.lock();
  canvas.fillRect({0, 0, 4, 3}, &blue);
  canvas.pushPen(&red);
  canvas.polyline({{0, 0}, {2, 2}});
  canvas.unlock();
  zRect all;
  canvas.getInterior(all);
  EXPECT_EQ(all, zRect(0, 0, 4, 3));
  display.setOrigin({1, 1});
  EXPECT_EQ(display.drawBitmap(bitmap.pixmap(), {1, 1, 4, 3}, {0, 0}), kDrawn);
  EXPECT_EQ(display.copyIcon(bitmap.pixmap(), 0, {4, 3}, {5, 0}), kDrawn);
  EXPECT_EQ(display.drawBitmap(0, {0, 0, 4, 3}, {10, 0}), kDrawn);
  display.copyArea({0, 0, 6, 4}, {12, 8});
  EXPECT_EQ(pane.takeEvents(), "copied ") << "only for what is scrolled";
  // What a picture lacks would make a pane paint again, and for ever.
  display.drawBitmap(bitmap.pixmap(), {2, 0, 60, 1}, {0, 12});
  EXPECT_EQ(pane.takeEvents(), "");
  EXPECT_EQ(pane.picture(), R"(
........................
.rbb..rbbb..............
.brb..brbb..............
......bbrb..............
........................ *5
.............rbb........
.............brb........
........................ *2
.bb.....................
........................ *2
)");
}

}  // namespace
