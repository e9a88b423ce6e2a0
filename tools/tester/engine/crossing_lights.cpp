// The lights of the crossing: a traffic light shows what the controller tells it, and remembers it
// while its lamp is broken; a pedestrian light blinks before it goes back to red.

#include "tester/engine/crossing_parts.h"
#include "tester/engine/transition_context.h"

namespace tester::crossing {

namespace {

constexpr char kBlink[] = "Blink";
constexpr char kBroken[] = "Broken";
constexpr char kRedMan[] = "RedMan";
constexpr char kGreenMan[] = "GreenMan";
constexpr char kBlinking[] = "Blinking";

constexpr char kAspect[] = "aspect";
constexpr char kLit[] = "lit";
constexpr char kBlinks[] = "blinks";

constexpr Time kBlinkTime = kSecond / 2;
constexpr std::int64_t kBlinksBeforeRed = 6;

/// Switches the lamps to `aspect`, which is also the name of the state.
void show(TransitionContext& context, const std::string& aspect) {
  context.assign(kAspect, Literal{aspect});
  context.outputToEnvironment(kLamp, {std::int64_t{context.self().number}, Literal{aspect}});
  if (aspect == kFlashing) {
    context.set(kBlink, kBlinkTime);
  } else {
    context.reset(kBlink);
  }
  context.nextState(aspect);
}

void startLight(TransitionContext& context) {
  show(context, kDark);
}

void setAspect(TransitionContext& context) {
  show(context, context.literal(0));
}

void flash(TransitionContext& context) {
  const bool lit = !context.booleanVariable(kLit);
  context.assign(kLit, lit);
  context.outputToEnvironment(kLamp,
                              {std::int64_t{context.self().number}, Literal{lit ? kAmber : kDark}});
  context.set(kBlink, kBlinkTime);
}

void breakDown(TransitionContext& context) {
  context.reset(kBlink);
  context.output(kFault, {kSupervisor, 1}, {std::int64_t{context.self().number}});
  context.nextState(kBroken);
}

void rememberAspect(TransitionContext& context) {
  context.assign(kAspect, Literal{context.literal(0)});
}

void stayBroken(TransitionContext&) {}

void repair(TransitionContext& context) {
  show(context, context.literalVariable(kAspect));
}

void showGreenMan(TransitionContext& context) {
  context.reset(kBlink);
  context.nextState(kGreenMan);
}

void beginBlinking(TransitionContext& context) {
  context.assign(kBlinks, std::int64_t{0});
  context.set(kBlink, kBlinkTime);
  context.nextState(kBlinking);
}

void blink(TransitionContext& context) {
  context.add(kBlinks, 1);
  if (context.integerVariable(kBlinks) < kBlinksBeforeRed) {
    context.set(kBlink, kBlinkTime);
  } else {
    context.nextState(kRedMan);
  }
}

}  // namespace

ProcessType trafficLightType() {
  ProcessType type;
  type.name = kTrafficLight;
  type.initialInstances = 2;
  type.maximumInstances = 2;
  type.variables = {{kAspect, aspectSort(), Literal{kDark}}, {kLit, booleanSort(), false}};
  type.timers = {kBlink};
  type.states = {kRed, kRedAmber, kGreen, kAmber, kFlashing, kDark, kBroken};
  type.start = startLight;
  type.transitions = {
      {kAnyState, kSetAspect, setAspect},    {kFlashing, kBlink, flash},
      {kAnyState, kFail, breakDown},         {kBroken, kFail, stayBroken},
      {kBroken, kSetAspect, rememberAspect}, {kBroken, kRepair, repair},
  };
  return type;
}

ProcessType pedestrianLightType() {
  ProcessType type;
  type.name = kPedestrianLight;
  type.initialInstances = 2;
  type.maximumInstances = 2;
  type.variables = {{kBlinks, integerSort(), std::int64_t{0}}};
  type.timers = {kBlink};
  type.states = {kRedMan, kGreenMan, kBlinking};
  type.start = [](TransitionContext& context) { context.nextState(kRedMan); };
  type.transitions = {
      {kAnyState, kWalk, showGreenMan},
      {kGreenMan, kDontWalk, beginBlinking},
      {kBlinking, kBlink, blink},
  };
  return type;
}

}  // namespace tester::crossing
