#pragma once

#include "tests/support/child_process.h"
