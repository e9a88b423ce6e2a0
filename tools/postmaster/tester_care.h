#pragma once

#include "postmaster/processes.h"
#include "postmaster/switchboard.h"
#include "postmaster/tester_watch.h"

#include <optional>
#include <string>

namespace postmaster {

/// Brings a tester back that has ended or hangs, when the user wants it. Commands that he types
/// meanwhile wait for the new one.
class TesterCare {
 public:
  /// All must outlive this; `testerWatch` is one of the witnesses.
  TesterCare(Children& childrenOfAll, Switchboard& board, TesterWatch& testerWatch,
             Complaints& complaintsOut)
      : children(childrenOfAll),
        switchboard(board),
        watch(testerWatch),
        complaints(complaintsOut) {}

  /// Whether the child `pid`, which has ended, was the tester and the session goes on without it.
  bool isMissed(pid_t pid) const;
  /// The tester has ended: asks whether to start it again.
  void ended(const Children::Ended& tester, const std::string& howItEnded);

  /// To be called after everything that has happened.
  void look();
  /// When to call `look` although nothing has happened.
  std::optional<TesterWatch::TimePoint> deadline() const;

 private:
  void takeAnswer();
  void askAboutSilence();
  void startAgain(const Children::Child& tester);
  bool isStarting() const;
  pid_t testerProcess() const;

  Children& children;
  Switchboard& switchboard;
  TesterWatch& watch;
  Complaints& complaints;
  std::optional<Children::Child> endedTester;  ///< may be started again, if the user wants it
  pid_t silentTester = 0;                      ///< may be killed, if the user wants it
  pid_t killedTester = 0;                      ///< the user wanted it
  pid_t lastTester = 0;                        ///< the one that was connected last
  pid_t newTester = 0;                         ///< the one that was started last by his wish
};

}  // namespace postmaster
