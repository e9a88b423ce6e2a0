#include "framework/draw/pictures.h"

#include "draw_test.h"
#include "resources/builtin_table.h"

namespace {

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
  // Some window managers show it without its mask: on the face colour then.
  display.drawBitmap(icon.pixmap(), {0, 0, 1, 1}, {});
  EXPECT_EQ(picture({0, 0, 1, 1}), "\n.\n");
}

}  // namespace
