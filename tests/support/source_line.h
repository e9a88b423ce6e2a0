#pragma once

/// A line of a test. What std::source_location is, which clang 14 does not have.
struct SourceLine {
  /// As a default argument, the line of the caller.
  static constexpr SourceLine current(const char* file = __builtin_FILE(),
                                      int line = __builtin_LINE()) {
    return {file, line};
  }

  const char* file;
  int line;
};
