#include <gtest/gtest.h>

#include "fake_pane.h"

namespace {

std::string text(const zRect& box) {
  std::string edges;
  for (const int edge : {box.left, box.top, box.right, box.bottom}) {
    edges += (edges.empty() ? "" : ",") + std::to_string(edge);
  }
  return edges;
}

class WinDisplay : public testing::Test {
 protected:
  void paintBlue() {
    display.lock();
    display.fillRect(FakePane::kAll, &blue);
    display.unlock();
  }
  /// The edges of the rectangle that shows `letter`, and how many pixels do when not all of it.
  std::string areaOf(char letter) const {
    const std::string rows = pane.pixels();
    zRect box(1000, 1000, 0, 0);
    int count = 0;
    for (int i = 0; i < FakePane::kAll.right * FakePane::kAll.bottom; ++i) {
      const int x = i % FakePane::kAll.right;
      const int y = i / FakePane::kAll.right;
      if (rows[static_cast<std::size_t>(i + y + 1)] == letter) {
        box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
               std::max(box.bottom, y + 1)};
        ++count;
      }
    }
    const bool isFull = count == box.width() * box.height();
    return count == 0 ? "none" : text(box) + (isFull ? "" : " with " + std::to_string(count));
  }
  std::string takeRegion() {
    zRegion region;
    display.takeInvalidRects(region);
    EXPECT_FALSE(display.hasInvalidRects());
    return text(region.clipBox());
  }

  FakePane pane;
  zWinDisplay display{pane};
  zBrush blue{kBlue};
};

TEST_F(WinDisplay, DrawsNothingBeforeTheFirstExposeButMeasures) {
  zDimension size;
  display.textSize(size, "abc");
  EXPECT_EQ(size, (zDimension{45, 15})) << "not locked yet";
  display.lock();
  EXPECT_EQ(display.fillRect({0, 0, 10, 10}, &blue), kNotReady);
  EXPECT_EQ(display.polyline({{0, 0}, {9, 9}}), kNotReady);
  EXPECT_EQ(display.text(0, 0, "abc"), kNotReady);
  EXPECT_EQ(display.setPixel(0, 0, kRed), kNotReady);
  EXPECT_EQ(display.drawBitmap(1, {0, 0, 1, 1}, {}), kNotReady);
  EXPECT_EQ(display.copyIcon(1, 1, {1, 1}, {}), kNotReady);
  display.textSize(size, "abc");
  EXPECT_NE(size.height, 15);
  display.unlock();
  EXPECT_EQ(areaOf('.'), "0,0,24,16");
}

class ReadyWinDisplay : public WinDisplay {
 protected:
  ReadyWinDisplay() { pane.makeReady(display); }
};

TEST_F(ReadyWinDisplay, TheFirstAreaSendsOneExposeAndTouchesOnlyACornerUnlessItErases) {
  struct Row {
    zRect area;
    int erase;
    const char* events;   ///< what comes at once
    const char* cleared;  ///< and what it clears; nothing more at the paint
    const char* painted;  ///< the region of the paint
  };
  for (const Row& row : {
           Row{{5, 6, 15, 14}, 0, "sent 5,6,7,8 ", "5,6,7,8", "5,6,15,14"},
           {{5, 6, 15, 14}, 1, "sent 5,6,15,14 ", "5,6,15,14", "5,6,15,14"},
           {{5, 6, 7, 8}, 0, "sent 5,6,7,8 ", "5,6,7,8", "5,6,7,8"},
           {{5, 6, 6, 14}, 0, "sent 5,6,6,14 ", "5,6,6,14", "5,6,6,14"},
           {{5, 6, 15, 7}, 0, "sent 5,6,15,7 ", "5,6,15,7", "5,6,15,7"},
           // To X an extent of 0 reaches to the edge of the window.
           {{5, 6, 5, 14}, 1, "sent 5,6,5,14 ", "none", "0,0,0,0"},
           {{5, 6, 15, 6}, 1, "sent 5,6,15,6 ", "none", "0,0,0,0"},
           // All zero is the whole window.
           {{}, 0, "sent 0,0,2,2 ", "0,0,2,2", "0,0,24,16"},
           {{}, 1, "sent 0,0,0,0 ", "0,0,24,16", "0,0,24,16"},
       }) {
    SCOPED_TRACE(row.events);
    paintBlue();
    display.invalidate(&row.area, row.erase);
    EXPECT_EQ(pane.takeEvents(), row.events);
    EXPECT_EQ(areaOf('.'), row.cleared);
    EXPECT_EQ(display.firstInvalidRect(), row.area);
    paintBlue();
    EXPECT_EQ(takeRegion(), row.painted);
    EXPECT_EQ(areaOf('.'), "none");
  }
}

