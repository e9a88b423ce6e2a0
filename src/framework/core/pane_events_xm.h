#pragma once

#include <Xm/XmAll.h>

/// Paints a pane: Expose and GraphicsExpose events of its widget. `pane` is the zPane.
void zPaneExposeProc(Widget widget, XtPointer pane, XEvent* event, Boolean* toWidget);
