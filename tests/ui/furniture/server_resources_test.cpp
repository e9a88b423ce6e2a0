// Furniture gives back to the X server all that it takes from it.

#include "framework/visuals/status_line.h"
#include "resources/resource_ids.h"
#include "tests/ui/furniture/window_furniture.h"

namespace {

class Furniture : public FurnitureTest {
 protected:
  /// A bar whose button was up and grey on the screen, and a status line.
  void makeAndDelete(int times) {
    for (int i = 0; i < times; ++i) {
      auto* newBar = new zToolbar(&frame, new zGravSizer(kGravityTop, kBarHeight, frame.sizer()),
                                  kToolbarBorder, nullptr);
      auto* button = new zToolButton(
          newBar, new zSizer(toolPlace().pos(), toolPlace().size(), newBar->sizer()), 0, kToolId,
          new zBitmap(zResId(kBitmapZoomIn)));
      auto* line =
          new zStatusLineEZ(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), kAllItems);
      for (zWindow* window : {static_cast<zWindow*>(button), static_cast<zWindow*>(newBar),
                              static_cast<zWindow*>(line)}) {
        window->show();
      }
      frame.sizer()->update(nullptr);
      ui::drain();
      ASSERT_TRUE(button->display()->isReady() && line->display()->isReady());
      button->disable();
      delete line;
      delete newBar;
    }
  }

 private:
  static constexpr std::uint32_t kAllItems =
      zStatusLineEZ::kClock | zStatusLineEZ::kNumLock | zStatusLineEZ::kCapsLock;
};

TEST_F(Furniture, LeavesNothingBehindInTheServer) {
  constexpr int kWarmUp = 3;  // fonts and colours stay
  constexpr int kManyTimes = 1000;
  showFrame();
  makeAndDelete(kWarmUp);
  const auto before = ui::serverResources();
  EXPECT_GT(before.at("PIXMAP"), 0U);
  EXPECT_GT(before.at("GC"), 0U);
  makeAndDelete(kManyTimes);
  EXPECT_EQ(ui::serverResources(), before);
}

}  // namespace
