#include "dialogs/version_text.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/version.h"

namespace {

constexpr mode_t kNewFileMode = 0666;

// Makes or empties the file as mode "w+" does, but waits for nobody at a pipe or a device. What is
// then to be read is always empty, and so is not read.
void emptyPatchLevel() {
  const char* directory = std::getenv("neldir");
  const std::string path = std::string(directory == nullptr ? "" : directory) + "\\patchlevel.txt";
  const int file = open(
      path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kNewFileMode);
  if (file >= 0) {
    close(file);
  }
}

}  // namespace

const char* VersionText() {
  // The version, an empty patch level and an empty third part.
  static const std::string text = std::string(kProductVersion) + "  ";
  emptyPatchLevel();
  return text.c_str();
}

void PrintVersion() {
  std::printf("nelkvui: Korvane : %s\n", VersionText());
}
