#include <gtest/gtest.h>

#include "fake_pane.h"
#include "framework/draw/pictures.h"

namespace {

constexpr std::uint32_t kRed = 0xFF0000;
constexpr std::uint32_t kBlue = 0x0000FF;
constexpr std::uint32_t kGround = FakePane::kBackground;
constexpr int kRoundJoin = 1;
constexpr int kRoundCap = 2;
constexpr int kSolidLine = 0;
constexpr int kOnOffDash = 1;

class Shapes : public testing::Test {
 protected:
  Shapes() {
    pane.makeReady(display);
    display.lock();
  }
  ~Shapes() override { display.unlock(); }

  FakePane pane;
  zWinDisplay display{pane};
  zPen redPen{zColor(kRed)};
  zBrush blueBrush{zColor(kBlue)};
};

TEST_F(Shapes, ARectangleIsFilledThenOutlinedOnePixelShort) {
  display.pushPen(&redPen);
  display.setBrush(&blueBrush);
  EXPECT_EQ(display.rectangle(10, 10, 20, 30), kDrawn);
  EXPECT_EQ(pane.at(10, 10), kRed);
  EXPECT_EQ(pane.at(19, 29), kRed);
  EXPECT_EQ(pane.at(11, 11), kBlue);
  EXPECT_EQ(pane.at(18, 28), kBlue);
  EXPECT_EQ(pane.at(20, 30), kGround);
}

TEST_F(Shapes, ARectangleWithEdgesInTheWrongOrderStillDraws) {
  display.pushPen(&redPen);
  display.setBrush(&blueBrush);
  display.rectangle(20, 10, 15, 14);
  // |15 - 20 - 1| wide, from the left edge as given.
  EXPECT_EQ(pane.at(20, 10), kRed);
  EXPECT_EQ(pane.at(26, 13), kRed);
  EXPECT_EQ(pane.at(27, 13), kGround);
}

TEST_F(Shapes, AHollowBrushAndANullPenLeaveTheirHalfOut) {
  zBrush hollow(kStockHollowBrush);
  zPen null(kStockNullPen);
  display.pushPen(&redPen);
  display.setBrush(&hollow);
  display.rectangle(0, 0, 10, 10);
  EXPECT_EQ(pane.at(0, 0), kRed);
  EXPECT_EQ(pane.at(5, 5), kGround);
  display.fillRect({0, 0, 10, 10});
  EXPECT_EQ(pane.at(5, 5), kGround);

  display.pushPen(&null);
  display.setBrush(&blueBrush);
  display.rectangle(20, 0, 30, 10);
  EXPECT_EQ(pane.count({20, 0, 40, 20}, kBlue), 81);
  EXPECT_EQ(pane.count({20, 0, 40, 20}, kRed), 0);
}

TEST_F(Shapes, FillRectTakesTheFullSizeAndFrameRectOnePixelMore) {
  display.fillRect({5, 5, 15, 10}, &blueBrush);
  EXPECT_EQ(pane.count({0, 0, 50, 50}, kBlue), 50);
  display.frameRect({20, 20, 30, 30}, &blueBrush);
  EXPECT_EQ(pane.at(20, 20), kBlue);
  EXPECT_EQ(pane.at(31, 31), kBlue);
  EXPECT_EQ(pane.at(21, 21), kGround);
  EXPECT_EQ(pane.at(32, 32), kGround);
  EXPECT_EQ(display.brush()->colour(), kColorWhite) << "the brush was for the call only";
}

TEST_F(Shapes, LinesGoOnFromTheCurrentPointWhateverThePen) {
  zPen null(zColor(kRed), kPenNull);
  display.pushPen(&redPen);
  display.moveTo(5, 5);
  display.lineTo(15, 5);
  display.pushPen(&null);
  display.lineTo(15, 40);
  display.popPen();
  display.lineTo(30, 40);
  EXPECT_EQ(pane.count({0, 5, 50, 6}, kRed), 11);
  EXPECT_EQ(pane.at(15, 20), kGround);
  EXPECT_EQ(pane.count({0, 40, 50, 41}, kRed), 16);
  display.moveTo(60, 60);
  display.lineTo(60, 60);
  EXPECT_EQ(pane.at(60, 60), kGround) << "a point that has not moved draws nothing";
}

TEST_F(Shapes, TheOriginIsAddedToCoordinates) {
  display.setOrigin({30, 20});
  display.fillRect({0, 0, 2, 2}, &blueBrush);
  EXPECT_EQ(pane.at(30, 20), kBlue);
  EXPECT_EQ(pane.at(0, 0), kGround);
  display.setPixel(4, 4, zColor(kRed));
  zColor read;
  EXPECT_EQ(display.getPixel(4, 4, read), kDrawn);
  EXPECT_EQ(read, zColor(kRed));
  EXPECT_EQ(pane.at(34, 24), kRed);
}

TEST_F(Shapes, HugeCoordinatesDoNotComeRoundOnTheOtherSide) {
  display.fillRect({-70000, 10, -65000, 20}, &blueBrush);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kBlue), 0);
  display.fillRect({-70000, 10, 70000, 20}, &blueBrush);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kBlue), 1000);
}

