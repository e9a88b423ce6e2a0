#include "framework/draw/pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "fake_pane.h"
#include "framework/draw/screen.h"
#include "resources/resource_ids.h"
#include "tests/unit/images/image_data.h"
#include "tests/unit/images/resource_file_data.h"

#include <X11/Xlib.h>

namespace {

using testing::ElementsAre;

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
  /// What is drawn of a bitmap resource; "" when it is empty.
  std::string drawn(const zResId& resource) {
    const zBitmap bitmap(resource);
    if (bitmap.isEmpty()) {
      return "";
    }
    EXPECT_GE(bitmap.depth(), 24);
    display.drawBitmap(bitmap.pixmap(), zRect({}, bitmap.size()), {});
    return pane.picture(zRect({}, bitmap.size()));
  }

  FakePane pane;
  zWinDisplay display{pane};
  std::vector<std::string> paths;
};

TEST_F(Pictures, ShowTheirColoursAndAskForThoseInUseOnly) {
  // Colours of the table: blue i, green 2i, red 3i. Beyond it, blank pixels are black.
  Dib dib{.width = 3, .height = 2, .coloursUsed = 200, .colours = 200, .pixels = {}};
  dib.pixels = {85, 250, 0, 0, 1, 2, 0, 0};
  const zResId resource(7, written(resourceFileOf({{kResourceBitmap, 7, bmpOf(dib)}})));
  zColorCache& colours = ziDrawCache::instance().colours();
  drawn(resource);
  const std::size_t before = colours.count();
  EXPECT_EQ(drawn(resource), "\n??#\n?##\n");
  zColor read;
  display.getPixel(1, 0, read);
  EXPECT_EQ(read, zColor(0x060402));
  EXPECT_EQ(colours.count(), before);
  dib.pixels = {84, 84, 84, 0, 1, 1, 2, 0};
  drawn(zResId(7, written(resourceFileOf({{kResourceBitmap, 7, bmpOf(dib)}}))));
  EXPECT_EQ(colours.count(), before + 1);
  EXPECT_THAT(messages, testing::Each("Unsupported color table type, num=200"));
}

TEST_F(Pictures, TrueColoursAreKnownWithoutTheServer) {
  Display* server = theScreen().display;
  ASSERT_EQ(DefaultVisual(server, DefaultScreen(server))->c_class, TrueColor);
  zColorCache cache;
  for (const std::uint32_t rgb : {0x000000U, 0xFFFFFFU, 0x12AB7FU, 0xC0C0C0U}) {
    zColor colour(rgb);
    const unsigned long before = XNextRequest(server);
    const unsigned long pixel = cache.pixel(colour);
    EXPECT_EQ(cache.colourOf(pixel), zColor(rgb));
    EXPECT_EQ(XNextRequest(server), before);
    const ziXColour x = zColor(rgb).x();
    XColor asked{0, x.red, x.green, x.blue, 0, 0};
    XAllocColor(server, DefaultColormap(server, DefaultScreen(server)), &asked);
    EXPECT_EQ(pixel, asked.pixel);
    EXPECT_EQ(colour.x(), (ziXColour{asked.red, asked.green, asked.blue}));
  }
  EXPECT_EQ(cache.colourOf(0x345678), zColor(0x345678)) << "the server tells the unknown ones";
}

TEST_F(Pictures, WhatCannotBeMadeIsEmptyAndSaysWhy) {
  const Dib deep{.bits = 24, .pixels = {}};
  EXPECT_EQ(drawn(zResId(1, written(resourceFileOf({{kResourceBitmap, 1, bmpOf(deep)}})))), "");
  EXPECT_EQ(drawn(zResId(2105)), "");
  EXPECT_TRUE(zBitmap(0, 5).isEmpty());
  EXPECT_EQ(zIcon(zResId(98)).pixmap(), 0U);
  const zResId noIcon(2, written(resourceFileOf({{kResourceIcon, 2, {}}})));
  EXPECT_EQ(zIcon(noIcon).pixmap(), 0U);
  const char* unable = "zIcon::zIcon Unable to find icon with resId(";
  EXPECT_THAT(messages,
              ElementsAre("Unsupported color table type, num=24", "Unsupported bits per pixel",
                          "zBitmap::zBitmap Unable to find bitmap with resId(2105)",
                          std::string(unable) + "98)", std::string(unable) + "2)"));
}

