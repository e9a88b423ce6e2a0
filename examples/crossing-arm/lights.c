/* A traffic light shows what the controller tells it, and remembers it while its lamp is broken. A
 * pedestrian light blinks before it turns red. */

#include "crossing.h"

enum { BLINK_TIME = 500 }; /* milliseconds */
enum { BLINKS_BEFORE_RED = 6 };

static const char *const light_states[] = {"Red", "RedAmber", "Green", "Amber", "Dark", "Broken"};
const struct sdl_sort aspect_sort = {"Aspect", light_states, BROKEN};

enum light_variable { ASPECT };

static const struct sdl_variable light_variables[] = {[ASPECT] = {"aspect", &aspect_sort, DARK}};

static uint8_t show(struct sdl_process *self, int32_t aspect) {
  sdl_assign(self, ASPECT, aspect);
  sdl_output_to_environment(
      self, (struct sdl_signal){.type = LAMP, .parameter = {number_of(self), aspect}});
  return (uint8_t)aspect;
}

static uint8_t light_start(struct sdl_process *self) {
  return show(self, DARK);
}

static uint8_t set_aspect(struct sdl_process *self) {
  return show(self, self->input.parameter[0]);
}

static uint8_t break_down(struct sdl_process *self) {
  sdl_output(self, SDL_PID(SUPERVISOR, 1),
             (struct sdl_signal){.type = FAULT, .parameter = {number_of(self)}});
  return BROKEN;
}

static uint8_t stay_broken(struct sdl_process *self) {
  return self->state;
}

static uint8_t remember_aspect(struct sdl_process *self) {
  sdl_assign(self, ASPECT, self->input.parameter[0]);
  return self->state;
}

static uint8_t repair(struct sdl_process *self) {
  return show(self, self->variable[ASPECT]);
}

static const struct sdl_transition light_transitions[] = {
    {SDL_ANY, SET_ASPECT, set_aspect},     {SDL_ANY, FAIL, break_down}, {BROKEN, FAIL, stay_broken},
    {BROKEN, SET_ASPECT, remember_aspect}, {BROKEN, REPAIR, repair},
};

const struct sdl_process_type traffic_light = {
    .name = "TrafficLight",
    .initial = 2,
    .maximum = 2,
    .start = light_start,
    SDL_STATES(light_states),
    SDL_VARIABLES(light_variables),
    SDL_TRANSITIONS(light_transitions),
};

enum man_state { RED_MAN, GREEN_MAN, BLINKING };
enum man_variable { BLINKS };

static const char *const man_states[] = {"RedMan", "GreenMan", "Blinking"};
static const struct sdl_variable man_variables[] = {[BLINKS] = {"blinks", &sdl_integer, 0}};

static uint8_t man_start(struct sdl_process *self) {
  (void)self;
  return RED_MAN;
}

static uint8_t walk(struct sdl_process *self) {
  sdl_reset(self, BLINK);
  return GREEN_MAN;
}

static uint8_t dont_walk(struct sdl_process *self) {
  sdl_assign(self, BLINKS, 0);
  sdl_set(self, BLINK, BLINK_TIME);
  return BLINKING;
}

static uint8_t blink(struct sdl_process *self) {
  sdl_add(self, BLINKS, 1);
  if (self->variable[BLINKS] >= BLINKS_BEFORE_RED) {
    return RED_MAN;
  }
  sdl_set(self, BLINK, BLINK_TIME);
  return self->state;
}

static const struct sdl_transition man_transitions[] = {
    {SDL_ANY, WALK, walk},
    {GREEN_MAN, DONT_WALK, dont_walk},
    {BLINKING, BLINK, blink},
};

const struct sdl_process_type pedestrian_light = {
    .name = "PedestrianLight",
    .initial = 2,
    .maximum = 2,
    .start = man_start,
    SDL_STATES(man_states),
    SDL_VARIABLES(man_variables),
    SDL_TRANSITIONS(man_transitions),
};
