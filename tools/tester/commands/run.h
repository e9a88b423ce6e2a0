#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "tester/commands/breakpoints.h"
#include "tester/commands/dialogue.h"
#include "tester/commands/history.h"

namespace tester {

/// At the start.
inline constexpr TraceLevel kUsualTraceLevel = TraceLevel::kTransitions;

/// Trace levels: one for the system, and for a process its own where the user gave one. Prints
/// what it is told.
class Trace : public TraceSink {
 public:
  explicit Trace(Dialogue& userDialogue) : dialogue(userDialogue) {}

  /// Sets the level of the whole system; the processes' own are forgotten.
  void setLevel(TraceLevel newLevel);
  void setLevel(const std::string& process, TraceLevel newLevel) { levels[process] = newLevel; }
  TraceLevel level() const { return systemLevel; }
  TraceLevel level(const std::string& process) const;

  /// Only transitions of these processes are traced, whatever the levels; nothing: of all.
  void setMask(std::optional<std::set<std::string>> tracedProcesses) {
    mask = std::move(tracedProcesses);
  }
  bool isMasked(const std::string& process) const;

  bool wants(TraceLevel wanted, const std::string& process) const override;
  void trace(const std::string& line) override;

 private:
  Dialogue& dialogue;
  TraceLevel systemLevel = kUsualTraceLevel;
  std::optional<std::set<std::string>> mask;
  std::map<std::string, TraceLevel> levels;
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
  Run(Engine& runEngine, const Breakpoints& runBreakpoints, History& runHistory, RunGoal runGoal,
      std::optional<PendingTransition> stoppedBefore)
      : engine(runEngine),
        breakpoints(runBreakpoints),
        history(runHistory),
        goal(runGoal),
        passed(std::move(stoppedBefore)) {}

  /// Fires some transitions, fewer when the dialogue takes no more trace. False when the run is
  /// over; endText() says why.
  bool runSlice(Trace& trace, const Dialogue& dialogue);

  /// Ends the run from outside.
  void interrupt();

  /// Why the run is over, lines with their ends; empty when nothing needs to be said.
  const std::string& endText() const { return text; }

  /// The dynamic error that ended the run, with the transition; empty when there was none.
  const std::string& errorText() const { return error; }

  /// The transition before which a breakpoint ended the run, or which still waits to be passed.
  const std::optional<PendingTransition>& stoppedAt() const { return passed; }

 private:
  bool step(Trace& trace);
  bool end(const std::string& reason);
  bool endInError(const PendingTransition& transition, const std::string& problem);
  const Breakpoint* breakpointAt(const PendingTransition& next) const;

  Engine& engine;
  const Breakpoints& breakpoints;
  History& history;
  RunGoal goal;
  std::optional<PendingTransition> passed;
  std::int64_t fired = 0;
  std::string text;
  std::string error;
};

}  // namespace tester
