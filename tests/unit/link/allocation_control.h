#pragma once

/// The test program's own operator new, which counts and can fail.

/// Blocks allocated with any form of new since the program started.
long allocationCount();

/// Lets `successes` further allocations succeed and the one after them fail, while it lives.
class FailingAllocation {
 public:
  explicit FailingAllocation(long successes);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();
};
