#pragma once

#include <optional>
#include <string>

#include "framework/draw/xtfwd.h"
#include "support/geometry.h"

/// The framework's settings in the X resource database.

/// The text of the resource `name` of class `className`; nothing when it is not set.
std::optional<std::string> readXResource(Display* display, const char* name, const char* className);

/// The value of the resource `application`.`key` (name and class alike) as a number: "True" and
/// "true" count as 1, other text that is no number as 0; nothing when it is not set.
std::optional<int> readXSetting(Display* display, const std::string& application, const char* key);

/// Settings that the first frame reads and others ask for.
struct zXSettings {
  int useChildMdi = -1;                    ///< "%s.useChildMDI"; -1 until read
  bool positionIsFrameWorkaround = false;  ///< "%s.positionIsFrameWorkaround"
  int incFontInDialogBy = 0;               ///< "%s.incFontInDialogBy": points added to dialog fonts
  zDimension startSize;  ///< "%s.startSize", 1000x720 pixels of 96 dpi; zero: none
  /// "%s.promptKeyDelay": how long a dialog that the user did not ask for must have the focus
  /// before it takes keys, milliseconds; 0 for not at all.
  int promptKeyDelay = kPromptKeyDelayByDefault;

  static constexpr int kPromptKeyDelayByDefault = 300;
};

extern zXSettings g_XSettings;

/// Reads all of them, and the debug level, for the application `application`. The debug level and
/// useChildMdi are read once; later calls leave them.
void readXSettings(Display* display, const std::string& application);

/// Diagnostic output of the framework: printed to standard output with a carriage return and a line
/// feed when the debug level is above 0, otherwise dropped. The finished text is read as a format
/// once more, so that "%%" in it comes out as "%".
void zDebugOut(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// The debug level; -1 until the first frame has read it from the X resources.
int debugLevel();
void setDebugLevel(int level);
