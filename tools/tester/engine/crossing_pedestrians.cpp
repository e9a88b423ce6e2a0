// The buttons and the people. A button creates an instance for each party that comes to the kerb;
// people who come while a party waits join it.

#include "tester/engine/crossing_parts.h"
#include "tester/engine/transition_context.h"

namespace tester::crossing {

namespace {

constexpr char kReminder[] = "Reminder";
constexpr char kWalking[] = "Walking";

constexpr char kIdle[] = "Idle";
constexpr char kLit[] = "Lit";
constexpr char kWaiting[] = "Waiting";
constexpr char kCrossing[] = "Crossing";

constexpr char kParty[] = "party";
constexpr char kPeopleCrossed[] = "peopleCrossed";
constexpr char kPeople[] = "people";

constexpr Time kReminderTime = 60 * kSecond;
constexpr Time kCrossingTime = 6 * kSecond;
constexpr int kMostParties = 20;

void request(TransitionContext& context) {
  context.output(kRequest, {kController, 1}, {std::int64_t{context.self().number}});
  context.set(kReminder, kReminderTime);
  context.nextState(kLit);
}

/// Only a light that is lit has a party that can go: the request of one that has just come may
/// still be on its way.
void served(TransitionContext& context) {
  context.reset(kReminder);
  const InstanceId party = context.pidVariable(kParty);
  if (!party.isNull()) {
    context.output(kCross, party);
  }
  context.assign(kParty, InstanceId{});
  context.nextState(kIdle);
}

void arrive(TransitionContext& context) {
  const InstanceId party = context.pidVariable(kParty);
  if (!party.isNull()) {
    context.output(kJoin, party, {context.integer(0)});
    return;
  }
  context.create(kPedestrian, {{kPeople, integerSort(), context.integer(0)}});
  context.assign(kParty, context.offspring());
}

void countCrossed(TransitionContext& context) {
  context.add(kPeopleCrossed, context.integer(0));
}

void comeToKerb(TransitionContext& context) {
  context.output(kPress, context.parent());
  context.nextState(kWaiting);
}

void join(TransitionContext& context) {
  context.add(kPeople, context.integer(0));
}

void beginCrossing(TransitionContext& context) {
  context.set(kWalking, kCrossingTime);
  context.nextState(kCrossing);
}

void reachOtherSide(TransitionContext& context) {
  context.output(kCrossed, context.parent(), {context.integerVariable(kPeople)});
  context.stop();
}

}  // namespace

ProcessType buttonType() {
  ProcessType type;
  type.name = kButton;
  type.initialInstances = 2;
  type.maximumInstances = 2;
  type.variables = {{kParty, pidSort(), InstanceId{}},
                    {kPeopleCrossed, integerSort(), std::int64_t{0}}};
  type.timers = {kReminder};
  type.states = {kIdle, kLit};
  type.start = [](TransitionContext& context) { context.nextState(kIdle); };
  type.transitions = {
      {kIdle, kPress, request},     {kLit, kReminder, request},          {kLit, kServed, served},
      {kAnyState, kArrive, arrive}, {kAnyState, kCrossed, countCrossed},
  };
  return type;
}

ProcessType pedestrianType() {
  ProcessType type;
  type.name = kPedestrian;
  type.initialInstances = 0;
  type.maximumInstances = kMostParties;
  type.variables = {{kPeople, integerSort(), std::int64_t{0}}};
  type.timers = {kWalking};
  type.states = {kWaiting, kCrossing};
  type.start = comeToKerb;
  type.transitions = {
      {kWaiting, kJoin, join},
      {kWaiting, kCross, beginCrossing},
      {kCrossing, kWalking, reachOtherSide},
  };
  return type;
}

}  // namespace tester::crossing
