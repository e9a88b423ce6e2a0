#pragma once

#include "tester/engine/simulated_system.h"
#include "tester/engine/transition_context.h"

/// A system made for tests: one process that saves, discards, sets timers and creates. It has no
/// timer at the start, so a run comes to rest.
namespace tester {

inline void toyCount(TransitionContext& context) {
  context.add("count", context.integer(0));
}

inline SystemModel toyModel() {
  ProcessType clerk;
  clerk.name = "Clerk";
  clerk.initialInstances = 2;
  clerk.maximumInstances = 3;
  clerk.variables = {{"count", integerSort(), std::int64_t{0}}};
  clerk.timers = {"Late", "Later"};
  clerk.states = {"Closed", "Open"};
  clerk.start = [](TransitionContext& context) { context.nextState("Closed"); };
  clerk.transitions = {
      {"Closed", "OpenUp", [](TransitionContext& context) { context.nextState("Open"); }},
      {"Closed", "Late", [](TransitionContext& context) { context.nextState("Open"); }},
      {"Open", "Add", toyCount},
      {"Open", "Close", [](TransitionContext& context) { context.nextState("Closed"); }},
      {kAnyState, "Hire", [](TransitionContext& context) { context.create("Clerk", {}); }},
      {kAnyState, "Retire", [](TransitionContext& context) { context.stop(); }},
      {kAnyState, "Wait",
       [](TransitionContext& context) {
         context.set("Late", 5 * kSecond);
         context.set("Later", 5 * kSecond);
       }},
      {"Open", "Retire", [](TransitionContext& context) { context.add("count", 1); }},
  };
  clerk.saves = {{"Closed", "Add"}};
  SystemModel model;
  model.name = "Toy";
  model.signalTypes = {{"OpenUp"}, {"Add", {integerSort()}}, {"Close"}, {"Hire"}, {"Retire"},
                       {"Wait"}};
  model.processes = {clerk};
  return model;
}

/// Keeps what an engine traces.
class TraceRecorder : public TraceSink {
 public:
  bool wants(TraceLevel level, const std::string& /*process*/) const override {
    return level <= wantedLevel;
  }
  void trace(const std::string& line) override { lines.push_back(line); }

  TraceLevel wantedLevel = TraceLevel::kTransitions;
  std::vector<std::string> lines;
};

}  // namespace tester
