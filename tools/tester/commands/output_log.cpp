#include "tester/commands/output_log.h"

#include <filesystem>
#include <utility>

namespace tester {

Problem OutputLog::open(const std::string& fileName) {
  std::error_code error;
  // A pipe or a device could hold up the tester.
  if (std::filesystem::exists(fileName, error) &&
      !std::filesystem::is_regular_file(fileName, error)) {
    return fileName + " is no file.";
  }
  std::ofstream opened(fileName, std::ios::app);
  if (!opened) {
    return "The file " + fileName + " cannot be written.";
  }
  stream = std::move(opened);
  path = fileName;
  return {};
}

void OutputLog::close() {
  stream.close();
}

void OutputLog::write(const std::string& lines) {
  if (!isOpen()) {
    return;
  }
  stream << lines << std::flush;
  if (!stream) {
    failed = true;
    stream.clear();
    close();
  }
}

bool OutputLog::takeFailure() {
  return std::exchange(failed, false);
}

}  // namespace tester
