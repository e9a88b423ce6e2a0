#pragma once

#include <string>

/// Diagnostics of the drawing floor. They go where the application object says; nowhere before it
/// has said so.
using ziDrawMessageSink = void (*)(const std::string& text);

void setDrawMessageSink(ziDrawMessageSink sink);
void drawMessage(const std::string& text);
