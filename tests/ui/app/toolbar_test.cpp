// What the main window's toolbar says about what is possible.

#include <gtest/gtest.h>

#include "app/session.h"
#include "app/wmain.h"
#include "resources/resource_ids.h"
#include "tests/ui/support/ui_test.h"
#include "textarea/text_pane.h"

namespace {

zWindow* toolButton(WMain& window, int command) {
  zWindow* found = nullptr;
  zWindowDlist::Iter walk(window.children());
  while (zWindow* child = found == nullptr ? walk.next() : nullptr) {
    found = child->childById(command);
  }
  return found;
}

TEST(MainToolBar, GreysTheZoomButtonsAtTheirLimitsAndBringsThemBack) {
  WMain window(nullptr, "");
  ui::waitForDialog(g_AppTitle);
  zWindow* zoomOut = toolButton(window, kCommandZoomOut);
  zWindow* zoomIn = toolButton(window, kCommandZoomIn);
  ASSERT_TRUE(zoomOut != nullptr && zoomIn != nullptr);
  while (theTextPane->zoomLevel() > 0) {
    ASSERT_TRUE(zoomOut->isEnabled());
    ui::click(zoomOut->widget());
  }
  EXPECT_FALSE(zoomOut->isEnabled());
  ui::click(zoomOut->widget());
  EXPECT_EQ(theTextPane->zoomLevel(), 0);
  ui::click(zoomIn->widget());
  EXPECT_EQ(theTextPane->zoomLevel(), 1);
  EXPECT_TRUE(zoomOut->isEnabled());
}

}  // namespace
