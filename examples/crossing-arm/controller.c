/* The controller takes requests at any time but in the two states in which it could not honour
 * them; there they are saved. */

#include "crossing.h"

/* Milliseconds. */
enum {
  MINIMUM_GREEN = 15000,
  FURTHER_GREEN = 30000,
  AMBER_TIME = 3000,
  ALL_RED_TIME = 2000,
  WALK_TIME = 8000,
  CLEARANCE_TIME = 5000,
  RED_AMBER_TIME = 2000
};

enum controller_state {
  VEHICLES_GREEN,
  VEHICLES_AMBER,
  ALL_RED,
  PEDESTRIANS_GREEN,
  CLEARANCE,
  VEHICLES_PREPARE
};
enum controller_variable { REQUESTS, CYCLES, MINIMUM_OVER };

static const char *const controller_states[] = {
    "VehiclesGreen", "VehiclesAmber", "AllRed", "PedestriansGreen", "Clearance", "VehiclesPrepare"};
static const struct sdl_variable controller_variables[] = {
    [REQUESTS] = {"requests", &sdl_integer, 0},
    [CYCLES] = {"cycles", &sdl_integer, 0},
    [MINIMUM_OVER] = {"minimumOver", &sdl_boolean, false},
};

static uint8_t enter_phase(struct sdl_process *self, enum aspect aspect, uint8_t state,
                           uint32_t duration) {
  sdl_output_to_all(self, TRAFFIC_LIGHT,
                    (struct sdl_signal){.type = SET_ASPECT, .parameter = {(int32_t)aspect}});
  sdl_set(self, PHASE, duration);
  return state;
}

static uint8_t enter_vehicles_green(struct sdl_process *self) {
  sdl_assign(self, MINIMUM_OVER, false);
  return enter_phase(self, GREEN, VEHICLES_GREEN, MINIMUM_GREEN);
}

static uint8_t enter_vehicles_amber(struct sdl_process *self) {
  return enter_phase(self, AMBER, VEHICLES_AMBER, AMBER_TIME);
}

static uint8_t count_request(struct sdl_process *self) {
  sdl_add(self, REQUESTS, 1);
  return self->state;
}

static uint8_t request_in_green(struct sdl_process *self) {
  count_request(self);
  return self->variable[MINIMUM_OVER] ? enter_vehicles_amber(self) : self->state;
}

static uint8_t end_of_green(struct sdl_process *self) {
  if (self->variable[MINIMUM_OVER] || self->variable[REQUESTS] > 0) {
    return enter_vehicles_amber(self);
  }
  sdl_assign(self, MINIMUM_OVER, true);
  sdl_set(self, PHASE, FURTHER_GREEN);
  return self->state;
}

static uint8_t end_of_amber(struct sdl_process *self) {
  return enter_phase(self, RED, ALL_RED, ALL_RED_TIME);
}

static uint8_t end_of_all_red(struct sdl_process *self) {
  sdl_output_to_all(self, PEDESTRIAN_LIGHT, (struct sdl_signal){.type = WALK});
  sdl_output_to_all(self, BUTTON, (struct sdl_signal){.type = SERVED});
  sdl_assign(self, REQUESTS, 0);
  sdl_add(self, CYCLES, 1);
  sdl_set(self, PHASE, WALK_TIME);
  return PEDESTRIANS_GREEN;
}

static uint8_t serve_at_once(struct sdl_process *self) {
  sdl_output(self, self->input.sender, (struct sdl_signal){.type = SERVED});
  return self->state;
}

static uint8_t end_of_walk(struct sdl_process *self) {
  sdl_output_to_all(self, PEDESTRIAN_LIGHT, (struct sdl_signal){.type = DONT_WALK});
  sdl_set(self, PHASE, CLEARANCE_TIME);
  return CLEARANCE;
}

static uint8_t end_of_clearance(struct sdl_process *self) {
  return enter_phase(self, RED_AMBER, VEHICLES_PREPARE, RED_AMBER_TIME);
}

static uint8_t answer_ping(struct sdl_process *self) {
  sdl_output(self, self->input.sender,
             (struct sdl_signal){.type = PONG, .parameter = {self->input.parameter[0]}});
  return self->state;
}

static const struct sdl_transition controller_transitions[] = {
    {VEHICLES_GREEN, REQUEST, request_in_green},
    {VEHICLES_GREEN, PHASE, end_of_green},
    {VEHICLES_AMBER, REQUEST, count_request},
    {VEHICLES_AMBER, PHASE, end_of_amber},
    {ALL_RED, REQUEST, count_request},
    {ALL_RED, PHASE, end_of_all_red},
    {PEDESTRIANS_GREEN, REQUEST, serve_at_once},
    {PEDESTRIANS_GREEN, PHASE, end_of_walk},
    {CLEARANCE, PHASE, end_of_clearance},
    {CLEARANCE, REQUEST, SDL_SAVE},
    {VEHICLES_PREPARE, PHASE, enter_vehicles_green},
    {VEHICLES_PREPARE, REQUEST, SDL_SAVE},
    {SDL_ANY, PING, answer_ping},
};

const struct sdl_process_type controller = {
    .name = "Controller",
    .initial = 1,
    .maximum = 1,
    .start = enter_vehicles_green,
    SDL_STATES(controller_states),
    SDL_VARIABLES(controller_variables),
    SDL_TRANSITIONS(controller_transitions),
};
