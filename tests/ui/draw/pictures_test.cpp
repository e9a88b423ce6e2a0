#include "framework/draw/pictures.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "draw_test.h"
#include "framework/draw/image/picture.h"
#include "framework/draw/screen.h"
#include "resources/builtin_table.h"
#include "tests/support/basics.h"
#include "tests/unit/images/bytes.h"

#include <X11/Xlib.h>

namespace {

using testing::ElementsAre;

std::vector<std::string> messages;

TEST_F(DrawTest, PicturesShowTheirColoursAndAskForEachOnce) {
  display.lock();
  const ziPicture data = decodeBmp(builtInPicture(kResourceBitmap, kBitmapOpen)).picture;
  const zBitmap bitmap{zResId(kBitmapOpen)};
  ASSERT_EQ(bitmap.size(), (zDimension{16, 16}));
  const std::size_t colours = ziDrawCache::instance().colours().count();
  EXPECT_LT(colours, 100U) << "of 256 in the table";
  display.drawBitmap(bitmap.pixmap(), kAll, {});
  for (int i = 0; i < 16 * 16; ++i) {
    zColor shown;
    display.getPixel(i % 16, i / 16, shown);
    ASSERT_EQ(shown.rgb(), data.colours[data.at(i % 16, i / 16)]) << i;
  }
  const zBitmap again{zResId(kBitmapOpen)};
  EXPECT_EQ(ziDrawCache::instance().colours().count(), colours);
}

TEST(Pictures, TrueColoursAreKnownWithoutTheServer) {
  Display* server = theScreen().display;
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

TEST(Pictures, ThatCannotBeMadeAreEmptyAndSayWhy) {
  setDrawMessageSink([](const std::string& text) { messages.push_back(text); });
  EXPECT_TRUE(zBitmap(zResId(2105)).isEmpty());
  EXPECT_TRUE(zBitmap(0, 5).isEmpty());
  EXPECT_EQ(zIcon(zResId(98)).pixmap(), 0U);
  setDrawMessageSink(nullptr);
  EXPECT_THAT(messages, ElementsAre("zBitmap::zBitmap Unable to find bitmap with resId(2105)",
                                    "zIcon::zIcon Unable to find icon with resId(98)"));
}

TEST_F(DrawTest, TheMainIconLeavesTheGroundWhereItsMaskDoes) {
  display.lock();
  const zIcon icon{zResId(kIconMain)};
  ASSERT_EQ(icon.size(), (zDimension{32, 32}));
  const std::vector<unsigned long>& pixels = icon.windowManagerPixels();
  ASSERT_EQ(pixels.size(), 2U + 32 * 32);
  for (const zPoint& shift : {zPoint{0, 0}, zPoint{-8, -16}}) {
    display.fillRect(kAll, &yellow);
    display.copyIcon(icon.pixmap(), icon.mask(), icon.size(), shift);
    EXPECT_EQ(takeEvents(), "");
    for (int i = 0; i < kAll.right * kAll.bottom; ++i) {
      const zPoint at{i % kAll.right, i / kAll.right};
      const auto word = static_cast<std::size_t>(2 + 32 * (at.y - shift.y) + at.x - shift.x);
      zColor shown;
      display.getPixel(at.x, at.y, shown);
      ASSERT_EQ(shown.rgb(), pixels[word] == 0 ? kYellow.rgb() : pixels[word] & 0xFFFFFF) << i;
    }
  }
  // Some window managers show it without its mask: on the face colour then, which is no part of
  // the icon itself.
  EXPECT_EQ(std::count(pixels.begin() + 2, pixels.end(), 0xFFC0C0C0U), 0);
  display.drawBitmap(icon.pixmap(), {0, 0, 1, 1}, {});
  EXPECT_EQ(pixels[2], 0U);
  EXPECT_EQ(picture({0, 0, 1, 1}), "\n.\n");
}

std::string fileOf(const TemporaryFolder& folder, const std::vector<ResourceRecord>& records) {
  const Bytes bytes = resourceFileOf(records);
  return folder.write("of" + std::to_string(records.size()),
                      std::string(bytes.begin(), bytes.end()));
}

TEST(Resources, ComeFromTheDefaultFileUnlessTheBuiltInTableIsNamed) {
  const TemporaryFolder folder;
  const std::string other =
      fileOf(folder, {{kResourceRaw, 1, "0708"}, {kResourceString, 2, "0100000003226122"}});
  setDefaultResourceFile(fileOf(folder, {{kResourceBitmap, kBitmapOpen, "05"}}));
  const ziResource open(zResId(kBitmapOpen), kResourceBitmap);
  EXPECT_THAT(open.bytes(), ElementsAre(5));
  EXPECT_FALSE(ziResource(zResId(kBitmapHelp), kResourceBitmap)) << "no way back";
  EXPECT_GT(ziResource(zResId::builtIn(kBitmapOpen), kResourceBitmap).bytes().size(), 100U);
  const ziResource text(zResId(2, other), kResourceString);
  EXPECT_STREQ(static_cast<const char*>(text.data()), "a") << "another file is open now";
  EXPECT_THAT(ziResource(zResId(1, other), kResourceRaw).bytes(), ElementsAre(7, 8));
  EXPECT_THAT(open.bytes(), ElementsAre(5)) << "what came from the first one stays";
  resourceFree(kResourceBitmap, open.data(), zResId(kBitmapOpen));
  EXPECT_TRUE(open.bytes().empty());
  EXPECT_FALSE(ziResource(zResId(1, folder.write("bad", "123")), kResourceRaw));
  EXPECT_FALSE(ziResource(zResId(1, folder.path()), kResourceRaw));
  setDefaultResourceFile({});
  closeResourceFile();
}

}  // namespace
