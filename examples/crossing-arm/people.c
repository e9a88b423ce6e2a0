/* A button creates an instance for each party that comes to the kerb; people who come while a party
 * waits join it. */

#include "crossing.h"

/* Milliseconds. */
enum { REMINDER_TIME = 60000, CROSSING_TIME = 6000 };

/* Of a party; its button assigns it. */
enum { PEOPLE };

enum button_state { IDLE, LIT };
enum button_variable { PARTY, PEOPLE_CROSSED };

static const char *const button_states[] = {"Idle", "Lit"};
static const struct sdl_variable button_variables[] = {
    [PARTY] = {"party", &sdl_pid_sort, SDL_NULL},
    [PEOPLE_CROSSED] = {"peopleCrossed", &sdl_integer, 0},
};

static sdl_pid party_of(const struct sdl_process *self) {
  return (sdl_pid)self->variable[PARTY];
}

static uint8_t button_start(struct sdl_process *self) {
  (void)self;
  return IDLE;
}

static uint8_t request(struct sdl_process *self) {
  sdl_output(self, SDL_PID(CONTROLLER, 1),
             (struct sdl_signal){.type = REQUEST, .parameter = {number_of(self)}});
  sdl_set(self, REMINDER, REMINDER_TIME);
  return LIT;
}

/* Only a light that is lit has a party that can go: the request of one that has just come may
 * still be on its way. */
static uint8_t served(struct sdl_process *self) {
  sdl_reset(self, REMINDER);
  if (party_of(self) != SDL_NULL) {
    sdl_output(self, party_of(self), (struct sdl_signal){.type = CROSS});
  }
  sdl_assign(self, PARTY, SDL_NULL);
  return IDLE;
}

static uint8_t arrive(struct sdl_process *self) {
  if (party_of(self) != SDL_NULL) {
    sdl_output(self, party_of(self),
               (struct sdl_signal){.type = JOIN, .parameter = {self->input.parameter[0]}});
    return self->state;
  }
  sdl_create(self, PEDESTRIAN, PEOPLE, self->input.parameter[0]);
  sdl_assign(self, PARTY, (int32_t)self->offspring);
  return self->state;
}

static uint8_t note_crossed(struct sdl_process *self) {
  sdl_add(self, PEOPLE_CROSSED, self->input.parameter[0]);
  return self->state;
}

static const struct sdl_transition button_transitions[] = {
    {IDLE, PRESS, request},    {LIT, REMINDER, request},         {LIT, SERVED, served},
    {SDL_ANY, ARRIVE, arrive}, {SDL_ANY, CROSSED, note_crossed},
};

const struct sdl_process_type button = {
    .name = "Button",
    .initial = 2,
    .maximum = 2,
    .start = button_start,
    SDL_STATES(button_states),
    SDL_VARIABLES(button_variables),
    SDL_TRANSITIONS(button_transitions),
};

enum pedestrian_state { WAITING, CROSSING };

static const char *const pedestrian_states[] = {"Waiting", "Crossing"};
static const struct sdl_variable pedestrian_variables[] = {[PEOPLE] = {"people", &sdl_integer, 0}};

static uint8_t pedestrian_start(struct sdl_process *self) {
  sdl_output(self, self->parent, (struct sdl_signal){.type = PRESS});
  return WAITING;
}

static uint8_t join(struct sdl_process *self) {
  sdl_add(self, PEOPLE, self->input.parameter[0]);
  return self->state;
}

static uint8_t cross(struct sdl_process *self) {
  sdl_set(self, WALKING, CROSSING_TIME);
  return CROSSING;
}

static uint8_t reach_other_side(struct sdl_process *self) {
  sdl_output(self, self->parent,
             (struct sdl_signal){.type = CROSSED, .parameter = {self->variable[PEOPLE]}});
  return SDL_STOP;
}

static const struct sdl_transition pedestrian_transitions[] = {
    {WAITING, JOIN, join},
    {WAITING, CROSS, cross},
    {CROSSING, WALKING, reach_other_side},
};

const struct sdl_process_type pedestrian = {
    .name = "Pedestrian",
    .initial = 0,
    .maximum = MOST_PARTIES,
    .start = pedestrian_start,
    SDL_STATES(pedestrian_states),
    SDL_VARIABLES(pedestrian_variables),
    SDL_TRANSITIONS(pedestrian_transitions),
};
