// The two processes that control the crossing. The controller takes requests at any time but in
// the two states in which it could not honour them; there they are saved. A change to or from the
// night is saved until the vehicles have green.

#include "tester/engine/crossing_parts.h"
#include "tester/engine/transition_context.h"

namespace tester::crossing {

namespace {

constexpr char kPhase[] = "Phase";
constexpr char kWatchdog[] = "Watchdog";

constexpr char kVehiclesGreen[] = "VehiclesGreen";
constexpr char kVehiclesAmber[] = "VehiclesAmber";
constexpr char kAllRed[] = "AllRed";
constexpr char kPedestriansGreen[] = "PedestriansGreen";
constexpr char kClearance[] = "Clearance";
constexpr char kVehiclesPrepare[] = "VehiclesPrepare";
constexpr char kNightState[] = "NightOperation";
constexpr char kWatching[] = "Watching";
constexpr char kChecking[] = "Checking";

constexpr char kRequests[] = "requests";
constexpr char kCycles[] = "cycles";
constexpr char kMinimumOver[] = "minimumOver";
constexpr char kPings[] = "pings";
constexpr char kFaults[] = "faults";

constexpr Time kMinimumGreen = 15 * kSecond;
constexpr Time kFurtherGreen = 30 * kSecond;
constexpr Time kAmberTime = 3 * kSecond;
constexpr Time kAllRedTime = 2 * kSecond;
constexpr Time kWalkTime = 8 * kSecond;
constexpr Time kClearanceTime = 5 * kSecond;
constexpr Time kRedAmberTime = 2 * kSecond;
constexpr Time kWatchdogTime = 10 * kSecond;

void setVehicles(TransitionContext& context, const char* aspect) {
  context.outputToAll(kSetAspect, kTrafficLight, {Literal{aspect}});
}

void enter(TransitionContext& context, const char* state, Time duration) {
  context.set(kPhase, duration);
  context.nextState(state);
}

void enterVehiclesGreen(TransitionContext& context) {
  setVehicles(context, kGreen);
  context.assign(kMinimumOver, false);
  enter(context, kVehiclesGreen, kMinimumGreen);
}

void enterVehiclesAmber(TransitionContext& context) {
  setVehicles(context, kAmber);
  enter(context, kVehiclesAmber, kAmberTime);
}

void countRequest(TransitionContext& context) {
  context.add(kRequests, 1);
}

void requestInGreen(TransitionContext& context) {
  countRequest(context);
  if (context.booleanVariable(kMinimumOver)) {
    enterVehiclesAmber(context);
  }
}

void endOfGreen(TransitionContext& context) {
  if (context.booleanVariable(kMinimumOver) || context.integerVariable(kRequests) > 0) {
    enterVehiclesAmber(context);
    return;
  }
  context.assign(kMinimumOver, true);
  context.set(kPhase, kFurtherGreen);
}

void endOfAmber(TransitionContext& context) {
  setVehicles(context, kRed);
  enter(context, kAllRed, kAllRedTime);
}

void endOfAllRed(TransitionContext& context) {
  context.outputToAll(kWalk, kPedestrianLight);
  context.outputToAll(kServed, kButton);
  context.assign(kRequests, std::int64_t{0});
  context.add(kCycles, 1);
  enter(context, kPedestriansGreen, kWalkTime);
}

void serveAtOnce(TransitionContext& context) {
  context.output(kServed, context.sender());
}

void endOfWalk(TransitionContext& context) {
  context.outputToAll(kDontWalk, kPedestrianLight);
  enter(context, kClearance, kClearanceTime);
}

void endOfClearance(TransitionContext& context) {
  setVehicles(context, kRedAmber);
  enter(context, kVehiclesPrepare, kRedAmberTime);
}

void nightFalls(TransitionContext& context) {
  if (!context.boolean(0)) {
    return;
  }
  context.reset(kPhase);
  setVehicles(context, kFlashing);
  context.nextState(kNightState);
}

void nightEnds(TransitionContext& context) {
  if (context.boolean(0)) {
    return;
  }
  setVehicles(context, kRed);
  enter(context, kClearance, kClearanceTime);
}

void answerPing(TransitionContext& context) {
  context.output(kPong, context.sender(), {context.integer(0)});
}

void startWatching(TransitionContext& context) {
  context.set(kWatchdog, kWatchdogTime);
  context.nextState(kWatching);
}

void askController(TransitionContext& context) {
  context.add(kPings, 1);
  context.output(kPing, {kController, 1}, {context.integerVariable(kPings)});
  context.set(kWatchdog, kWatchdogTime);
  context.nextState(kChecking);
}

void noAnswer(TransitionContext& context) {
  context.outputToEnvironment(kAlarm, {std::string("Controller gives no sign of life")});
  startWatching(context);
}

void noteFault(TransitionContext& context) {
  context.add(kFaults, 1);
  context.outputToEnvironment(
      kAlarm, {"Lamp of traffic light " + std::to_string(context.integer(0)) + " is broken"});
}

}  // namespace

ProcessType controllerType() {
  ProcessType type;
  type.name = kController;
  type.variables = {{kRequests, integerSort(), std::int64_t{0}},
                    {kCycles, integerSort(), std::int64_t{0}},
                    {kMinimumOver, booleanSort(), false}};
  type.timers = {kPhase};
  type.states = {kVehiclesGreen, kVehiclesAmber,   kAllRed,    kPedestriansGreen,
                 kClearance,     kVehiclesPrepare, kNightState};
  type.start = enterVehiclesGreen;
  type.transitions = {
      {kVehiclesGreen, kRequest, requestInGreen},
      {kVehiclesGreen, kPhase, endOfGreen},
      {kVehiclesGreen, kNight, nightFalls},
      {kVehiclesAmber, kRequest, countRequest},
      {kVehiclesAmber, kPhase, endOfAmber},
      {kAllRed, kRequest, countRequest},
      {kAllRed, kPhase, endOfAllRed},
      {kPedestriansGreen, kRequest, serveAtOnce},
      {kPedestriansGreen, kPhase, endOfWalk},
      {kClearance, kPhase, endOfClearance},
      {kVehiclesPrepare, kPhase, enterVehiclesGreen},
      {kNightState, kNight, nightEnds},
      {kAnyState, kPing, answerPing},
  };
  type.saves = {{kVehiclesAmber, kNight},    {kAllRed, kNight},
                {kPedestriansGreen, kNight}, {kClearance, kNight},
                {kVehiclesPrepare, kNight},  {kClearance, kRequest},
                {kVehiclesPrepare, kRequest}};
  return type;
}

ProcessType supervisorType() {
  ProcessType type;
  type.name = kSupervisor;
  type.variables = {{kPings, integerSort(), std::int64_t{0}},
                    {kFaults, integerSort(), std::int64_t{0}}};
  type.timers = {kWatchdog};
  type.states = {kWatching, kChecking};
  type.start = startWatching;
  type.transitions = {
      {kWatching, kWatchdog, askController},
      {kWatching, kFault, noteFault},
      {kChecking, kPong, [](TransitionContext& context) { context.nextState(kWatching); }},
      {kChecking, kWatchdog, noAnswer},
  };
  type.saves = {{kChecking, kFault}};
  return type;
}

}  // namespace tester::crossing
