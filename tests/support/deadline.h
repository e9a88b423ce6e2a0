#pragma once

#include "tests/support/basics.h"
