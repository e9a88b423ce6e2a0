#pragma once

#include <vector>

#include "framework/draw/xtfwd.h"

/// Minimum, maximum, slider size and value of a scroll bar's widget.
std::vector<int> viewOfBar(Widget bar);
