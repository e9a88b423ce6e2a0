/* The debugger's half of the kernel: history, errors, and where runs stop. */

#include "kernel_debug.h"

#include <stddef.h>

#include "kernel_parts.h"

/* Events that one transition may make without loss to a debugger that reads the history. */
#define HISTORY_RESERVE 64

_Static_assert((SDL_HISTORY_LENGTH & (SDL_HISTORY_LENGTH - 1)) == 0, "must be a power of two");
_Static_assert(SDL_HISTORY_LENGTH >= 2 * HISTORY_RESERVE, "too short");

struct sdl_event sdl_history[SDL_HISTORY_LENGTH];
uint32_t sdl_history_count;
struct sdl_error sdl_error;
uint32_t sdl_error_count;
volatile struct sdl_control sdl_control = {.until = SDL_FOREVER};

static sdl_pid passed; /* a breakpoint stopped before its transition */
static uint8_t passed_input;

/* Empty, but not for the compiler: what a debugger changes meanwhile is read anew. */
#define MARKER __attribute__((noinline, section(".markers")))
#define MARK __asm__ volatile("" ::: "memory")

MARKER void sdl_stop(void) {
  MARK;
}
MARKER void sdl_begin(void) {
  MARK;
}

MARKER void sdl_before(const struct sdl_process *process) {
  (void)process;
  MARK;
}

MARKER void sdl_after(sdl_pid process, uint8_t state) {
  (void)process;
  (void)state;
  MARK;
}

void sdl_record(struct sdl_event event) {
  sdl_history[sdl_history_count % SDL_HISTORY_LENGTH] = event;
  ++sdl_history_count;
}

void sdl_record_signal(enum sdl_event_kind kind, const struct sdl_process *self, sdl_pid other,
                       const struct sdl_signal *signal, enum sdl_problem result) {
  struct sdl_event event = {.time = sdl_now,
                            .process = self->id,
                            .other = other,
                            .kind = (uint8_t)kind,
                            .what = signal->type,
                            .state = self->state,
                            .result = (uint8_t)result};
  for (int i = 0; i < SDL_MAX_PARAMETERS; ++i) {
    event.parameter[i] = signal->parameter[i];
  }
  sdl_record(event);
}

void sdl_report(enum sdl_problem problem, const struct sdl_process *self, uint8_t signal,
                sdl_pid receiver) {
  ++sdl_error_count;
  if (sdl_error.problem == SDL_NO_PROBLEM) {
    sdl_error = (struct sdl_error){.problem = (uint8_t)problem,
                                   .signal = signal,
                                   .process = self == NULL ? SDL_NULL : self->id,
                                   .receiver = receiver};
  }
}

void sdl_stop_for(enum sdl_reason reason) {
  if (reason != SDL_HISTORY_FULL) {
    sdl_control.stop_now = false;
    sdl_control.passes_first = false;
    sdl_control.transitions = 0;
    sdl_control.until = SDL_FOREVER;
  }
  sdl_control.reason = (uint8_t)reason;
  ++sdl_control.stop_count;
  sdl_stop();
}

bool sdl_stops_for_error(void) {
  if (sdl_error.problem == SDL_NO_PROBLEM) {
    return false;
  }
  sdl_stop_for(SDL_ERROR);
  sdl_error.problem = SDL_NO_PROBLEM;
  return true;
}

static bool is_any_or(uint8_t wanted, uint8_t given) {
  return wanted == SDL_ANY || wanted == given;
}

bool sdl_stops_before(const struct sdl_process *process) {
  const uint8_t input = sdl_next_input(process);
  const bool passes = sdl_control.passes_first || (process->id == passed && input == passed_input);
  for (uint8_t i = 0; !passes && i < sdl_control.breakpoint_count; ++i) {
    const struct sdl_breakpoint row = sdl_control.breakpoint[i % SDL_MAX_BREAKPOINTS];
    if (is_any_or(row.type, SDL_TYPE_OF(process->id)) &&
        (row.number == 0 || row.number == SDL_NUMBER_OF(process->id)) &&
        is_any_or(row.state, process->state) && is_any_or(row.input, input)) {
      passed = process->id;
      passed_input = input;
      sdl_control.breakpoint_hit = i;
      sdl_stop_for(SDL_BREAKPOINT);
      return true;
    }
  }
  passed = SDL_NULL;
  sdl_control.passes_first = false;
  return false;
}

void sdl_check_orders(void) {
  const bool is_counting = sdl_control.transitions > 0;
  if (is_counting) {
    --sdl_control.transitions;
  }
  if (sdl_stops_for_error()) {
    return;
  }
  if (is_counting && sdl_control.transitions == 0) {
    sdl_stop_for(SDL_COUNT);
  } else if (sdl_control.keeps_history &&
             sdl_history_count - sdl_control.history_read >= SDL_HISTORY_LENGTH - HISTORY_RESERVE) {
    sdl_stop_for(SDL_HISTORY_FULL);
  }
}
