#include "tester/commands/output_log.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace tester {

Problem OutputLog::open(const std::string& fileName) {
  std::error_code error;
  // A pipe or a device could hold up the tester.
  if (std::filesystem::exists(fileName, error) &&
      !std::filesystem::is_regular_file(fileName, error)) {
    return "The log file " + fileName + " cannot be opened: this is no regular file.";
  }
  errno = 0;
  std::ofstream opened(fileName, std::ios::app);
  if (!opened) {
    return "The log file " + fileName + " cannot be opened: " + std::strerror(errno) + '.';
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
