/* The loop of the kernel and the services for transitions. Invariants: an instance stands in the
 * ready queue, once, when it has a transition to make and none of its runs; timers are sorted by
 * expiry; a place in sdl_processes is free when its id is SDL_NULL. */

#include "kernel.h"

#include <stddef.h>

#include "board.h"
#include "kernel_debug.h"
#include "kernel_parts.h"

static const char *const boolean_literals[] = {"false", "true"};
const struct sdl_sort sdl_integer = {"Integer", NULL, 0};
const struct sdl_sort sdl_boolean = {"Boolean", boolean_literals, 2};
const struct sdl_sort sdl_pid_sort = {"PId", NULL, 0};

struct sdl_process sdl_processes[SDL_MAX_INSTANCES];
struct sdl_process *sdl_first_ready;
struct sdl_timer sdl_timers[SDL_MAX_TIMERS];
uint8_t sdl_timer_count;
sdl_time sdl_now;
uint32_t sdl_transitions;
bool sdl_has_started;
volatile bool sdl_simulates_time = SDL_SIMULATED_TIME;
volatile struct sdl_mail sdl_mail;

static uint32_t last_ticks;
static uint32_t last_number[UINT8_MAX]; /* of an instance, by type */

/* Instances and their readiness. */

static struct sdl_process *find(sdl_pid id) {
  for (size_t i = 0; i < SDL_MAX_INSTANCES && id != SDL_NULL; ++i) {
    if (sdl_processes[i].id == id) {
      return &sdl_processes[i];
    }
  }
  return NULL;
}

static const struct sdl_transition *find_transition(const struct sdl_process *process,
                                                    uint8_t input) {
  const struct sdl_transition *general = NULL;
  const struct sdl_transition *row = process->type->transitions;
  for (unsigned i = 0; i < process->type->transition_count; ++i, ++row) {
    if (row->input == input && row->state == process->state) {
      return row;
    }
    if (row->input == input && row->state == SDL_ANY) {
      general = row;
    }
  }
  return general;
}

/* Index of the first signal that the state does not save; `queued` when there is none. */
static uint8_t first_input(const struct sdl_process *process) {
  uint8_t i = 0;
  for (; i < process->queued; ++i) {
    const struct sdl_transition *row = find_transition(process, process->queue[i].type);
    if (row == NULL || row->body != SDL_SAVE) {
      break;
    }
  }
  return i;
}

uint8_t sdl_next_input(const struct sdl_process *process) {
  return process->state == SDL_START ? SDL_NO_SIGNAL : process->queue[first_input(process)].type;
}

/* Puts the instance into the ready queue or takes it out, as its queue and state demand. */
static void update_ready(struct sdl_process *process) {
  const bool should_be = process->id != SDL_NULL && !process->is_firing &&
                         (process->state == SDL_START || first_input(process) < process->queued);
  if (should_be == process->is_ready) {
    return;
  }
  process->is_ready = should_be;
  struct sdl_process **link = &sdl_first_ready;
  while (*link != NULL && *link != process) {
    link = &(*link)->next_ready;
  }
  if (should_be) {
    process->next_ready = NULL;
    *link = process;
  } else {
    *link = process->next_ready;
  }
}

/* Null when there is no room for one more. */
static struct sdl_process *create(uint8_t type_index, sdl_pid parent) {
  const struct sdl_process_type *type = sdl_system.processes[type_index];
  struct sdl_process *place = NULL;
  uint32_t living = 0;
  for (size_t i = 0; i < SDL_MAX_INSTANCES; ++i) {
    struct sdl_process *process = &sdl_processes[i];
    if (process->id == SDL_NULL) {
      place = place == NULL ? process : place;
    } else if (process->type == type) {
      ++living;
    }
  }
  const uint32_t number = last_number[type_index] + 1;
  if (place == NULL || living >= type->maximum || SDL_NUMBER_OF(number) == 0) {
    return NULL;
  }
  last_number[type_index] = number;
  *place = (struct sdl_process){
      .id = SDL_PID(type_index, number), .type = type, .parent = parent, .state = SDL_START};
  for (unsigned i = 0; i < type->variable_count; ++i) {
    place->variable[i] = type->variables[i].initial;
  }
  update_ready(place);
  return place;
}

/* Queues. */

static enum sdl_problem deliver(sdl_pid receiver, const struct sdl_signal *signal) {
  struct sdl_process *process = find(receiver);
  if (process == NULL) {
    return SDL_NO_RECEIVER;
  }
  if (process->queued == SDL_QUEUE_LENGTH) {
    return SDL_QUEUE_FULL;
  }
  process->queue[process->queued] = *signal;
  ++process->queued;
  update_ready(process);
  return SDL_NO_PROBLEM;
}

