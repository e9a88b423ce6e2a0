#pragma once

#include "tester/engine/system_model.h"

namespace tester {

/// A pedestrian crossing with traffic lights. A controller runs the phases of two traffic lights
/// and two pedestrian lights and answers the requests of two buttons; parties of pedestrians, whom
/// the environment announces at a button, are instances of their own that come and go; a
/// supervisor asks the controller for a sign of life and counts the faults of the lamps. The
/// phases and the watchdog go round for ever, so the system never runs out of transitions.
SystemModel crossingModel();

}  // namespace tester
