#pragma once

#include <Xm/XmAll.h>

/// Shows the picture of the stock button `id` (OK, Cancel or Help) on `button`; any other id keeps
/// its text. The pictures are installed as images of the toolkit on first use.
void showStockImage(Widget button, int id);
