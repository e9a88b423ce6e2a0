#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/deadline.h"
#include "tests/support/source_line.h"

namespace ui {

/// How long waitFor waits. Only a failing test waits it out.
inline constexpr Milliseconds kWaitTime{3000};

/// Handles all X events that are there, those included that earlier requests of this process
/// cause. Timers and work procedures stay where they are.
void drain();

/// Handles events, timers and work procedures until `condition` holds. Fails the test and ends it
/// when that takes longer than `limit`; the failure names `what`.
void waitFor(const std::function<bool()>& condition, std::string_view what,
             Milliseconds limit = kWaitTime, SourceLine where = SourceLine::current());

/// Names what is awaited for its own lifetime, for the text of a failure or of a hang.
class Awaiting {
 public:
  explicit Awaiting(std::string what);
  Awaiting(const Awaiting&) = delete;
  Awaiting& operator=(const Awaiting&) = delete;
  ~Awaiting();

  /// What is awaited at present, the innermost last, one a line.
  static std::string describe();
};

/// How deep waitFor is nested.
int waitDepth();

}  // namespace ui
