#pragma once

#include "tests/ui/support/ui_test.h"
