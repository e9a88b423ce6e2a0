#pragma once

/// Diagnostic output of the framework: printed to standard output with a carriage return and a line
/// feed when the debug level is above 0, otherwise dropped. The finished text is read as a format
/// once more, so that "%%" in it comes out as "%".
void zDebugOut(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// The debug level; -1 until the first frame has read it from the X resources.
int debugLevel();
void setDebugLevel(int level);