/* Delivers a signal that no transition sends. */
static void deliver_from_outside(sdl_pid receiver, const struct sdl_signal *signal) {
  const enum sdl_problem problem = deliver(receiver, signal);
  if (problem != SDL_NO_PROBLEM) {
    sdl_report(problem, NULL, signal->type, receiver);
  }
}

static struct sdl_signal take(struct sdl_process *process, uint8_t index) {
  const struct sdl_signal taken = process->queue[index];
  --process->queued;
  for (uint8_t i = index; i < process->queued; ++i) {
    process->queue[i] = process->queue[i + 1];
  }
  return taken;
}

/* Timers. */

static void remove_timer(unsigned index) {
  --sdl_timer_count;
  for (unsigned i = index; i < sdl_timer_count; ++i) {
    sdl_timers[i] = sdl_timers[i + 1];
  }
}

/* Stops the timer and removes its signal; all timers of the owner with SDL_ANY. */
static void reset_timer(struct sdl_process *owner, uint8_t timer) {
  for (unsigned i = sdl_timer_count; i-- > 0;) {
    if (sdl_timers[i].owner == owner->id && (timer == SDL_ANY || sdl_timers[i].signal == timer)) {
      remove_timer(i);
    }
  }
  for (uint8_t i = owner->queued; i-- > 0;) {
    if (owner->queue[i].type == timer) {
      take(owner, i);
    }
  }
  update_ready(owner);
}

static void set_timer(struct sdl_process *owner, uint8_t timer, uint32_t delay) {
  reset_timer(owner, timer);
  if (sdl_timer_count == SDL_MAX_TIMERS) {
    sdl_report(SDL_TIMERS_FULL, owner->is_firing ? owner : NULL, timer, owner->id);
    return;
  }
  const struct sdl_timer set = {.expiry = sdl_now + delay, .owner = owner->id, .signal = timer};
  unsigned place = sdl_timer_count;
  for (; place > 0 && sdl_timers[place - 1].expiry > set.expiry; --place) {
    sdl_timers[place] = sdl_timers[place - 1];
  }
  sdl_timers[place] = set;
  ++sdl_timer_count;
}

static void deliver_due_timers(void) {
  while (sdl_timer_count > 0 && sdl_timers[0].expiry <= sdl_now) {
    const struct sdl_timer timer = sdl_timers[0];
    remove_timer(0);
    deliver_from_outside(timer.owner, &(struct sdl_signal){.type = timer.signal});
  }
}

static void take_mail(void) {
  if (!sdl_mail.is_full) {
    return;
  }
  struct sdl_process *owner = find(sdl_mail.receiver);
  if (sdl_mail.kind == SDL_MAIL_SIGNAL) {
    struct sdl_signal signal = {.type = sdl_mail.signal};
    for (int i = 0; i < SDL_MAX_PARAMETERS; ++i) {
      signal.parameter[i] = sdl_mail.parameter[i];
    }
    deliver_from_outside(sdl_mail.receiver, &signal);
  } else if (owner != NULL && sdl_mail.kind == SDL_MAIL_SET) {
    set_timer(owner, sdl_mail.signal, sdl_mail.delay);
  } else if (owner != NULL && sdl_mail.kind == SDL_MAIL_RESET) {
    reset_timer(owner, sdl_mail.signal);
  }
  sdl_mail.is_full = false;
}

/* Services for transitions. */

void sdl_assign(struct sdl_process *self, uint8_t variable, int32_t value) {
  sdl_record((struct sdl_event){.time = sdl_now,
                                .process = self->id,
                                .kind = SDL_TASK,
                                .what = variable,
                                .parameter = {value}});
  self->variable[variable] = value;
}

void sdl_add(struct sdl_process *self, uint8_t variable, int32_t amount) {
  int32_t sum = 0;
  if (__builtin_add_overflow(self->variable[variable], amount, &sum)) {
    sum = amount > 0 ? INT32_MAX : INT32_MIN;
  }
  sdl_assign(self, variable, sum);
}

void sdl_output(struct sdl_process *self, sdl_pid receiver, struct sdl_signal signal) {
  signal.sender = self->id;
  const enum sdl_problem problem = deliver(receiver, &signal);
  sdl_record_signal(SDL_OUTPUT, self, receiver, &signal, problem);
  if (problem != SDL_NO_PROBLEM) {
    sdl_report(problem, self, signal.type, receiver);
  }
}

