#pragma once

#include "framework/draw/xtfwd.h"

#include <X11/Intrinsic.h>

/// What the program does where the toolkit leaves it to do better: errors, colours, floods of
/// events, fonts.

/// What the program does about errors and warnings that Xlib and Xt report.

/// Reports an X protocol error through zDebugOut and lets the program go on. The result, 1, means
/// nothing to Xlib.
int XErrorReporter(Display* display, XErrorEvent* event);

/// Reports an Xt warning through zDebugOut.
void reportXtWarning(char* message);

/// Reports an Xt error through zDebugOut and on standard error, and ends the process with status 1:
/// Xt relies on its error handler never returning.
void reportXtError(char* message) __attribute__((noreturn));

/// Colours that the toolkit would ask the server for one by one, each time waiting for the answer,
/// come without it where the visual tells the pixels.

/// Those of resources, written "#rrggbb".
void computeResourceColours();
/// Those of shadows and the like, for all widgets that are made later.
void computeShadowColours(Widget shell);

/// From now on each window of the display hears of its newest size and place only.
void dropOldConfigureEvents(Display* display);

/// Makes the font names of the display's resource database that give a point size and no pixel size
/// the names of the nearest fonts of that size on this screen: the server takes 75 or 100 dots per
/// inch for every screen. Needs theScreen(); for the time before there are widgets.
void resolveFontPoints(Display* display);
