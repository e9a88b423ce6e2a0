#pragma once

#include "tester/engine/system_model.h"

/// The pieces of the crossing's definition and the names that they share.
namespace tester::crossing {

// Processes.
inline constexpr char kController[] = "Controller";
inline constexpr char kSupervisor[] = "Supervisor";
inline constexpr char kTrafficLight[] = "TrafficLight";
inline constexpr char kPedestrianLight[] = "PedestrianLight";
inline constexpr char kButton[] = "Button";
inline constexpr char kPedestrian[] = "Pedestrian";

// Signals from the environment.
inline constexpr char kPress[] = "Press";    ///< to a button
inline constexpr char kArrive[] = "Arrive";  ///< people, to a button: a party comes to the kerb
inline constexpr char kNight[] = "Night";    ///< on or off, to the controller
inline constexpr char kFail[] = "Fail";      ///< to a traffic light: its lamp breaks
inline constexpr char kRepair[] = "Repair";  ///< to a traffic light

// Signals to the environment.
inline constexpr char kLamp[] = "Lamp";    ///< light, aspect
inline constexpr char kAlarm[] = "Alarm";  ///< text

// Signals within.
inline constexpr char kRequest[] = "Request";      ///< button: wants a green phase
inline constexpr char kServed[] = "Served";        ///< to the buttons: pedestrians have green
inline constexpr char kSetAspect[] = "SetAspect";  ///< aspect, to the traffic lights
inline constexpr char kWalk[] = "Walk";            ///< to the pedestrian lights
inline constexpr char kDontWalk[] = "DontWalk";    ///< to the pedestrian lights
inline constexpr char kJoin[] = "Join";            ///< people, to a waiting party
inline constexpr char kCross[] = "Cross";          ///< to a waiting party
inline constexpr char kCrossed[] = "Crossed";      ///< people, to the button
inline constexpr char kPing[] = "Ping";            ///< count, to the controller
inline constexpr char kPong[] = "Pong";            ///< count, to the supervisor
inline constexpr char kFault[] = "Fault";          ///< light, to the supervisor

// Aspects of a traffic light.
inline constexpr char kRed[] = "Red";
inline constexpr char kRedAmber[] = "RedAmber";
inline constexpr char kGreen[] = "Green";
inline constexpr char kAmber[] = "Amber";
inline constexpr char kFlashing[] = "Flashing";
inline constexpr char kDark[] = "Dark";

Sort aspectSort();

ProcessType controllerType();
ProcessType supervisorType();
ProcessType trafficLightType();
ProcessType pedestrianLightType();
ProcessType buttonType();
ProcessType pedestrianType();

}  // namespace tester::crossing
