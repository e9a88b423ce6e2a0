#pragma once

#include <string>
#include <vector>

#include "tester/engine/engine.h"

/// The definition of a simulated SDL system: its signals and its process types with their states,
/// transitions, saves, variables and timers. Pure data, but for the transition bodies.
namespace tester {

class TransitionContext;

/// The actions of one transition. Must not keep the context.
using TransitionBody = void (*)(TransitionContext&);

/// The state that stands for all states; a row of one state wins over it.
inline constexpr char kAnyState[] = "*";

struct TransitionRow {
  std::string state;
  std::string input;
  TransitionBody body = nullptr;
};

/// A signal that stays in the queue while the instance is in the state.
struct SaveRow {
  std::string state;
  std::string input;
};

struct ProcessType {
  std::string name;
  int initialInstances = 1;
  int maximumInstances = 1;
  std::vector<Variable> variables = {};  ///< with their initial values
  std::vector<std::string> timers = {};
  std::vector<std::string> states = {};
  TransitionBody start = nullptr;
  std::vector<TransitionRow> transitions = {};
  std::vector<SaveRow> saves = {};
};

struct SystemModel {
  std::string name;
  std::string description;
  std::vector<SignalType> signalTypes;
  std::vector<ProcessType> processes;
};

}  // namespace tester
