#pragma once

#include "postmaster/history.h"
#include "postmaster/options.h"
#include "postmaster/processes.h"
#include "postmaster/rendezvous.h"
#include "postmaster/replay.h"
#include "postmaster/shutdown_sequence.h"
#include "postmaster/switchboard.h"
#include "postmaster/tester_care.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace postmaster {

/// The whole Postmaster: the rendezvous, the tools as children, the connections, and one poll
/// loop without threads that ends when the user interface has left or a signal says so.
class Postmaster {
 public:
  Postmaster(Options asked, Complaints& complaintsOut);

  /// Runs to the end; the result is the exit status.
  int run();

 private:
  bool prepare();
  bool openFiles();
  bool openReplay(std::set<int>& played);
  template <class FileWitness>
  bool addWitness(const std::string& fileName, FileWitness** added = nullptr);
  bool startTools();
  void loop();
  void wait(std::vector<pollfd>& entries) const;
  std::optional<ShutdownSequence::TimePoint> deadline() const;
  int millisecondsToWait() const;
  void playDue();
  void takeSignals();
  void reapChildren();
  void childEnded(const Children::Ended& ended);
  bool canUiStillCome() const;
  void noteThatNoUiCanCome();
  bool haveAllAnswered() const;
  void tellOfWaiting();
  void keepNameAlive();
  void end(ShutdownReason reason);
  void advanceShutdown();

  Options options;
  Complaints& complaints;
  Witnesses witnesses;
  History* history = nullptr;  ///< one of the witnesses, as the next two
  Replay* replay = nullptr;
  TesterWatch* watch = nullptr;  ///< if there is a tester to care for
  SignalSource signals;
  Rendezvous rendezvous;
  Children children;
  std::unique_ptr<Switchboard> switchboard;
  std::unique_ptr<TesterCare> care;  ///< null when the tester is not to be started again
  ShutdownSequence shutdown;
  std::vector<std::string> programs;  ///< paths of the tools, in their order
  int status = kExitOrderly;
  bool noUiTold = false;
  bool forcing = false;  ///< tools were made to end: how they end is no news any more
  bool finished = false;
};

}  // namespace postmaster
