#include "app/version_text.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "support/version.h"

namespace {

constexpr int kPatchLevelBytes = 128;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string readPatchLevel() {
  const char* directory = std::getenv("neldir");
  const std::string path = std::string(directory == nullptr ? "" : directory) + "\\patchlevel.txt";
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "w+"));
  std::array<char, kPatchLevelBytes> line{};
  if (file == nullptr || std::fgets(line.data(), line.size(), file.get()) == nullptr) {
    return {};
  }
  return line.data();
}

}  // namespace

const char* VersionText() {
  static std::string text;
  text = std::string(kProductVersion) + " " + readPatchLevel() + " ";
  return text.c_str();
}

void PrintVersion() {
  std::printf("nelkvui: Korvane : %s\n", VersionText());
}
