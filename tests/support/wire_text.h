#pragma once

#include "tests/support/message.h"