TEST_F(Shapes, ThePenIsSentToTheServerFromTheFirstOneOnAndComesBackWhenItIsPoppedTo) {
  using State = FakePane::PenState;
  EXPECT_EQ(FakePane::penState(display), (State{0, kSolidLine, kRoundCap, kRoundJoin, 0}));
  zPen wide(zColor(kBlue), kPenDash, 3);
  display.pushPen(&redPen);
  display.pushPen(&wide);
  EXPECT_EQ(FakePane::penState(display), (State{3, kOnOffDash, kRoundCap, kRoundJoin, kBlue}));
  display.popPen();
  EXPECT_EQ(FakePane::penState(display), (State{0, kSolidLine, kRoundCap, kRoundJoin, kRed}));
}

// Intended: a popped pen leaves its dashes behind.
TEST_F(Shapes, PoppingAPenDoesNotBringBackTheDashes) {
  zPen dash(zColor(kRed), kPenDash);
  zPen dot(zColor(kBlue), kPenDot);
  const auto drawn = [&](int y) {
    display.moveTo(0, y);
    display.lineTo(59, y);
    return pane.count({0, y, 60, y + 1}, kRed);
  };
  display.pushPen(&dash);
  EXPECT_EQ(drawn(10), 40) << "four on, two off";
  display.pushPen(&dot);
  display.popPen();
  EXPECT_EQ(drawn(20), 20) << "one on, two off";
}

TEST_F(Shapes, RoundAndPolygonalShapesFillInsideTheirBox) {
  display.pushPen(&redPen);
  display.setBrush(&blueBrush);
  display.ellipse({0, 0, 20, 20});
  EXPECT_EQ(pane.at(10, 10), kBlue);
  EXPECT_EQ(pane.at(10, 0), kRed);
  EXPECT_EQ(pane.at(1, 1), kGround);
  display.roundRect({30, 0, 60, 20}, {10, 10});
  EXPECT_EQ(pane.at(45, 0), kRed);
  EXPECT_EQ(pane.at(45, 19), kRed);
  EXPECT_EQ(pane.at(45, 10), kBlue);
  EXPECT_EQ(pane.at(30, 0), kGround);
  display.polygon({{0, 40}, {20, 40}, {0, 60}});
  EXPECT_EQ(pane.at(4, 44), kBlue);
  EXPECT_EQ(pane.at(0, 50), kRed) << "the outline is closed";
  EXPECT_EQ(pane.at(18, 58), kGround);
}

TEST_F(Shapes, APatternedBrushFillsWithTheWindowsBackgroundBetween) {
  zBrush hatched(zColor(kBlue), kHatchHorizontal);
  display.fillRect({0, 0, 16, 16}, &hatched);
  EXPECT_EQ(pane.count({0, 0, 16, 16}, kBlue), 32);
  display.fillRect({0, 0, 16, 16}, &blueBrush);
  EXPECT_EQ(pane.count({0, 0, 16, 16}, kBlue), 256);
}

TEST_F(Shapes, APictureDrawnOffScreenIsCopiedWithAndWithoutMask) {
  zBitmap bitmap(2, 1);
  zBitmapDisplay picture(bitmap);
  picture.lock();
  picture.fillRect({0, 0, 2, 1}, &blueBrush);
  picture.unlock();
  display.drawBitmap(bitmap.pixmap(), {0, 0, 2, 1}, {10, 10});
  EXPECT_EQ(pane.count({10, 10, 12, 11}, kBlue), 2);

  const ziPixmapHandle mask = leftPixelMask();
  display.copyIcon(bitmap.pixmap(), mask.get(), {2, 1}, {20, 10});
  EXPECT_EQ(pane.at(20, 10), kBlue);
  EXPECT_EQ(pane.at(21, 10), kGround);
  display.copyArea({10, 10, 12, 11}, {40, 40});
  EXPECT_EQ(pane.count({40, 40, 42, 41}, kBlue), 2);
}

}  // namespace
