#pragma once

#include <optional>
#include <string>

class zApp;

/// The process entry's work: finds the X resources, makes the application object, runs `appMain`
/// with it and closes the display. Returns the exit status.
int runProcess(int argc, char** argv, void (*appMain)(zApp* app));

/// Where the X resource file of the program is.
struct zResourceSearch {
  std::optional<std::string> file;
  /// A place was named in which every installation has the file, and it is not there.
  bool isMissing = false;
};

/// Looks for the file by the values of two environment variables, either of which may be null:
/// `resourceDirectories` (XAPPLRESDIR), of which only the part up to the first colon counts, then
/// `installation` (nelwerk).
zResourceSearch findResourceFile(const char* resourceDirectories, const char* installation);

/// The arguments with one blank between them.
std::string joinArguments(int argc, char* const* argv);

/// The display that the arguments name: what follows the last argument, after the first, that
/// begins with "-d" and has a successor; null when there is none.
const char* displayArgument(int argc, char* const* argv);
