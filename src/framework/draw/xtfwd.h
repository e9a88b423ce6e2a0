#pragma once

/// The names of X and Xt that headers need, declared ahead so that no header includes theirs.
/// XFontStruct has no tag and cannot be declared ahead; ziXFont stands for it.

using XID = unsigned long;
using Window = XID;
using Pixmap = XID;
using Cursor = XID;
using Font = XID;
using XtIntervalId = unsigned long;

struct _XDisplay;
using Display = struct _XDisplay;
using GC = struct _XGC*;
using Region = struct _XRegion*;
using XEvent = union _XEvent;
using Widget = struct _WidgetRec*;
using XtAppContext = struct _XtAppStruct*;
