#include "postmaster/trace_log.h"

#include "postmaster/trace_format.h"

#include <cerrno>
#include <chrono>
#include <cstring>

namespace postmaster {

void TraceLog::Close::operator()(std::FILE* opened) const {
  if (opened != stdout) {
    std::fclose(opened);
  }
}

std::string TraceLog::open(const std::string& fileName) {
  if (fileName == "-") {
    file.reset(stdout);
    return {};
  }
  file.reset(std::fopen(fileName.c_str(), "we"));
  return file ? std::string{} : fileName + ": " + std::strerror(errno);
}

void TraceLog::write(const Envelope& message, std::string_view refusal) {
  if (!file) {
    return;
  }
  std::string line = formatTime(std::chrono::system_clock::now()) + " " + describeMessage(message);
  if (!refusal.empty()) {
    line += " [refused: " + std::string(refusal) + "]";
  }
  line += '\n';
  const bool written = std::fwrite(line.data(), 1, line.size(), file.get()) == line.size();
  if (!written || std::fflush(file.get()) != 0) {
    failed = true;
    file.reset();
  }
}

}  // namespace postmaster
