// The pedestrian crossing. The controller takes requests at any time but in the two states in which
// it could not honour them; there they are saved. A traffic light shows what the controller tells
// it, and remembers it while its lamp is broken. A button creates an instance for each party that
// comes to the kerb; people who come while a party waits join it.

#include "tester/transition_context.h"

namespace tester {

namespace {

constexpr Time kMinimumGreen = 15 * kSecond;
constexpr Time kFurtherGreen = 30 * kSecond;
constexpr Time kAmberTime = 3 * kSecond;
constexpr Time kAllRedTime = 2 * kSecond;
constexpr Time kWalkTime = 8 * kSecond;
constexpr Time kClearanceTime = 5 * kSecond;
constexpr Time kRedAmberTime = 2 * kSecond;
constexpr Time kWatchdogTime = 10 * kSecond;
constexpr Time kBlinkTime = kSecond / 2;
constexpr Time kReminderTime = 60 * kSecond;
constexpr Time kCrossingTime = 6 * kSecond;
constexpr std::int64_t kBlinksBeforeRed = 6;
constexpr int kMostParties = 20;

Sort aspectSort() {
  return {"Aspect", {"Red", "RedAmber", "Green", "Amber", "Dark"}};
}

Sort alarmSort() {
  return {"AlarmCause", {"NoSignOfLife", "LampBroken"}};
}

// The controller.

void enterPhase(TransitionContext& context, const char* aspect, const char* state, Time duration) {
  context.outputToAll("SetAspect", "TrafficLight", {aspect});
  context.set("Phase", duration);
  context.nextState(state);
}

void enterVehiclesGreen(TransitionContext& context) {
  context.assign("minimumOver", "false");
  enterPhase(context, "Green", "VehiclesGreen", kMinimumGreen);
}

void enterVehiclesAmber(TransitionContext& context) {
  enterPhase(context, "Amber", "VehiclesAmber", kAmberTime);
}

void countRequest(TransitionContext& context) {
  context.add("requests", "1");
}

void requestInGreen(TransitionContext& context) {
  countRequest(context);
  if (context.isTrue("minimumOver")) {
    enterVehiclesAmber(context);
  }
}

void endOfGreen(TransitionContext& context) {
  if (context.isTrue("minimumOver") || context.integer("requests") > 0) {
    enterVehiclesAmber(context);
    return;
  }
  context.assign("minimumOver", "true");
  context.set("Phase", kFurtherGreen);
}

void endOfAllRed(TransitionContext& context) {
  context.outputToAll("Walk", "PedestrianLight");
  context.outputToAll("Served", "Button");
  context.assign("requests", "0");
  context.add("cycles", "1");
  context.set("Phase", kWalkTime);
  context.nextState("PedestriansGreen");
}

void endOfWalk(TransitionContext& context) {
  context.outputToAll("DontWalk", "PedestrianLight");
  context.set("Phase", kClearanceTime);
  context.nextState("Clearance");
}

ProcessType controllerType() {
  ProcessType type;
  type.name = "Controller";
  type.variables = {{"requests", integerSort(), "0"},
                    {"cycles", integerSort(), "0"},
                    {"minimumOver", booleanSort(), "false"}};
  type.timers = {"Phase"};
  type.states = {"VehiclesGreen",    "VehiclesAmber", "AllRed",
                 "PedestriansGreen", "Clearance",     "VehiclesPrepare"};
  type.start = enterVehiclesGreen;
  type.transitions = {
      {"VehiclesGreen", "Request", requestInGreen},
      {"VehiclesGreen", "Phase", endOfGreen},
      {"VehiclesAmber", "Request", countRequest},
      {"VehiclesAmber", "Phase",
       [](TransitionContext& context) { enterPhase(context, "Red", "AllRed", kAllRedTime); }},
      {"AllRed", "Request", countRequest},
      {"AllRed", "Phase", endOfAllRed},
      {"PedestriansGreen", "Request",
       [](TransitionContext& context) { context.output("Served", context.sender()); }},
      {"PedestriansGreen", "Phase", endOfWalk},
      {"Clearance", "Phase",
       [](TransitionContext& context) {
         enterPhase(context, "RedAmber", "VehiclesPrepare", kRedAmberTime);
       }},
      {"VehiclesPrepare", "Phase", enterVehiclesGreen},
      {kAnyState, "Ping",
       [](TransitionContext& context) {
         context.output("Pong", context.sender(), {context.parameter(0)});
       }},
  };
  type.saves = {{"Clearance", "Request"}, {"VehiclesPrepare", "Request"}};
  return type;
}

// The supervisor.

void startWatching(TransitionContext& context) {
  context.set("Watchdog", kWatchdogTime);
  context.nextState("Watching");
}

void askController(TransitionContext& context) {
  context.add("pings", "1");
  context.output("Ping", {"Controller", 1}, {context.variable("pings")});
  context.set("Watchdog", kWatchdogTime);
  context.nextState("Checking");
}

void noAnswer(TransitionContext& context) {
  context.outputToEnvironment("Alarm", {"NoSignOfLife"});
  startWatching(context);
}

void noteFault(TransitionContext& context) {
  context.add("faults", "1");
  context.outputToEnvironment("Alarm", {"LampBroken"});
}

ProcessType supervisorType() {
  ProcessType type;
  type.name = "Supervisor";
  type.variables = {{"pings", integerSort(), "0"}, {"faults", integerSort(), "0"}};
  type.timers = {"Watchdog"};
  type.states = {"Watching", "Checking"};
  type.start = startWatching;
  type.transitions = {
      {"Watching", "Watchdog", askController},
      {"Watching", "Fault", noteFault},
      {"Checking", "Pong", [](TransitionContext& context) { context.nextState("Watching"); }},
      {"Checking", "Watchdog", noAnswer},
  };
  type.saves = {{"Checking", "Fault"}};
  return type;
}

// The lights.

/// Switches the lamps to `aspect`, which is also the name of the state.
void show(TransitionContext& context, const std::string& aspect) {
  context.assign("aspect", aspect);
  context.outputToEnvironment("Lamp", {context.number(), aspect});
  context.nextState(aspect);
}

void breakDown(TransitionContext& context) {
  context.output("Fault", {"Supervisor", 1}, {context.number()});
  context.nextState("Broken");
}

ProcessType trafficLightType() {
  ProcessType type;
  type.name = "TrafficLight";
  type.initialInstances = type.maximumInstances = 2;
  type.variables = {{"aspect", aspectSort(), "Dark"}};
  type.states = aspectSort().literals;
  type.states.emplace_back("Broken");
  type.start = [](TransitionContext& context) { show(context, "Dark"); };
  type.transitions = {
      {kAnyState, "SetAspect",
       [](TransitionContext& context) { show(context, context.parameter(0)); }},
      {kAnyState, "Fail", breakDown},
      {"Broken", "Fail", [](TransitionContext&) {}},
      {"Broken", "SetAspect",
       [](TransitionContext& context) { context.assign("aspect", context.parameter(0)); }},
      {"Broken", "Repair",
       [](TransitionContext& context) { show(context, context.variable("aspect")); }},
  };
  return type;
}

void blink(TransitionContext& context) {
  context.add("blinks", "1");
  if (context.integer("blinks") < kBlinksBeforeRed) {
    context.set("Blink", kBlinkTime);
  } else {
    context.nextState("RedMan");
  }
}

ProcessType pedestrianLightType() {
  ProcessType type;
  type.name = "PedestrianLight";
  type.initialInstances = type.maximumInstances = 2;
  type.variables = {{"blinks", integerSort(), "0"}};
  type.timers = {"Blink"};
  type.states = {"RedMan", "GreenMan", "Blinking"};
  type.start = [](TransitionContext& context) { context.nextState("RedMan"); };
  type.transitions = {
      {kAnyState, "Walk",
       [](TransitionContext& context) {
         context.reset("Blink");
         context.nextState("GreenMan");
       }},
      {"GreenMan", "DontWalk",
       [](TransitionContext& context) {
         context.assign("blinks", "0");
         context.set("Blink", kBlinkTime);
         context.nextState("Blinking");
       }},
      {"Blinking", "Blink", blink},
  };
  return type;
}

// The buttons and the people.

void request(TransitionContext& context) {
  context.output("Request", {"Controller", 1}, {context.number()});
  context.set("Reminder", kReminderTime);
  context.nextState("Lit");
}

/// Only a light that is lit has a party that can go: the request of one that has just come may
/// still be on its way.
void served(TransitionContext& context) {
  context.reset("Reminder");
  const auto party = parseInstance(context.variable("party"));
  if (party && !party->isNull()) {
    context.output("Cross", *party);
  }
  context.assign("party", formatInstance({}));
  context.nextState("Idle");
}

void arrive(TransitionContext& context) {
  const auto party = parseInstance(context.variable("party"));
  if (party && !party->isNull()) {
    context.output("Join", *party, {context.parameter(0)});
    return;
  }
  context.create("Pedestrian", "people", context.parameter(0));
  context.assign("party", formatInstance(context.offspring()));
}

ProcessType buttonType() {
  ProcessType type;
  type.name = "Button";
  type.initialInstances = type.maximumInstances = 2;
  type.variables = {{"party", pidSort(), formatInstance({})},
                    {"peopleCrossed", integerSort(), "0"}};
  type.timers = {"Reminder"};
  type.states = {"Idle", "Lit"};
  type.start = [](TransitionContext& context) { context.nextState("Idle"); };
  type.transitions = {
      {"Idle", "Press", request},
      {"Lit", "Reminder", request},
      {"Lit", "Served", served},
      {kAnyState, "Arrive", arrive},
      {kAnyState, "Crossed",
       [](TransitionContext& context) { context.add("peopleCrossed", context.parameter(0)); }},
  };
  return type;
}

ProcessType pedestrianType() {
  ProcessType type;
  type.name = "Pedestrian";
  type.initialInstances = 0;
  type.maximumInstances = kMostParties;
  type.variables = {{"people", integerSort(), "0"}};
  type.timers = {"Walking"};
  type.states = {"Waiting", "Crossing"};
  type.start = [](TransitionContext& context) {
    context.output("Press", context.parent());
    context.nextState("Waiting");
  };
  type.transitions = {
      {"Waiting", "Join",
       [](TransitionContext& context) { context.add("people", context.parameter(0)); }},
      {"Waiting", "Cross",
       [](TransitionContext& context) {
         context.set("Walking", kCrossingTime);
         context.nextState("Crossing");
       }},
      {"Crossing", "Walking",
       [](TransitionContext& context) {
         context.output("Crossed", context.parent(), {context.variable("people")});
         context.stop();
       }},
  };
  return type;
}

}  // namespace

SystemModel crossingModel() {
  return {"Pedestrian Crossing",
          "A signal-controlled pedestrian crossing: press a button with \"send Press Button:1\",\n"
          "let a party come with \"send Arrive Button:1 3\", then \"go\" or \"next-transition\".",
          {{"Press"},
           {"Arrive", {integerSort()}},
           {"Fail"},
           {"Repair"},
           {"Lamp", {integerSort(), aspectSort()}},
           {"Alarm", {alarmSort()}},
           {"Request", {integerSort()}},
           {"Served"},
           {"SetAspect", {aspectSort()}},
           {"Walk"},
           {"DontWalk"},
           {"Join", {integerSort()}},
           {"Cross"},
           {"Crossed", {integerSort()}},
           {"Ping", {integerSort()}},
           {"Pong", {integerSort()}},
           {"Fault", {integerSort()}}},
          {supervisorType(), controllerType(), trafficLightType(), pedestrianLightType(),
           buttonType(), pedestrianType()}};
}

}  // namespace tester
