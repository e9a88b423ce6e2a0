#include "draw_test.h"
#include "framework/draw/measure.h"
#include "framework/draw/pictures.h"
#include "framework/draw/x_font_xm.h"
#include "resources/resource_ids.h"

namespace {

TEST_F(DrawTest, NothingIsDrawnBeforeTheFirstExposeButTextIsMeasured) {
  zWinDisplay early(*this);
  zDimension size;
  early.textSize(size, "abc");
  EXPECT_EQ(size, (zDimension{45, 15})) << "not locked yet";
  early.lock();
  EXPECT_EQ(early.fillRect({0, 0, 10, 10}, &blue), kNotReady);
  EXPECT_EQ(early.text(0, 0, "abc"), kNotReady);
  EXPECT_EQ(early.drawBitmap(1, {0, 0, 1, 1}, {}), kNotReady);
  early.polyline({{0, 0}, {9, 9}});
  early.copyArea({0, 0, 1, 1}, {2, 2});
  early.textSize(size, "abc");
  EXPECT_NE(size.height, 15);
  EXPECT_EQ(picture().find_first_not_of("\n."), std::string::npos);
}

TEST_F(DrawTest, DrawsAtTheOriginWithThePenAndTheBrushInForce) {
  // What is set before the first lock holds from that on.
  display.setOrigin({2, 1});
  display.setBrush(&blue);
  display.pushPen(&red);
  display.unlock();  // one too many does no harm
  display.lock();
  EXPECT_EQ(display.fillRect({0, 0, 4, 3}), kDrawn);
  EXPECT_EQ(display.polyline({{6, 0}, {9, 3}, {9, 4}}), kDrawn);
  EXPECT_EQ(display.polyline({}), kDrawn);
  display.polyline({{10, 6}, {12, 6}});
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
  zBitmap bitmap(4, 3);
  zBitmapDisplay canvas(bitmap);
  canvas.lock();
  canvas.fillRect({0, 0, 4, 3}, &blue);
  canvas.pushPen(&red);
  canvas.polyline({{0, 0}, {2, 2}});
  EXPECT_EQ(display.drawBitmap(bitmap.pixmap(), {1, 1, 4, 3}, {0, 11}), kDrawn);
  EXPECT_EQ(display.copyIcon(bitmap.pixmap(), 0, {4, 3}, {5, 11}), kDrawn);
  EXPECT_EQ(display.drawBitmap(0, {0, 0, 4, 3}, {0, 0}), kDrawn);
  // Only what is scrolled tells what it lacks: a picture's lack would be painted again and again.
  display.drawBitmap(bitmap.pixmap(), {2, 0, 60, 1}, {15, 11});
  EXPECT_EQ(takeEvents(), "");
  display.copyArea({2, 1, 6, 3}, {18, 4});
  EXPECT_EQ(takeEvents(), "copied ");
  EXPECT_EQ(picture(), R"(
........................
..bbbb..r.....ww........
..bbbb...r....ww........
..bbbb....r.............
...........r......bbbb..
...........r..###.bbbb..
..............y##.......
............rrr.........
........................
bbbbbbbbbbbbbbbbbbbbbbbb
########################
........................
..rbb..rbbb......bb.....
..brb..brbb.............
.......bbrb.............
........................
)");
}

// Letters of 6 by 13 pixels that are the same on all servers.
constexpr const char* kFixed = "-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1";

TEST_F(DrawTest, TextIsDrawnFromItsTopLeftCornerInTheFontAndColoursInForce) {
  EXPECT_EQ(display.fontObject()->stockNumber(), 14) << "that of a window without a font";
  font = zRCFont(zFontSpec::fromFullName(kFixed));
  display.lock();
  display.fillRect(kAll, &yellow);
  display.setOrigin({1, 1});
  EXPECT_EQ(display.text(0, 0, "TL!", 2), kDrawn);
  EXPECT_EQ(display.text(0, 0, nullptr), kDrawn);
  EXPECT_EQ(display.setBackColour(kColorWhite), kColorLightGrey);
  EXPECT_EQ(display.setTextColour(kRed), kColorBlack);
  display.text(6, 0, "T", 0);
  EXPECT_EQ(display.setTextColour(kBlue), kRed);
  display.setTextMode(kTextTransparent);
  display.text(15, 2, "T");
  EXPECT_EQ(picture({0, 0, 24, 6}), R"(
yyyyyyyyyyyyyyyyyyyyyyyy
y......wwwwwwyyyyyyyyyyy
y......wwwwwwyyyyyyyyyyy
y#####.rrrrrwyyyyyyyyyyy
y..#...wwrwwwyyyyyyyyyyy
y..#...wwrwwwyyybbbbbyyy
)");
  EXPECT_EQ(picture({0, 13, 3, 15}), "\ny..\nyyy\n") << "the ground is as high as the font";
  zDimension size;
  display.textSize(size, "abc", 2);
  EXPECT_EQ(size, (zDimension{12, 13}));
  display.textSize(size, nullptr);
  EXPECT_EQ(size, (zDimension{0, kFallbackCharSize}));
  EXPECT_EQ(zDialogUnit(4, 8, *font.font()).size(),
            (zDimension{dialogUnitsX(4, 52 * 6), dialogUnitsY(8, 13)}));
}

TEST_F(DrawTest, TheToolkitTakesAByteWithoutAGlyphForAsWideAsWhatTheServerDrawsForIt) {
  for (const char* name :
       {kFixed, "-adobe-symbol-medium-r-normal--12-120-75-75-p-74-adobe-fontspecific", "cursor"}) {
    const auto loaded = ziXFont::load(ui::display(), name);
    XFontStruct* fromServer = XLoadQueryFont(ui::display(), name);
    for (int byte = 0; byte < 256; ++byte) {
      const char letter = static_cast<char>(byte);
      EXPECT_EQ(loaded->get()->per_char[byte].width, XTextWidth(fromServer, &letter, 1)) << byte;
    }
    XFreeFont(ui::display(), fromServer);
  }
}

TEST_F(DrawTest, TheMainIconLeavesTheGroundWhereItsMaskDoes) {
  display.lock();
  const zIcon icon{zResId(kIconMain)};
  ASSERT_EQ(icon.size(), (zDimension{32, 32}));
  const std::vector<unsigned long>& pixels = icon.windowManagerPixels();
  ASSERT_EQ(pixels.size(), 2U + 32 * 32);
  constexpr zPoint kShift{-8, -16};
  display.fillRect(kAll, &yellow);
  display.copyIcon(icon.pixmap(), icon.mask(), icon.size(), kShift);
  EXPECT_EQ(takeEvents(), "");
  for (int i = 0; i < kAll.right * kAll.bottom; ++i) {
    const zPoint at{i % kAll.right, i / kAll.right};
    const auto word = static_cast<std::size_t>(2 + 32 * (at.y - kShift.y) + at.x - kShift.x);
    zColor shown;
    display.getPixel(at.x, at.y, shown);
    ASSERT_EQ(shown.rgb(), pixels[word] == 0 ? kYellow.rgb() : pixels[word] & 0xFFFFFF) << i;
  }
  // Some window managers show it without its mask: on the face colour then.
  display.drawBitmap(icon.pixmap(), {0, 0, 1, 1}, {});
  EXPECT_EQ(picture({0, 0, 1, 1}), "\n.\n");
}

class Paint : public DrawTest {
 protected:
  void paintBlue() {
    display.lock();
    display.fillRect(kAll, &blue);
    display.unlock();
  }
  /// The rectangle in which `letter` shows.
  std::string areaOf(char letter) const {
    const std::string shown = picture().substr(1);
    const auto first = static_cast<int>(shown.find(letter));
    const auto last = static_cast<int>(shown.rfind(letter));
    constexpr int kStride = 25;
    return last < 0
               ? "none "
               : told({first % kStride, first / kStride, last % kStride + 1, last / kStride + 1});
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
  // The area and whether it erases; the event that comes at once, what it clears, and the region
  // of the paint.
  const std::tuple<zRect, int, std::string> rows[] = {
      {{5, 6, 15, 14}, 0, "sent 5,6,7,8 5,6,7,8 5,6,15,14 "},
      {{5, 6, 15, 14}, 1, "sent 5,6,15,14 5,6,15,14 5,6,15,14 "},
      {{5, 6, 7, 14}, 0, "sent 5,6,7,8 5,6,7,8 5,6,7,14 "},
      // To X an extent of 0 reaches to the edge of the window.
      {{5, 6, 5, 14}, 1, "sent 5,6,5,14 none 0,0,0,0 "},
      {{5, 6, 15, 6}, 1, "sent 5,6,15,6 none 0,0,0,0 "},
      // All zero is the whole window.
      {{}, 0, "sent 0,0,2,2 0,0,2,2 0,0,24,16 "},
      {{}, 1, "sent 0,0,0,0 0,0,24,16 0,0,24,16 "},
  };
  for (auto [area, erase, expected] : rows) {
    paintBlue();
    display.invalidate(&area, erase);
    std::string outcome = takeEvents();
    outcome += areaOf('.');
    outcome += nextPaint();
    EXPECT_EQ(outcome, expected + "clears none ");
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
  const zRegion region(third);
  display.invalidateRegion(&region, 0);
  EXPECT_EQ(display.firstInvalidRect(), third);
  display.invalidateRegion(nullptr, 1);
  EXPECT_EQ(takeEvents(), "sent 12,12,14,14 ");
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
  display.endPaint();
  EXPECT_EQ(filled(), "0,0,24,16 0,0,24,16 ") << "the clip goes with the paint";
}

}  // namespace
