#pragma once

/* What the processes of the pedestrian crossing know of each other: names and signals. */

#include "kernel.h"

enum process_name { SUPERVISOR, CONTROLLER, TRAFFIC_LIGHT, PEDESTRIAN_LIGHT, BUTTON, PEDESTRIAN };

enum signal_name {
  PRESS,
  ARRIVE,
  FAIL,
  REPAIR,
  LAMP,
  ALARM,
  REQUEST,
  SERVED,
  SET_ASPECT,
  WALK,
  DONT_WALK,
  JOIN,
  CROSS,
  CROSSED,
  PING,
  PONG,
  FAULT,
  /* Timers. */
  WATCHDOG,
  PHASE,
  BLINK,
  REMINDER,
  WALKING
};

/* The states of a traffic light are its aspects, and BROKEN. */
enum aspect { RED, RED_AMBER, GREEN, AMBER, DARK, BROKEN };
enum alarm { NO_SIGN_OF_LIFE, LAMP_BROKEN };

extern const struct sdl_sort aspect_sort; /* of Aspect, without BROKEN */

enum { MOST_PARTIES = 20 };

extern const struct sdl_process_type supervisor, controller, traffic_light, pedestrian_light,
    button, pedestrian;

/* An instance's own number, which it is known by in signals. */
static inline int32_t number_of(const struct sdl_process *self) {
  return (int32_t)SDL_NUMBER_OF(self->id);
}
