#include "framework/draw/displays.h"

#include <gtest/gtest.h>

#include "fake_pane.h"

namespace {

constexpr std::uint32_t kBlue = 0x0000FF;
constexpr std::uint32_t kGround = FakePane::kBackground;

class WinDisplay : public testing::Test {
 protected:
  void paintAllBlue() {
    display.lock();
    display.fillRect({0, 0, FakePane::kWidth, FakePane::kHeight}, &blue);
    display.unlock();
  }
  bool isBlue(int x, int y) const { return pane.at(x, y) == kBlue; }

  FakePane pane;
  zWinDisplay display{pane};
  zBrush blue{zColor(kBlue)};
};

TEST_F(WinDisplay, DrawsNothingBeforeTheFirstExposeButMeasures) {
  zDimension size;
  display.textSize(size, "abc");
  EXPECT_EQ(size, (zDimension{45, 15})) << "not locked yet";
  display.lock();
  EXPECT_EQ(display.fillRect({0, 0, 10, 10}, &blue), kNotReady);
  EXPECT_EQ(display.lineTo(5, 5), kNotReady);
  EXPECT_EQ(display.text(0, 0, "abc"), kNotReady);
  display.textSize(size, "abc");
  EXPECT_NE(size.height, 15);
  display.unlock();
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kGround), 8000);
}

class ReadyWinDisplay : public WinDisplay {
 protected:
  ReadyWinDisplay() { pane.makeReady(display); }
};

TEST_F(ReadyWinDisplay, InvalidateTouchesACornerOnlyOrClearsAtOnceToErase) {
  paintAllBlue();
  const zRect rect(10, 20, 50, 60);
  display.invalidate(&rect, 0);
  const auto exposed = pane.takeExposes();
  ASSERT_EQ(exposed.size(), 1U);
  EXPECT_TRUE(exposed[0].isSynthetic);
  EXPECT_EQ(exposed[0].rect, zRect(10, 20, 12, 22));
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kGround), 4);
  zRegion before;
  display.takeInvalidRects(before);

  paintAllBlue();
  display.invalidate(&rect, 1);
  EXPECT_EQ(pane.takeExposes().at(0).rect, rect);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kGround), 40 * 40);
  paintAllBlue();
  zRegion region;
  display.takeInvalidRects(region);
  EXPECT_TRUE(isBlue(30, 30)) << "and not once more at the paint";
}

TEST_F(ReadyWinDisplay, ANullRectangleIsTheWholeWindow) {
  paintAllBlue();
  display.invalidate(nullptr, 0);
  EXPECT_EQ(pane.takeExposes().at(0).rect, zRect(0, 0, 2, 2));
  zRegion region;
  display.takeInvalidRects(region);
  EXPECT_EQ(region.clipBox(), zRect(0, 0, 100, 80));
  EXPECT_TRUE(isBlue(50, 50));

  display.invalidate(nullptr, 1);
  EXPECT_EQ(pane.takeExposes().at(0).rect, zRect());
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kGround), 8000);
}

TEST_F(ReadyWinDisplay, ARectangleWithoutExtentDoesNotClearToTheEdge) {
  paintAllBlue();
  const zRect thin(10, 10, 10, 40);
  display.invalidate(&thin, 1);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kGround), 0);
  const zRect narrow(10, 10, 11, 40);
  zRegion region;
  display.takeInvalidRects(region);
  pane.takeExposes();
  display.invalidate(&narrow, 0);
  EXPECT_EQ(pane.takeExposes().at(0).rect, narrow) << "smaller than the corner: itself";
}

TEST_F(ReadyWinDisplay, LaterAreasWaitForThePaint) {
  paintAllBlue();
  const zRect first(0, 0, 10, 10);
  const zRect second(20, 20, 30, 30);
  const zRect third(40, 40, 50, 50);
  display.invalidate(&first, 0);
  display.invalidate(&second, 1);
  display.invalidate(&third, 0);
  EXPECT_EQ(pane.takeExposes().size(), 1U);
  EXPECT_TRUE(isBlue(25, 25));
  EXPECT_EQ(display.firstInvalidRect(), first);

  zRegion region;
  display.takeInvalidRects(region);
  EXPECT_FALSE(display.hasInvalidRects());
  EXPECT_TRUE(region.contains({5, 5}));
  EXPECT_TRUE(region.contains({25, 25}));
  EXPECT_TRUE(region.contains({45, 45}));
  EXPECT_FALSE(region.contains({15, 15}));
  EXPECT_FALSE(isBlue(25, 25)) << "asked to be erased";
  EXPECT_TRUE(isBlue(45, 45));
  EXPECT_TRUE(pane.takeExposes().empty()) << "clearing for a paint asks for no other";

  display.invalidateRegion(&region, 0);
  EXPECT_EQ(display.firstInvalidRect(), zRect(0, 0, 50, 50));
}

TEST_F(ReadyWinDisplay, AWindowsPaintLockHoldsInvalidationsBack) {
  pane.paintLock = 1;
  display.invalidate(nullptr, 1);
  EXPECT_FALSE(display.hasInvalidRects());
  EXPECT_TRUE(pane.takeExposes().empty());
}

TEST_F(ReadyWinDisplay, APaintIsClippedToItsRegionAndTheUsersClipToBoth) {
  display.beginPaint(zRegion(zRect(10, 10, 60, 60)));
  zRect bounds;
  display.clipBounds(bounds);
  EXPECT_EQ(bounds, zRect(10, 10, 60, 60));
  const zRegion user(zRect(50, 50, 90, 70));
  EXPECT_EQ(display.setClipRegion(&user), 0);
  display.fillRect({0, 0, 100, 80}, &blue);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kBlue), 100) << "only where both overlap";

  display.setClipRegion(nullptr);
  display.intersectClip({0, 0, 20, 12});
  display.fillRect({0, 0, 100, 80}, &blue);
  EXPECT_EQ(pane.count({0, 0, 40, 40}, kBlue), 20);

  display.setClipRegion(nullptr);
  display.fillRect({0, 0, 100, 80}, &blue);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kBlue), 2500);
  display.setClipRegion(&user);
  display.endPaint();
  paintAllBlue();
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kBlue), 8000) << "the user's region went with the paint";
}

TEST_F(ReadyWinDisplay, LocksNestClipFromTheFirstOnAndASurplusUnlockDoesNoHarm) {
  const zRegion user(zRect(0, 0, 10, 10));
  display.setClipRegion(&user);
  display.unlock();
  display.lock();
  display.lock();
  display.unlock();
  EXPECT_EQ(display.fillRect({0, 0, 100, 80}, &blue), kDrawn);
  EXPECT_EQ(pane.count({0, 0, 100, 80}, kBlue), 100);
  display.unlock();
}

}  // namespace
