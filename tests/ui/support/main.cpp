// The entry of every test program of the user interface.

#include <gmock/gmock.h>

#include "tests/ui/support/screenshot.h"
#include "tests/ui/support/test_application.h"
#include "tests/ui/support/watchdog.h"

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  ui::makeTestApplication(argc, argv);
  ui::takePicturesOfFailures();
  ui::watchForHangs();
  return RUN_ALL_TESTS();
}
