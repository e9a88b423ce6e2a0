#include "postmaster/witness.h"

#include <cerrno>
#include <chrono>
#include <cstring>

namespace postmaster {

void GrowingFile::Close::operator()(std::FILE* opened) const {
  if (opened != stdout) {
    std::fclose(opened);
  }
}

std::string GrowingFile::open(const std::string& fileName, Start start) {
  if (fileName == "-") {
    file.reset(stdout);
    return {};
  }
  file.reset(std::fopen(fileName.c_str(), start == Start::kEmpty ? "we" : "ae"));
  return file ? std::string{}
              : "cannot write the " + name + " to " + fileName + ": " + std::strerror(errno);
}

void GrowingFile::write(std::string_view text) {
  if (!file) {
    return;
  }
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
  if (!isWritten || std::fflush(file.get()) != 0) {
    file.reset();
    complaints.say("the " + name + " cannot be written and ends here");
  }
}

void TraceLog::saw(const Envelope& message, std::string_view refusal) {
  std::string line = formatTime(std::chrono::system_clock::now()) + " " + describeMessage(message);
  if (!refusal.empty()) {
    line += " [refused: " + std::string(refusal) + "]";
  }
  file.write(line + '\n');
}

}  // namespace postmaster
