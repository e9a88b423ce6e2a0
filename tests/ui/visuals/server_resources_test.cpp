// Visuals give back to the X server all that they take from it.

#include "framework/visuals/status_line.h"
#include "framework/visuals/tool_tip.h"
#include "resources/resource_ids.h"
#include "tests/ui/visuals/visuals_test.h"

namespace {

class VisualResources : public VisualsTest {
 protected:
  /// A bar whose button was up and grey on the screen, and a status line.
  void makeAndDelete(int times) {
    for (int i = 0; i < times; ++i) {
      auto* newBar = new zToolbar(&frame, new zGravSizer(kGravityTop, 20, frame.sizer()),
                                  kToolbarBorder, nullptr);
      auto* button = new zToolButton(newBar, new zSizer(2, 2, 16, 16), 0, kToolId,
                                     new zBitmap(zResId(kBitmapZoomIn)));
      auto* line = new zStatusLineEZ(
          &frame, new zGravSizer(kGravityBottom, 0, frame.sizer()),
          zStatusLineEZ::kClock | zStatusLineEZ::kNumLock | zStatusLineEZ::kCapsLock);
      for (zWindow* window : std::vector<zWindow*>{button, newBar, line}) {
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
};

TEST_F(VisualResources, LeaveNothingBehindInTheServer) {
  showFrame();
  makeAndDelete(3);  // fonts and colours stay
  const auto before = ui::serverResources();
  EXPECT_GT(before.at("PIXMAP"), 0U);
  EXPECT_GT(before.at("GC"), 0U);
  makeAndDelete(100);
  EXPECT_EQ(ui::serverResources(), before);
}

}  // namespace
