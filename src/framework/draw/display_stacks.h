#pragma once

#include "support/singly_list.h"

class zBrush;
class zDisplay;
class zFont;
class zPen;

/// What is in force on a display or a pane: the object pushed last. None of them owns its objects.
using zBrushStack = zTypedSlist<zBrush>;
using zDisplayStack = zTypedSlist<zDisplay>;
using zFontStack = zTypedSlist<zFont>;
using zPenStack = zTypedSlist<zPen>;
