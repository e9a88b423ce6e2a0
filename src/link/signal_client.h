#pragma once

/// Bits of the word of flags that signals set.
enum SignalFlag : int {
  kFlagPipe = 1,
  kFlagInterrupt = 2,
  kFlagChild = 4,
  kFlagAlarm = 8,
};

/// Takes over the process's signals for the time of the link and turns them into one global word
/// of flags that the polls read. There is one instance; the handlers stay until the process ends.
/// SIGHUP, SIGQUIT and SIGTERM are caught and ignored. A signal that sets a flag also makes a
/// descriptor readable, so that a sleeping tool can watch for it.
class CatchSignalsClient {
 public:
  /// Clears the flags and installs the handlers. A failure is one text on standard error.
  CatchSignalsClient();

  /// The one handler of all signals.
  static void SignalHandler(int signal);

  /// The word of SignalFlag bits.
  int GetSignalFlags() const;

  /// Readable from a signal that sets a flag on, until muteWake(); -1 when there is none.
  static int wakeDescriptor();

  /// Takes note of the signals so far: wakeDescriptor() is readable after the next one.
  static void muteWake();

  /// Has SIGALRM come once, `seconds` from now; its flag is cleared. Returns 1.
  int ArmTimer(int seconds);

  /// Stops the alarm and clears its flag; other flags stay. Returns 1.
  int CancelTimer();

  /// 0 while no flag at all is set; otherwise clears the alarm's flag and returns 1, whichever
  /// flag was set.
  int TimerFired();
};
