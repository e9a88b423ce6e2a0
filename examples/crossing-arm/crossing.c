/* A signal-controlled pedestrian crossing: a controller runs the phases of two traffic lights and
 * two pedestrian lights and answers the requests of two buttons; parties of pedestrians, whom the
 * environment announces at a button, are instances of their own that come and go; a supervisor
 * watches. */

#include "crossing.h"

#include "board.h"

static const char *const alarm_causes[] = {"NoSignOfLife", "LampBroken"};
static const struct sdl_sort alarm_sort = {"AlarmCause", alarm_causes, SDL_COUNT(alarm_causes)};

static const struct sdl_signal_type signals[] = {
    [PRESS] = {.name = "Press"},
    [ARRIVE] = {.name = "Arrive", .parameter = {&sdl_integer}},
    [FAIL] = {.name = "Fail"},
    [REPAIR] = {.name = "Repair"},
    [LAMP] = {.name = "Lamp", .parameter = {&sdl_integer, &aspect_sort}},
    [ALARM] = {.name = "Alarm", .parameter = {&alarm_sort}},
    [REQUEST] = {.name = "Request", .parameter = {&sdl_integer}},
    [SERVED] = {.name = "Served"},
    [SET_ASPECT] = {.name = "SetAspect", .parameter = {&aspect_sort}},
    [WALK] = {.name = "Walk"},
    [DONT_WALK] = {.name = "DontWalk"},
    [JOIN] = {.name = "Join", .parameter = {&sdl_integer}},
    [CROSS] = {.name = "Cross"},
    [CROSSED] = {.name = "Crossed", .parameter = {&sdl_integer}},
    [PING] = {.name = "Ping", .parameter = {&sdl_integer}},
    [PONG] = {.name = "Pong", .parameter = {&sdl_integer}},
    [FAULT] = {.name = "Fault", .parameter = {&sdl_integer}},
    [WATCHDOG] = {.name = "Watchdog", .is_timer = true},
    [PHASE] = {.name = "Phase", .is_timer = true},
    [BLINK] = {.name = "Blink", .is_timer = true},
    [REMINDER] = {.name = "Reminder", .is_timer = true},
    [WALKING] = {.name = "Walking", .is_timer = true},
};

static const struct sdl_process_type *const processes[] = {
    [SUPERVISOR] = &supervisor,
    [CONTROLLER] = &controller,
    [TRAFFIC_LIGHT] = &traffic_light,
    [PEDESTRIAN_LIGHT] = &pedestrian_light,
    [BUTTON] = &button,
    [PEDESTRIAN] = &pedestrian,
};
_Static_assert(1 + 1 + 2 + 2 + 2 + MOST_PARTIES <= SDL_MAX_INSTANCES, "not enough places");

/* The board's lamps tell which traffic lights are green. */
static void to_environment(const struct sdl_signal *signal) {
  if (signal->type == LAMP) {
    board_switch_lamp((unsigned)signal->parameter[0] - 1, signal->parameter[1] == GREEN);
  }
}

const struct sdl_system sdl_system = {
    .name = "Pedestrian Crossing",
    .signals = signals,
    .processes = processes,
    .signal_count = SDL_COUNT(signals),
    .process_count = SDL_COUNT(processes),
    .to_environment = to_environment,
};

int main(void) {
  sdl_run();
}
