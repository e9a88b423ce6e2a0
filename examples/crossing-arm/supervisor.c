/* The supervisor asks the controller for a sign of life and counts the faults of the lamps. */

#include "crossing.h"

enum { WATCHDOG_TIME = 10000 }; /* milliseconds */

enum supervisor_state { WATCHING, CHECKING };
enum supervisor_variable { PINGS, FAULTS };

static const char *const supervisor_states[] = {"Watching", "Checking"};
static const struct sdl_variable supervisor_variables[] = {
    [PINGS] = {"pings", &sdl_integer, 0},
    [FAULTS] = {"faults", &sdl_integer, 0},
};

static void raise_alarm(struct sdl_process *self, enum alarm cause) {
  sdl_output_to_environment(self,
                            (struct sdl_signal){.type = ALARM, .parameter = {(int32_t)cause}});
}

static uint8_t start_watching(struct sdl_process *self) {
  sdl_set(self, WATCHDOG, WATCHDOG_TIME);
  return WATCHING;
}

static uint8_t ask_controller(struct sdl_process *self) {
  sdl_add(self, PINGS, 1);
  sdl_output(self, SDL_PID(CONTROLLER, 1),
             (struct sdl_signal){.type = PING, .parameter = {self->variable[PINGS]}});
  sdl_set(self, WATCHDOG, WATCHDOG_TIME);
  return CHECKING;
}

static uint8_t note_answer(struct sdl_process *self) {
  (void)self;
  return WATCHING;
}

static uint8_t no_answer(struct sdl_process *self) {
  raise_alarm(self, NO_SIGN_OF_LIFE);
  return start_watching(self);
}

static uint8_t note_fault(struct sdl_process *self) {
  sdl_add(self, FAULTS, 1);
  raise_alarm(self, LAMP_BROKEN);
  return self->state;
}

static const struct sdl_transition supervisor_transitions[] = {
    {WATCHING, WATCHDOG, ask_controller}, {WATCHING, FAULT, note_fault},
    {CHECKING, PONG, note_answer},        {CHECKING, WATCHDOG, no_answer},
    {CHECKING, FAULT, SDL_SAVE},
};

const struct sdl_process_type supervisor = {
    .name = "Supervisor",
    .initial = 1,
    .maximum = 1,
    .start = start_watching,
    SDL_STATES(supervisor_states),
    SDL_VARIABLES(supervisor_variables),
    SDL_TRANSITIONS(supervisor_transitions),
};
