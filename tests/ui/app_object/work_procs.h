#pragma once

/// What this process did with Xt work procedures so far. The test program puts a counting wrapper
/// round each that is added.
struct WorkProcs {
  int added = 0;
  int dropped = 0;  ///< asked Xt to be dropped at the end of a pass
  int passes = 0;

  int inUse() const { return added - dropped; }
};

WorkProcs& workProcs();
