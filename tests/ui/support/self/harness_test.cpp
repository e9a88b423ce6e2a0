// What no passing test shows: how the harness reports failures.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

TEST(Harness, NamesWhatAScriptAwaitedInVain) {
  ui::ModalScript script;
  script.onDialog("No such window", XK_Return);
  EXPECT_NONFATAL_FAILURE(script.run([] {}), "a window \"No such window\" with the focus");
}

TEST(Harness, TakesAPictureOfTheScreen) {
  const TemporaryFolder folder;
  ASSERT_TRUE(ui::writeScreenshot(folder / "screen.ppm"));
  const std::string picture = readFile(folder / "screen.ppm");
  const std::string head = "P6\n1280 1024\n255\n";
  EXPECT_EQ(picture.substr(0, head.size()), head);
  EXPECT_EQ(picture.size(), head.size() + std::size_t{1280} * 1024 * 3);
}

}  // namespace
