#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tester/simulated_system.h"
#include "tester_link/user_link.h"

namespace tester {

/// A description of transitions before which a run stops. An empty name or the number 0 stands
/// for any.
struct Breakpoint {
  int number = 0;  ///< by which the user removes it
  std::string process = {};
  int instanceNumber = 0;
  std::string state = {};
  std::string input = {};

  bool matches(const PendingTransition& transition) const;

  /// "Button:2 in Idle at Press", any being "*".
  std::string text() const;
};

/// How far a run goes if nothing stops it before.
struct RunGoal {
  std::optional<std::int64_t> transitions = {};  ///< at most so many
  std::optional<Time> until = {};                ///< all transitions up to and at this time
};

/// One run of the system: fires transitions until its goal, a breakpoint or rest is reached, or a
/// transition runs into a dynamic error. It does so in slices, so that the tester hears the user
/// between them. Breakpoints are not asked about the first of a counted number of transitions, nor
/// about the transition at which the run before stopped, so that the user can go on from there.
class Run {
 public:
  /// `stoppedBefore`: the transition whose breakpoint ended the run before, if none was fired
  /// since.
  Run(SimulatedSystem& runSystem, const std::vector<Breakpoint>& runBreakpoints, RunGoal runGoal,
      std::optional<PendingTransition> stoppedBefore)
      : system(runSystem),
        breakpoints(runBreakpoints),
        goal(runGoal),
        passed(std::move(stoppedBefore)) {}

  /// Fires some transitions, fewer when the user takes no more text. False when the run is over;
  /// endText() says why.
  bool runSlice(const Trace& trace, tester_link::UserLink& user);

  /// Ends the run from outside.
  void interrupt() { end("Interrupted"); }

  /// Why the run is over, lines with their ends; empty when nothing needs to be said.
  const std::string& endText() const { return text; }

  /// The dynamic error that ended the run, with the transition; empty when there was none.
  const std::string& errorText() const { return error; }

  /// The transition before which a breakpoint ended the run, or which still waits to be passed.
  const std::optional<PendingTransition>& stoppedAt() const { return passed; }

 private:
  bool step(const Trace& trace, tester_link::UserLink& user);
  bool end(const std::string& reason);
  const Breakpoint* breakpointAt(const PendingTransition& next) const;

  SimulatedSystem& system;
  const std::vector<Breakpoint>& breakpoints;
  RunGoal goal;
  std::optional<PendingTransition> passed;
  std::int64_t fired = 0;
  std::string text;
  std::string error;
};

}  // namespace tester
