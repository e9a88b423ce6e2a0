#pragma once

#include <string>

/// What tests of the application object need of X itself.

/// Sets a resource in the display's database.
void setXResource(const std::string& name, const std::string& value);

/// Provokes a protocol error, with the application's own error handler in force.
void mapUnknownWindow(unsigned long window);

void raiseXtWarning(const char* text);
void raiseXtError(const char* text);

/// Ends this process by a signal after some seconds, so that a hang shows as a failure.
void endProcessLater();
