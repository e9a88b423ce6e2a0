#pragma once

#include "postmaster/message.h"
#include "postmaster/reports.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace postmaster {

/// Sees every frame that comes from a tool or from the Postmaster itself, in their order and before
/// anybody receives it.
class Witness {
 public:
  virtual ~Witness() = default;

  /// `refusal`, when not empty, says why the message went no further.
  virtual void saw(const Message& message, std::string_view refusal) = 0;
};
using Witnesses = std::vector<std::unique_ptr<Witness>>;

/// Whether `fileName` is a regular file that ends in the middle of a line.
bool endsWithinLine(const std::string& fileName);

/// A file that grows while the Postmaster runs: what is written is handed to the system at once, so
/// that a reader can follow it and a crash loses nothing. The first write that fails is complained
/// of and ends the file, not the Postmaster.
class GrowingFile {
 public:
  enum class Start { kEmpty, kAppend };

  /// `what` names the file in complaints, such as "trace".
  GrowingFile(std::string what, Complaints& complaintsOut)
      : name(std::move(what)), complaints(complaintsOut) {}

  /// Opens `fileName`, "-" being standard output. Returns an empty text or a line that says why it
  /// failed; a file that begins anew is this one's until its end.
  std::string open(const std::string& fileName, Start start);

  void write(std::string_view text);

 private:
  struct Close {
    void operator()(std::FILE* opened) const;
  };

  std::string name;
  Complaints& complaints;
  std::unique_ptr<std::FILE, Close> file;
};

/// Each frame as one line with its time, for people. Begins anew with each run.
class TraceLog : public Witness {
 public:
  explicit TraceLog(Complaints& complaints) : file("trace", complaints) {}

  std::string open(const std::string& fileName) {
    return file.open(fileName, GrowingFile::Start::kEmpty);
  }
  void saw(const Message& message, std::string_view refusal) override;

 private:
  GrowingFile file;
};

/// Each frame that is passed on, with its time, for programs: the recording that docs/recording.md
/// describes. Begins anew with each run.
class Recorder : public Witness {
 public:
  explicit Recorder(Complaints& complaints) : file("recording", complaints) {}

  std::string open(const std::string& fileName);
  void saw(const Message& message, std::string_view refusal) override;

 private:
  GrowingFile file;
  std::chrono::steady_clock::time_point start;
};

}  // namespace postmaster
