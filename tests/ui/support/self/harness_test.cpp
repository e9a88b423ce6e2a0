// What no passing test shows: how the harness reports failures.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

TEST(Harness, NamesWhatAScriptAwaitedInVain) {
  ui::ModalScript script;
  script.onDialog("No such window", XK_Return);
  EXPECT_NONFATAL_FAILURE(script.run([] {}), "a window \"No such window\" with the focus");
}

}  // namespace
