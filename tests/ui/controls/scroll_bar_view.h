#pragma once

#include <vector>

#include "framework/draw/xtfwd.h"

/// Minimum, maximum, slider size and value of a scroll bar's widget.
std::vector<int> viewOfBar(Widget bar);
/// How far the widget itself would go: by a line, by a page.
std::vector<int> stepsOfBar(Widget bar);
