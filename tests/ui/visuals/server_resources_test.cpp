// Visuals give back to the X server all that they take from it.

#include "framework/visuals/status_line.h"
#include "resources/resource_ids.h"
#include "tests/ui/visuals/visuals_test.h"

namespace {

using VisualResources = VisualsTest;

TEST_F(VisualResources, LeaveNothingBehindInTheServer) {
  showFrame();
  // A bar whose button was up and grey on the screen, and a status line.
  const auto makeAndDelete = [&] {
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
    EXPECT_TRUE(button->display()->isReady() && line->display()->isReady());
    button->disable();
    delete line;
    delete newBar;
  };
  makeAndDelete();  // fonts and colours stay
  const auto before = ui::serverResources();
  EXPECT_GT(before.at("PIXMAP") * before.at("GC"), 0U);
  for (int i = 0; i < 50; ++i) {
    makeAndDelete();
  }
  EXPECT_EQ(ui::serverResources(), before);
}

}  // namespace
