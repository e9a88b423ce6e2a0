#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tester/value.h"

/// The definition of a simulated SDL system: its signals and its process types with their states,
/// transitions, saves, variables and timers. Pure data, but for the transition bodies.
namespace tester {

class TransitionContext;

/// The actions of one transition. Must not keep the context.
using TransitionBody = void (*)(TransitionContext&);

struct SignalType {
  std::string name;
  std::vector<Sort> parameters = {};
};

struct Variable {
  std::string name;
  Sort sort;
  Value value;
};

/// Stands for all states, any process and so on; a row of one state wins over it.
inline constexpr char kAnyState[] = "*";
inline constexpr char kStartState[] = "start";

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

  /// Signals and timers with a transition or a save, each once.
  std::vector<std::string> inputs() const;
  bool keeps(const std::string& state, const std::string& input) const;
  /// The body for `input` in `state`; null when the input is discarded there.
  TransitionBody body(const std::string& state, const std::string& input) const;
};

struct SystemModel {
  std::string name;
  std::string description;
  std::vector<SignalType> signalTypes;
  std::vector<ProcessType> processes;
};

/// A pedestrian crossing with traffic lights. A controller runs the phases of two traffic lights
/// and two pedestrian lights and answers the requests of two buttons; parties of pedestrians, whom
/// the environment announces at a button, are instances of their own that come and go; a
/// supervisor asks the controller for a sign of life and counts the faults of the lamps. The
/// phases and the watchdog go round for ever, so the system never runs out of transitions.
SystemModel crossingModel();

}  // namespace tester
