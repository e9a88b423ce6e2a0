#include "launcher/files.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "frames/recording_file.h"

namespace launcher {

namespace {

namespace fs = std::filesystem;

std::string readFault(const std::string& file) {
  if (access(file.c_str(), R_OK) != 0) {
    return "cannot read " + file + ": " + std::strerror(errno);
  }
  std::error_code error;
  return fs::is_directory(file, error) ? file + " is a folder, not a file" : "";
}

/// Nothing but text, and not the text of firmware: Intel's, Motorola's and Tektronix's records.
bool isPlainText(std::string_view bytes) {
  const bool isRecord = bytes.size() > 1 && std::strchr(":S%", bytes[0]) != nullptr &&
                        std::isxdigit(static_cast<unsigned char>(bytes[1])) != 0;
  return !isRecord && std::none_of(bytes.begin(), bytes.end(), [](unsigned char c) {
    return std::iscntrl(c) != 0 && std::isspace(c) == 0;
  });
}

std::string programFault(const std::string& file) {
  std::string why = readFault(file);
  std::error_code error;
  if (!why.empty() || !fs::is_regular_file(file, error)) {
    return why.empty() ? file + " is no program" : why;
  }
  std::array<char, 512> bytes{};
  std::ifstream stream(file, std::ios::binary);
  stream.read(bytes.data(), bytes.size());
  const auto count = static_cast<std::size_t>(stream.gcount());
  return isPlainText({bytes.data(), count}) ? file + " is no program that GDB could read" : "";
}

std::string wordFault(const std::string& option, const std::string& value) {
  std::error_code error;
  if (option == "--cd") {
    return fs::is_directory(value, error) ? "" : value + " is no folder";
  }
  return option == "--core" || option == "--command" ? readFault(value) : "";
}

std::string debuggedFault(const Options& options) {
  std::string why = options.program.empty() ? "" : programFault(options.program);
  for (std::size_t i = 0; why.empty() && i + 1 < options.debuggerWords.size(); i += 2) {
    why = wordFault(options.debuggerWords[i], options.debuggerWords[i + 1]);
  }
  return why;
}

}  // namespace

std::string fileFault(const Options& options) {
  if (options.usesDebugger) {
    return debuggedFault(options);
  }
  std::error_code error;
  const bool isPipe = fs::is_other(options.replay, error);  // that can be read but once
  const std::string why =
      options.replay.empty() || isPipe ? "" : frames::recordingFault(options.replay);
  return why.empty() ? "" : "cannot replay " + options.replay + ": " + why;
}

}  // namespace launcher
