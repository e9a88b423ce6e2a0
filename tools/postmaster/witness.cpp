#include "postmaster/witness.h"

#include "frames/recording.h"
#include "support/descriptor.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>

namespace postmaster {

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