TEST_F(Pictures, TheMainIconLeavesTheGroundWhereItsMaskDoes) {
  const zIcon icon{zResId(kIconMain)};
  ASSERT_EQ(icon.size(), (zDimension{32, 32}));
  const std::vector<unsigned long>& pixels = icon.windowManagerPixels();
  ASSERT_EQ(pixels.size(), 2U + 32 * 32);
  // The face colour is laid under the mask alone, not over the icon itself.
  EXPECT_EQ(std::count(pixels.begin() + 2, pixels.end(), 0xFFC0C0C0U), 0);
  zBrush yellow(kYellow);
  for (const zPoint& shift : {zPoint{0, 0}, zPoint{-8, -16}}) {
    display.fillRect(FakePane::kAll, &yellow);
    display.copyIcon(icon.pixmap(), icon.mask(), icon.size(), shift);
    EXPECT_EQ(pane.takeEvents(), "");
    for (int i = 0; i < FakePane::kAll.right * FakePane::kAll.bottom; ++i) {
      const zPoint at{i % FakePane::kAll.right, i / FakePane::kAll.right};
      const auto word = static_cast<std::size_t>(2 + 32 * (at.y - shift.y) + at.x - shift.x);
      zColor shown;
      display.getPixel(at.x, at.y, shown);
      ASSERT_EQ(shown.rgb(), pixels[word] == 0 ? kYellow.rgb() : pixels[word] & 0xFFFFFF) << i;
    }
  }
  // Some window managers show it without its mask: on the face colour then.
  display.drawBitmap(icon.pixmap(), {0, 0, 1, 1}, {});
  EXPECT_EQ(pixels[2], 0U);
  EXPECT_EQ(pane.picture({0, 0, 1, 1}), "\n.\n");
}

TEST_F(Pictures, ResourcesComeFromTheDefaultFileUnlessTheBuiltInTableIsNamed) {
  const Dib dot{.bits = 1, .colours = 2, .pixels = {0, 0, 0, 0}};
  const zResId open(kBitmapOpen);
  const std::string builtIn = drawn(open);
  EXPECT_NE(builtIn, "");
  setDefaultResourceFile(written(resourceFileOf({{2, kBitmapOpen, bmpOf(dot)}})));
  EXPECT_EQ(drawn(open), "\n#\n");
  EXPECT_EQ(drawn(zResId::builtIn(kBitmapOpen)), builtIn);
  EXPECT_EQ(resourceGet(zResId(kBitmapHelp), kResourceBitmap), nullptr) << "no way back";

  const std::string other =
      written(resourceFileOf({{10, 1, {7, 8}}, {6, 2, {1, 0, 0, 0, 3, '"', 'a', '"'}}}));
  const ziResource raw(zResId(1, other), kResourceRaw);
  const ziResource text(zResId(2, other), kResourceString);
  EXPECT_STREQ(static_cast<const char*>(text.data()), "a");
  EXPECT_EQ(drawn(open), "\n#\n") << "another file is open now";
  EXPECT_THAT(raw.bytes(), ElementsAre(7, 8)) << "and what came from the first one stays";
  EXPECT_EQ(resourceSize(kResourceBitmap, raw.data(), open), 2U);
  resourceFree(kResourceRaw, raw.data(), open);
  EXPECT_EQ(resourceSize(kResourceRaw, raw.data(), open), 0U);
  EXPECT_EQ(resourceGet(zResId(1, written({1, 2, 3})), kResourceRaw), nullptr);
  EXPECT_EQ(resourceGet(zResId(1, "/nowhere"), kResourceRaw), nullptr);
}

TEST(Cursors, CopiesShareTheXCursor) {
  EXPECT_EQ(zCursor().xCursor(), 0U);
  const zCursor arrow(theScreen().display, 2);
  const zCursor copy = arrow;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_NE(arrow.xCursor(), 0U);
  EXPECT_EQ(copy.xCursor(), arrow.xCursor());
}

}  // namespace
