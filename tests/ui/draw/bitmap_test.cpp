#include "framework/draw/pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "fake_pane.h"
#include "framework/draw/color.h"
#include "framework/draw/screen.h"
#include "resources/resource_ids.h"
#include "tests/unit/images/image_data.h"
#include "tests/unit/images/resource_file_data.h"

#include <X11/Xlib.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> messages;

class Pictures : public testing::Test {
 protected:
  Pictures() {
    messages.clear();
    setDrawMessageSink([](const std::string& text) { messages.push_back(text); });
    pane.makeReady(display);
    display.lock();
  }
  ~Pictures() override {
    display.unlock();
    setDrawMessageSink(nullptr);
    setDefaultResourceFile({});
    closeResourceFile();
    for (const std::string& path : paths) {
      std::remove(path.c_str());
    }
  }

  std::string written(const Bytes& bytes) {
    paths.push_back(testing::TempDir() + "picture" + std::to_string(paths.size()));
    std::ofstream(paths.back(), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return paths.back();
  }

  FakePane pane;
  zWinDisplay display{pane};
  std::vector<std::string> paths;
};

// Colours 1 and 2 of the table in a row, then one that is not in it.
Dib threePixels() {
  Dib dib;
  dib.width = 3;
  dib.coloursUsed = dib.colours = 200;
  dib.pixels = {1, 2, 250, 0};
  return dib;
}

TEST_F(Pictures, BitmapFromAFileShowsItsColoursAndAsksForThoseInUseOnly) {
  Dib dib = threePixels();
  const std::size_t before = ziDrawCache::instance().colours().count();
  zBitmap bitmap(written(bmpOf(dib)).c_str());
  EXPECT_EQ(ziDrawCache::instance().colours().count(), before + 2);
  EXPECT_EQ(bitmap.size(), (zDimension{3, 1}));
  EXPECT_GE(bitmap.depth(), 24);
  display.drawBitmap(bitmap.pixmap(), {0, 0, 3, 1}, {10, 10});
  EXPECT_EQ(pane.at(10, 10), 0x030201U);
  EXPECT_EQ(pane.at(11, 10), 0x060402U);
  EXPECT_EQ(pane.at(12, 10), 0U);
  EXPECT_THAT(messages, ElementsAre("Unsupported color table type, num=200"));

  zBitmap copy(nullptr, bitmap);
  EXPECT_NE(copy.pixmap(), bitmap.pixmap());
  zBitmapDisplay onBitmap(bitmap);
  onBitmap.lock();
  zColor read;
  EXPECT_EQ(onBitmap.getPixel(1, 0, read), kDrawn);
  EXPECT_EQ(read, zColor(0x060402));
  zBrush white(kColorWhite);
  onBitmap.fillRect({0, 0, 3, 1}, &white);
  onBitmap.unlock();
  display.drawBitmap(copy.pixmap(), {0, 0, 3, 1}, {10, 20});
  EXPECT_EQ(pane.at(11, 20), 0x060402U) << "the copy has a picture of its own";
}

TEST_F(Pictures, TrueColoursAreKnownWithoutTheServer) {
  Display* server = theScreen().display;
  ASSERT_EQ(DefaultVisual(server, DefaultScreen(server))->c_class, TrueColor);
  zColorCache cache;
  for (const std::uint32_t rgb : {0x000000U, 0xFFFFFFU, 0x12AB7FU, 0xC0C0C0U}) {
    zColor colour(rgb);
    const unsigned long before = XNextRequest(server);
    const unsigned long pixel = cache.pixel(colour);
    EXPECT_EQ(XNextRequest(server), before);
    const ziXColour x = zColor(rgb).x();
    XColor asked{0, x.red, x.green, x.blue, 0, 0};
    XAllocColor(server, DefaultColormap(server, DefaultScreen(server)), &asked);
    EXPECT_EQ(pixel, asked.pixel);
    EXPECT_EQ(colour.x(), (ziXColour{asked.red, asked.green, asked.blue}));
  }
}

TEST_F(Pictures, WhatCannotBeMadeIsEmptyAndSaysWhy) {
  Dib deep;
  deep.bits = 24;
  EXPECT_TRUE(zBitmap(written(bmpOf(deep)).c_str()).isEmpty());
  EXPECT_TRUE(zBitmap("/nowhere/at/all.bmp").isEmpty());
  EXPECT_TRUE(zBitmap("/tmp").isEmpty());
  EXPECT_TRUE(zBitmap(zResId(2105)).isEmpty());
  EXPECT_TRUE(zBitmap(0, 5).isEmpty());
  EXPECT_EQ(zIcon("/nowhere.ico").pixmap(), 0U);
  EXPECT_EQ(zIcon(zResId(98)).pixmap(), 0U);
  EXPECT_EQ(zCursor(zResId(7)).xCursor(), 0U);
  EXPECT_THAT(messages,
              ElementsAre("Unsupported color table type, num=24", "Unsupported bits per pixel",
                          "zBitmap::zBitmap Unable to find file /nowhere/at/all.bmp",
                          "zBitmap::zBitmap Unable to open file /tmp",
                          "zBitmap::zBitmap Unable to find bitmap with resId(2105)",
                          "zIcon::zIcon Unable to find file /nowhere.ico",
                          "zIcon::zIcon Unable to find icon with resId(98)",
                          "zCursor::zCursor Unable to find cursor with resId(7)"));
}

TEST_F(Pictures, TheMainIconLeavesTheGroundWhereItsMaskDoes) {
  const zIcon icon{zResId(kIconMain)};
  ASSERT_EQ(icon.size(), (zDimension{32, 32}));
  const std::vector<unsigned long> pixels = icon.windowManagerPixels();
  ASSERT_EQ(pixels.size(), 2U + 32 * 32);
  display.copyIcon(icon.pixmap(), icon.mask(), icon.size(), {20, 20});
  for (int i = 0; i < 32 * 32; ++i) {
    const unsigned long argb = pixels[2 + static_cast<std::size_t>(i)];
    const unsigned long wanted = argb == 0 ? FakePane::kBackground : argb & 0xFFFFFF;
    ASSERT_EQ(pane.at(20 + i % 32, 20 + i / 32), wanted) << i;
  }
}

// A pane would paint again for what a picture lacks, and for ever.
TEST_F(Pictures, BeyondItsEndAPictureIsNotAskedForAgain) {
  const zIcon icon{zResId(kIconMain)};
  display.drawBitmap(icon.pixmap(), {20, 20, 60, 60}, {0, 0});
  display.copyIcon(icon.pixmap(), icon.mask(), {60, 60}, {0, 0});
  EXPECT_FALSE(pane.hasCopyEvents());
}

TEST_F(Pictures, CursorComesFromAResourceFileAndIsShared) {
  ByteWriter data(ByteWriter::Order::kLittle);
  data.words({0x00020000}).number(1, 2).number(32, 1).number(32, 1).number(2, 1).number(0, 1);
  data.words({0x00630063, 0, 22});
  const Dib mono{.width = 32, .height = 64, .bits = 1, .colours = 2, .pixels = Bytes(256)};
  const std::string path = written(resourceFileOf({{1, 5, data.append(mono.bytes()).bytes}}));
  const zCursor cursor(zResId(5, path));
  EXPECT_NE(cursor.xCursor(), 0U);
  const zCursor copy = cursor;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(copy.xCursor(), cursor.xCursor());
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(Pictures, ResourcesComeFromTheDefaultFileUnlessTheBuiltInTableIsNamed) {
  const zResId open(kBitmapOpen);
  const std::string path = written(resourceFileOf({{2, kBitmapOpen, bmpOf(threePixels())}}));
  EXPECT_EQ(zBitmap(open).width(), 16);
  setDefaultResourceFile(path);
  EXPECT_EQ(zBitmap(open).width(), 3);
  EXPECT_EQ(zBitmap(zResId::builtIn(kBitmapOpen)).width(), 16);
  EXPECT_EQ(resourceGet(zResId(kBitmapHelp), kResourceBitmap), nullptr) << "no way back";

  const std::string other = written(resourceFileOf({{10, 1, {7, 8}}}));
  const ziResource raw(zResId(1, other), kResourceRaw);
  EXPECT_EQ(zBitmap(open).width(), 3) << "another file is open now";
  EXPECT_THAT(raw.bytes(), ElementsAre(7, 8)) << "and what came from the first one stays";
  EXPECT_EQ(resourceGet(zResId(1, written({1, 2, 3})), kResourceRaw), nullptr);
  EXPECT_EQ(resourceGet(zResId(1, "/nowhere"), kResourceRaw), nullptr);
}

}  // namespace
