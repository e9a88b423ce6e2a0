#pragma once

#include "framework/draw/xtfwd.h"

/// While one of these lives, windows that are shown wait for its end and then come up together.
/// Each time a widget comes up beside others the toolkit asks the server where the focus can still
/// be seen; together they cost one such question a parent. No widget that waits may be destroyed.
class ziShowTogetherScope {
 public:
  ziShowTogetherScope();
  ziShowTogetherScope(const ziShowTogetherScope&) = delete;
  ziShowTogetherScope& operator=(const ziShowTogetherScope&) = delete;
  ~ziShowTogetherScope();
};

/// Manages or unmanages a window's widget, now or at the end of the scope.
void manageWidget(Widget widget, bool shown);