void sdl_output_to_all(struct sdl_process *self, uint8_t type, struct sdl_signal signal) {
  const sdl_pid end = SDL_PID(type + 1, 0);
  sdl_pid receiver = SDL_PID(type, 0);
  for (;;) {
    sdl_pid next = end;
    for (size_t i = 0; i < SDL_MAX_INSTANCES; ++i) {
      if (sdl_processes[i].id > receiver && sdl_processes[i].id < next) {
        next = sdl_processes[i].id;
      }
    }
    if (next == end) {
      return;
    }
    receiver = next;
    sdl_output(self, receiver, signal);
  }
}

void sdl_output_to_environment(struct sdl_process *self, struct sdl_signal signal) {
  signal.sender = self->id;
  sdl_record_signal(SDL_OUTPUT, self, SDL_ENVIRONMENT, &signal, SDL_NO_PROBLEM);
  sdl_system.to_environment(&signal);
}

static void record_timer(const struct sdl_process *self, enum sdl_event_kind kind, uint8_t timer,
                         sdl_time time) {
  sdl_record(
      (struct sdl_event){.time = time, .process = self->id, .kind = (uint8_t)kind, .what = timer});
}

void sdl_set(struct sdl_process *self, uint8_t timer, uint32_t delay) {
  set_timer(self, timer, delay);
  record_timer(self, SDL_SET, timer, sdl_now + delay);
}

void sdl_reset(struct sdl_process *self, uint8_t timer) {
  reset_timer(self, timer);
  record_timer(self, SDL_RESET, timer, sdl_now);
}

void sdl_create(struct sdl_process *self, uint8_t type, uint8_t variable, int32_t value) {
  struct sdl_process *created = create(type, self->id);
  self->offspring = created == NULL ? SDL_NULL : created->id;
  if (created != NULL) {
    created->variable[variable] = value;
  }
  sdl_record((struct sdl_event){.time = sdl_now,
                                .process = self->id,
                                .other = self->offspring,
                                .kind = SDL_CREATE,
                                .what = type});
}

/* The loop. */

static void remove_process(struct sdl_process *process) {
  reset_timer(process, SDL_ANY);
  process->id = SDL_NULL;
  update_ready(process);
}

static void fire(struct sdl_process *process) {
  const sdl_pid id = process->id;
  process->input = (struct sdl_signal){.type = SDL_NO_SIGNAL};
  sdl_body *body = process->type->start;
  process->is_firing = true;
  if (process->state != SDL_START) {
    process->input = take(process, first_input(process));
    const struct sdl_transition *row = find_transition(process, process->input.type);
    body = row == NULL ? NULL : row->body;
    process->sender = sdl_system.signals[process->input.type].is_timer ? id : process->input.sender;
  }
  update_ready(process);
  sdl_record_signal(SDL_BEGIN, process, process->input.sender, &process->input, SDL_NO_PROBLEM);
  sdl_before(process);
  const bool is_discarded = body == NULL;
  const uint8_t next_state = is_discarded ? process->state : body(process);
  sdl_record((struct sdl_event){.time = sdl_now,
                                .process = id,
                                .kind = SDL_END,
                                .state = next_state,
                                .result = is_discarded});
  process->is_firing = false;
  if (next_state == SDL_STOP) {
    remove_process(process);
  } else {
    process->state = next_state;
    update_ready(process);
  }
  ++sdl_transitions;
  sdl_after(id, next_state);
}

/* Nothing is ready, no timer is due. */
static void rest(void) {
  const sdl_time next = sdl_timer_count > 0 ? sdl_timers[0].expiry : SDL_FOREVER;
  const sdl_time until = sdl_control.until;
  if (sdl_now >= until) {
    sdl_stop_for(SDL_TIME);
  } else if (next == SDL_FOREVER && until == SDL_FOREVER) {
    sdl_stop_for(SDL_NOTHING);
    board_sleep();
  } else if (sdl_simulates_time) {
    sdl_now = next < until ? next : until;
  } else {
    board_sleep();
  }
}

static void pass_time(void) {
  const uint32_t ticks = board_ticks();
  if (!sdl_simulates_time) {
    sdl_now += ticks - last_ticks;
  }
  last_ticks = ticks;
}

static void step(void) {
  pass_time();
  take_mail();
  if (sdl_control.stop_now) {
    sdl_stop_for(SDL_ASKED);
    return;
  }
  deliver_due_timers();
  if (sdl_stops_for_error()) {
    return;
  }
  struct sdl_process *process = sdl_first_ready;
  if (process == NULL) {
    rest();
  } else if (!sdl_stops_before(process)) {
    fire(process);
    sdl_check_orders();
  }
}

void sdl_run(void) {
  for (uint8_t type = 0; type < sdl_system.process_count; ++type) {
    for (uint32_t i = 0; i < sdl_system.processes[type]->initial; ++i) {
      create(type, SDL_NULL);
    }
  }
  sdl_has_started = true;
  sdl_begin();
  for (;;) {
    step();
  }
}
