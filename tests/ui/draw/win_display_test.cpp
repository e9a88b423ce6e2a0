#include <algorithm>

#include "draw_test.h"
#include "tests/ui/draw/picture.h"
#include "tests/ui/support/ui_test.h"

namespace {

class Paint : public DrawTest {
 protected:
  void paintBlue() {
    display.lock();
    display.fillRect(kAll, &blue);
    display.unlock();
  }
  /// The rectangle in which `letter` shows, "ragged" behind it when it does not fill it.
  std::string areaOf(char letter) const {
    const std::string shown = pictureOf(ui::display(), window, kAll).substr(1);
    const auto first = static_cast<int>(shown.find(letter));
    const auto last = static_cast<int>(shown.rfind(letter));
    if (last < 0) {
      return "none ";
    }
    constexpr int kStride = 25;
    const zRect area(first % kStride, first / kStride, last % kStride + 1, last / kStride + 1);
    const auto count = std::count(shown.begin(), shown.end(), letter);
    return told(area) + (count == area.width() * area.height() ? "" : "ragged");
  }
  /// The region of the next paint, and what taking it clears.
  std::string nextPaint() {
    paintBlue();
    zRegion region;
    display.takeInvalidRects(region);
    EXPECT_FALSE(display.hasInvalidRects());
    EXPECT_EQ(takeEvents(), "") << "clearing for a paint asks for no other";
    return told(region.clipBox()) + "clears " + areaOf('.');
  }
};

TEST_F(Paint, IsAskedForByOneExposeThatTouchesOnlyACornerUnlessItErases) {
  struct Row {
    zRect area;
    int erase;
    const char* sent;     ///< the event that comes at once
    const char* cleared;  ///< and what it clears; nothing more at the paint
    const char* painted;  ///< the region of the paint
  };
  for (const Row& row : {
           Row{{5, 6, 15, 14}, 0, "5,6,7,8 ", "5,6,7,8 ", "5,6,15,14 "},
           {{5, 6, 15, 14}, 1, "5,6,15,14 ", "5,6,15,14 ", "5,6,15,14 "},
           {{5, 6, 6, 14}, 0, "5,6,6,14 ", "5,6,6,14 ", "5,6,6,14 "},
           {{5, 6, 15, 7}, 0, "5,6,15,7 ", "5,6,15,7 ", "5,6,15,7 "},
           {{5, 6, 7, 8}, 0, "5,6,7,8 ", "5,6,7,8 ", "5,6,7,8 "},
           // To X an extent of 0 reaches to the edge of the window.
           {{5, 6, 5, 14}, 1, "5,6,5,14 ", "none ", "0,0,0,0 "},
           {{5, 6, 15, 6}, 1, "5,6,15,6 ", "none ", "0,0,0,0 "},
           // All zero is the whole window.
           {{}, 0, "0,0,2,2 ", "0,0,2,2 ", "0,0,24,16 "},
           {{}, 1, "0,0,0,0 ", "0,0,24,16 ", "0,0,24,16 "},
       }) {
    paintBlue();
    display.invalidate(&row.area, row.erase);
    std::string outcome = takeEvents();
    outcome += areaOf('.');
    outcome += nextPaint();
    EXPECT_EQ(outcome,
              std::string("sent ") + row.sent + row.cleared + row.painted + "clears none ");
  }
}

TEST_F(Paint, LaterAreasWaitForItAndAreErasedByIt) {
  const zRect first(0, 0, 4, 4);
  const zRect second(6, 6, 10, 10);
  const zRect third(12, 12, 20, 15);
  display.invalidate(&first, 0);
  display.invalidate(&second, 1);
  display.invalidate(&third, 0);
  EXPECT_EQ(takeEvents(), "sent 0,0,2,2 ");
  EXPECT_EQ(nextPaint(), "0,0,20,15 clears 6,6,10,10 ");
  zRegion region(third);
  region.add(second);
  display.invalidateRegion(&region, 0);
  EXPECT_EQ(display.firstInvalidRect(), zRect(6, 6, 20, 15));
  display.invalidateRegion(nullptr, 1);
  EXPECT_EQ(takeEvents(), "sent 6,6,8,8 ");
  EXPECT_EQ(nextPaint(), "0,0,24,16 clears 0,0,24,16 ");
  paintLock = 1;
  display.invalidate(nullptr, 1);
  EXPECT_FALSE(display.hasInvalidRects());
}

TEST_F(Paint, IsClippedToItsRegionAndTheUsersClipToBoth) {
  const zRegion user(zRect(8, 8, 20, 12));
  zBrush ground(kColorLightGrey);
  const auto filled = [&] {
    zRect bounds;
    display.clipBounds(bounds);
    display.fillRect(kAll, &blue);
    const std::string area = areaOf('b');
    display.fillRect(kAll, &ground);
    return told(bounds) + area;
  };
  display.setClipRegion(&user);
  display.lock();
  EXPECT_EQ(filled(), "0,0,24,16 8,8,20,12 ") << "set before the first lock";
  display.setClipRegion(nullptr);
  EXPECT_EQ(filled(), "0,0,24,16 0,0,24,16 ");
  display.beginPaint(zRegion(zRect(2, 2, 12, 12)));
  EXPECT_EQ(filled(), "2,2,12,12 2,2,12,12 ");
  display.setClipRegion(&user);
  EXPECT_EQ(filled(), "2,2,12,12 8,8,12,12 ");
  display.intersectClip({10, 0, 24, 10});
  EXPECT_EQ(filled(), "2,2,12,12 10,8,12,10 ");
  display.setClipRegion(nullptr);
  EXPECT_EQ(filled(), "2,2,12,12 2,2,12,12 ");
  display.intersectClip({0, 0, 4, 4});
  EXPECT_EQ(filled(), "2,2,12,12 2,2,4,4 ");
  display.endPaint();
  EXPECT_EQ(filled(), "0,0,24,16 0,0,24,16 ") << "the clip goes with the paint";
}

}  // namespace
