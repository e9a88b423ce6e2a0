#pragma once

#include <Xm/XmAll.h>

/// Turns an X event of a control's real widget into a zEvent and offers it; `control` is the
/// zControl. Clears `toWidget` when the event is taken. The control may be gone afterwards.
void zControlEventProc(Widget widget, XtPointer control, XEvent* event, Boolean* toWidget);

/// Turns the structure events of a control's holder into those of the control.
void zHolderEventProc(Widget holder, XtPointer control, XEvent* event, Boolean* toWidget);
