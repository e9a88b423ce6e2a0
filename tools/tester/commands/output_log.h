#pragma once

#include <fstream>
#include <string>

#include "tester/engine/engine.h"

namespace tester {

/// A file that gets a copy of all that is printed. It is appended to, never cut.
class OutputLog {
 public:
  /// Begins a copy, and ends the one before it. Nothing is changed when there is a problem.
  Problem open(const std::string& fileName);
  void close();

  bool isOpen() const { return stream.is_open(); }
  /// Of the open file, or of the last one.
  const std::string& name() const { return path; }

  /// Does nothing without a file. One that takes no more is closed.
  void write(const std::string& lines);

  /// Whether a file was closed because it took no more; true once for each.
  bool takeFailure();

 private:
  std::ofstream stream;
  std::string path;
  bool failed = false;
};

}  // namespace tester
