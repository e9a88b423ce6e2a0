#pragma once

/// Everything for in-process tests of the user interface. Link nel_ui_support, which brings its own
/// main(): it opens the one display connection of the process before the first test.
///
/// Input goes through the X server as a user's would. After each piece of input all events are
/// handled; what the window manager or a timer has a part in is awaited with waitFor.

#include "tests/ui/support/input.h"
#include "tests/ui/support/modal_script.h"
#include "tests/ui/support/screenshot.h"
#include "tests/ui/support/server_resources.h"
#include "tests/ui/support/test_application.h"
#include "tests/ui/support/wait.h"
#include "tests/ui/support/windows.h"
