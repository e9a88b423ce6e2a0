#include "tester/engine/crossing_model.h"

#include "tester/engine/crossing_parts.h"

namespace tester {

namespace crossing {

Sort aspectSort() {
  return {"Aspect", SortKind::kLiteral, {kRed, kRedAmber, kGreen, kAmber, kFlashing, kDark}};
}

}  // namespace crossing

SystemModel crossingModel() {
  using namespace crossing;
  SystemModel model;
  model.name = "Pedestrian Crossing";
  model.description =
      "A signal-controlled pedestrian crossing: press a button with \"send Press Button:1\",\n"
      "let a party come with \"send Arrive Button:1 3\", then \"go\" or \"next-transition\".";
  model.signalTypes = {
      {kPress},
      {kArrive, {integerSort()}},
      {kNight, {booleanSort()}},
      {kFail},
      {kRepair},
      {kLamp, {integerSort(), aspectSort()}},
      {kAlarm, {charstringSort()}},
      {kRequest, {integerSort()}},
      {kServed},
      {kSetAspect, {aspectSort()}},
      {kWalk},
      {kDontWalk},
      {kJoin, {integerSort()}},
      {kCross},
      {kCrossed, {integerSort()}},
      {kPing, {integerSort()}},
      {kPong, {integerSort()}},
      {kFault, {integerSort()}},
  };
  model.processes = {supervisorType(),      controllerType(), trafficLightType(),
                     pedestrianLightType(), buttonType(),     pedestrianType()};
  return model;
}

}  // namespace tester
