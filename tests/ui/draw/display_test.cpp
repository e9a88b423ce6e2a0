#include "draw_test.h"
#include "framework/draw/pictures.h"

namespace {

TEST_F(DrawTest, NothingIsDrawnBeforeTheFirstExposeButTextIsMeasured) {
  zWinDisplay early(*this);
  zDimension size;
  early.textSize(size, "abc");
  EXPECT_EQ(size, (zDimension{45, 15})) << "not locked yet";
  early.lock();
  EXPECT_EQ(early.fillRect({0, 0, 10, 10}, &blue), kNotReady);
  EXPECT_EQ(early.polyline({{0, 0}, {9, 9}}), kNotReady);
  EXPECT_EQ(early.text(0, 0, "abc"), kNotReady);
  EXPECT_EQ(early.setPixel(0, 0, kRed), kNotReady);
  EXPECT_EQ(early.drawBitmap(1, {0, 0, 1, 1}, {}), kNotReady);
  EXPECT_EQ(early.copyIcon(1, 1, {1, 1}, {}), kNotReady);
  early.copyArea({0, 0, 1, 1}, {2, 2});
  early.textSize(size, "abc");
  EXPECT_NE(size.height, 15);
  EXPECT_EQ(picture(), "\n........................ *16\n");
}

TEST_F(DrawTest, DrawsAtTheOriginWithThePenAndTheBrushInForce) {
  zBrush hollow(kStockHollowBrush);
  zPen null(kStockNullPen);
  zPen wide(kRed, kPenSolid, 3);
  // What is set before the first lock holds from that on.
  display.setOrigin({2, 1});
  display.setBrush(&blue);
  display.pushPen(&red);
  display.unlock();  // one too many does no harm
  display.lock();
  EXPECT_EQ(display.fillRect({0, 0, 4, 3}), kDrawn);
  EXPECT_EQ(display.polyline({{6, 0}, {9, 3}, {9, 4}}), kDrawn);
  EXPECT_EQ(display.polyline({}), kDrawn);
  display.pushPen(&wide);
  display.polyline({{1, 6}, {6, 6}});
  display.pushPen(&null);
  display.setBrush(&hollow);
  display.polyline({{0, 12}, {9, 12}});
  display.fillRect({0, 9, 9, 14});
  display.popPen();
  display.popPen();
  display.polyline({{10, 6}, {12, 6}});
  display.popBrush();
  display.popBrush();
  display.popPen();
  display.fillRect({12, 0, 14, 2});  // white, the base
  display.polyline({{12, 4}, {14, 4}});
  EXPECT_EQ(display.setPixel(12, 5, kYellow), kDrawn);
  display.polyline({{13, 5}, {14, 5}});
  // Huge coordinates do not come round on the other side.
  display.fillRect({-70000, 0, -65000, 14}, &blue);
  display.fillRect({-70000, 8, 70000, 9}, &blue);
  display.polyline({{-70000, 9}, {70000, 9}});
  EXPECT_EQ(picture({0, 0, 24, 12}), R"(
........................
..bbbb..r.....ww........
..bbbb...r....ww........
..bbbb....r.............
...........r............
...........r..###.......
..rrrrrrrr....y##.......
..rrrrrrrr..rrr.........
..rrrrrrrr..............
bbbbbbbbbbbbbbbbbbbbbbbb
########################
........................
)");
}

TEST_F(DrawTest, PicturesAreCopiedWithoutAskingForAPaint) {
  zBitmap bitmap(4, 3);
  zBitmapDisplay canvas(bitmap);
  canvas.lock();
  canvas.fillRect({0, 0, 4, 3}, &blue);
  canvas.pushPen(&red);
  canvas.polyline({{0, 0}, {2, 2}});
  display.lock();
  display.setOrigin({1, 1});
  EXPECT_EQ(display.drawBitmap(bitmap.pixmap(), {1, 1, 4, 3}, {0, 0}), kDrawn);
  EXPECT_EQ(display.copyIcon(bitmap.pixmap(), 0, {4, 3}, {5, 0}), kDrawn);
  EXPECT_EQ(display.drawBitmap(0, {0, 0, 4, 3}, {10, 0}), kDrawn);
  display.copyArea({0, 0, 6, 4}, {12, 3});
  EXPECT_EQ(takeEvents(), "copied ") << "only for what is scrolled";
  // What a picture lacks would make a pane paint again, and for ever.
  display.drawBitmap(bitmap.pixmap(), {2, 0, 60, 1}, {0, 5});
  EXPECT_EQ(takeEvents(), "");
  EXPECT_EQ(picture({0, 0, 24, 7}), R"(
........................
.rbb..rbbb..............
.brb..brbb..............
......bbrb..............
.............rbb........
.............brb........
.bb.....................
)");
}

}  // namespace
