#pragma once

#include <X11/Intrinsic.h>

/// What the program does about errors and warnings that Xlib and Xt report.

/// Reports an X protocol error through zDebugOut and lets the program go on. The result, 1, means
/// nothing to Xlib.
int XErrorReporter(Display* display, XErrorEvent* event);

/// Reports an Xt warning through zDebugOut.
void reportXtWarning(char* message);

/// Reports an Xt error through zDebugOut and on standard error, and ends the process with status 1:
/// Xt relies on its error handler never returning.
void reportXtError(char* message) __attribute__((noreturn));