TEST_F(ReadyWinDisplay, LaterAreasWaitForThePaintWhichErasesThem) {
  const zRect first(0, 0, 4, 4);
  const zRect second(6, 6, 10, 10);
  const zRect third(12, 12, 20, 15);
  paintBlue();
  display.invalidate(&first, 0);
  display.invalidate(&second, 1);
  display.invalidate(&third, 0);
  EXPECT_EQ(pane.takeEvents(), "sent 0,0,2,2 ");
  paintBlue();
  EXPECT_EQ(takeRegion(), "0,0,20,15");
  EXPECT_EQ(areaOf('.'), "6,6,10,10");
  EXPECT_EQ(pane.takeEvents(), "") << "clearing for a paint asks for no other";

  display.invalidate(&first, 0);
  display.invalidate(nullptr, 1);
  paintBlue();
  EXPECT_EQ(takeRegion(), "0,0,24,16");
  EXPECT_EQ(areaOf('.'), "0,0,24,16");
  zRegion region(third);
  region.add(second);
  display.invalidateRegion(&region, 0);
  EXPECT_EQ(display.firstInvalidRect(), zRect(6, 6, 20, 15));
  display.invalidateRegion(nullptr, 0);
  EXPECT_EQ(takeRegion(), "0,0,24,16");
  pane.takeEvents();
  // A paint lock holds invalidations back.
  pane.paintLock = 1;
  display.invalidate(nullptr, 1);
  EXPECT_FALSE(display.hasInvalidRects());
  EXPECT_EQ(pane.takeEvents(), "");
}

TEST_F(ReadyWinDisplay, APaintIsClippedToItsRegionAndTheUsersClipToBoth) {
  const zRegion user(zRect(8, 8, 20, 12));
  zRect bounds;
  const auto filled = [this] {
    display.fillRect(FakePane::kAll, &blue);
    const std::string area = areaOf('b');
    zBrush ground(kColorLightGrey);
    display.fillRect(FakePane::kAll, &ground);
    return area;
  };
  display.beginPaint(zRegion(zRect(2, 2, 12, 12)));
  display.clipBounds(bounds);
  EXPECT_EQ(bounds, zRect(2, 2, 12, 12));
  EXPECT_EQ(filled(), "2,2,12,12");
  EXPECT_EQ(display.setClipRegion(&user), 0);
  EXPECT_EQ(filled(), "8,8,12,12");
  display.intersectClip({10, 0, 24, 10});
  EXPECT_EQ(filled(), "10,8,12,10");
  display.setClipRegion(nullptr);
  display.intersectClip({0, 0, 4, 4});
  EXPECT_EQ(filled(), "2,2,4,4");
  display.setClipRegion(nullptr);
  EXPECT_EQ(filled(), "2,2,12,12");
  display.setClipRegion(&user);
  display.endPaint();
  display.clipBounds(bounds);
  EXPECT_EQ(bounds, FakePane::kAll);
  display.lock();
  EXPECT_EQ(filled(), "0,0,24,16") << "the user's region went with the paint";
  display.setClipRegion(&user);
  EXPECT_EQ(filled(), "8,8,20,12");
  display.setClipRegion(nullptr);
  EXPECT_EQ(filled(), "0,0,24,16");
  display.unlock();
}

TEST_F(ReadyWinDisplay, WhatIsSetBeforeTheFirstLockHoldsFromThatOn) {
  const zRegion user(zRect(0, 0, 10, 10));
  zPen red(kRed, kPenSolid, 2);
  display.setClipRegion(&user);
  display.pushPen(&red);
  display.setBrush(&blue);
  display.unlock();  // one too many does no harm
  display.lock();
  display.lock();
  display.unlock();
  display.fillRect(FakePane::kAll);
  EXPECT_EQ(areaOf('b'), "0,0,10,10");
  display.polyline({{-5, 5}, {30, 5}});
  EXPECT_EQ(pane.picture({0, 3, 12, 7}), "\nbbbbbbbbbb..\nrrrrrrrrrr.. *2\nbbbbbbbbbb..\n");
  display.unlock();
}

}  // namespace
