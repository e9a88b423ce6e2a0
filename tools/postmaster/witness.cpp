#include "postmaster/witness.h"

#include "frames/recording.h"
#include "support/descriptor.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>

namespace postmaster {

namespace {

// Two sessions that begin the same file anew would write over each other, so the first one keeps
// it. What is no regular file is for everybody. Null, and errno, when it cannot be had.
std::FILE* openEmpty(const std::string& fileName) {
  constexpr mode_t kForAll = 0666;
  UniqueDescriptor opened(::open(fileName.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kForAll));
  struct stat status = {};
  if (!opened.isOpen() || ::fstat(opened.get(), &status) != 0) {
    return nullptr;
  }
  if (S_ISREG(status.st_mode)) {
    // Some file systems know no locks.
    const bool isOthers = ::flock(opened.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (isOthers || ::ftruncate(opened.get(), 0) != 0) {
      return nullptr;
    }
  }
  return ::fdopen(opened.release(), "w");
}

}  // namespace

bool endsWithinLine(const std::string& fileName) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(fileName, error)) {
    return false;
  }
  const UniqueFile file(std::fopen(fileName.c_str(), "re"));
  if (!file || std::fseek(file.get(), -1, SEEK_END) != 0) {
    return false;
  }
  const int last = std::fgetc(file.get());
  return last != EOF && last != '\n';
}

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
  file.reset(start == Start::kEmpty ? openEmpty(fileName) : std::fopen(fileName.c_str(), "ae"));
  if (file) {
    return {};
  }
  const char* why = errno == EWOULDBLOCK ? "another session writes it" : std::strerror(errno);
  return "cannot write the " + name + " to " + fileName + ": " + why;
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

void TraceLog::saw(const Message& message, std::string_view refusal) {
  std::string line = formatTime(std::chrono::system_clock::now()) + " " + describeMessage(*message);
  if (!refusal.empty()) {
    line += " [refused: " + std::string(refusal) + "]";
  }
  file.write(line + '\n');
}

std::string Recorder::open(const std::string& fileName) {
  start = std::chrono::steady_clock::now();
  std::string why = file.open(fileName, GrowingFile::Start::kEmpty);
  if (why.empty()) {
    file.write(frames::recordingHead(std::chrono::system_clock::now()));
  }
  return why;
}

void Recorder::saw(const Message& message, std::string_view refusal) {
  if (!refusal.empty()) {
    return;
  }
  const auto time = std::chrono::steady_clock::now() - start;
  file.write(frames::recordingLine(
      {std::chrono::duration_cast<std::chrono::milliseconds>(time), message}));
}

}  // namespace postmaster
