#pragma once

#include <Xm/XmAll.h>

#include "framework/core/show_together.h"

/// Manages or unmanages a window's widget, now or at the end of the scope.
void manageWidget(Widget widget, bool shown);
