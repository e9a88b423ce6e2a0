#pragma once

#include <Xm/XmAll.h>

class zWindow;

/// The shell that a dialog of `parent` belongs to: the parent's own, or the main window's where the
/// parent is null or has no widget. Null when there is no main window either.
Widget shellAbove(zWindow* parent);
