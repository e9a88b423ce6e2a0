#pragma once

#include <X11/Intrinsic.h>

/// Colours that the toolkit would ask the server for one by one, each time waiting for the answer,
/// come without it where the visual tells the pixels.

/// Those of resources, written "#rrggbb".
void computeResourceColours();
/// Those of shadows and the like, for all widgets that are made later.
void computeShadowColours(Widget shell);
