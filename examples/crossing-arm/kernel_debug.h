#pragma once

/* What the kernel offers to a debugger: its tables, a history, orders to stop, and a mailbox. A
 * debugger reads them and writes to the last two while the target stands; the kernel itself never
 * waits for one. Only the names in these structures bind the two: sdl.py reads them by name. */

#include "kernel.h"

extern struct sdl_process sdl_processes[SDL_MAX_INSTANCES];
extern struct sdl_process *sdl_first_ready;

struct sdl_timer {
  sdl_time expiry;
  sdl_pid owner;
  uint8_t signal;
};
/* Active timers in the order in which they expire; those of one time as they were set. */
extern struct sdl_timer sdl_timers[SDL_MAX_TIMERS];
extern uint8_t sdl_timer_count;

extern sdl_time sdl_now;
extern uint32_t sdl_transitions; /* fired so far */
extern bool sdl_has_started;     /* the initial instances have been created */

/* Time does not pass by the clock: when no transition is ready it jumps to the next timer. Runs are
 * repeatable then, and as fast as the processor. May be changed at any time. */
extern volatile bool sdl_simulates_time;

/* History: a ring of what happened; a transition is all from a BEGIN to the END behind it. */

enum sdl_event_kind {
  SDL_BEGIN,  /* of a transition: what = input, state, other = sender, parameters */
  SDL_END,    /* state = next state; result 1: the input was discarded */
  SDL_OUTPUT, /* what = signal, other = receiver, parameters, result = enum sdl_problem */
  SDL_CREATE, /* what = type, other = instance, or SDL_NULL when it was refused */
  SDL_SET,    /* what = timer; time = when it expires */
  SDL_RESET,  /* what = timer */
  SDL_TASK    /* what = variable, parameter[0] = new value */
};

struct sdl_event {
  sdl_time time;
  sdl_pid process, other;
  uint8_t kind, what, state, result;
  int32_t parameter[SDL_MAX_PARAMETERS];
};
extern struct sdl_event sdl_history[SDL_HISTORY_LENGTH];
extern uint32_t sdl_history_count; /* written so far; the last one stands at (count - 1) % length */

/* The first dynamic error of a transition. The system goes on after it. */
enum sdl_problem {
  SDL_NO_PROBLEM,
  SDL_NO_RECEIVER, /* the signal is lost: the receiver does not live */
  SDL_QUEUE_FULL,  /* the signal is lost */
  SDL_TIMERS_FULL  /* the timer is not set */
};
struct sdl_error {
  uint8_t problem;  /* enum sdl_problem */
  uint8_t signal;   /* or timer */
  sdl_pid process;  /* whose transition it is; SDL_NULL outside of one */
  sdl_pid receiver; /* of the signal; owner of the timer */
};
extern struct sdl_error sdl_error;
extern uint32_t sdl_error_count; /* of all errors since the start */

/* Orders to stop. sdl_stop() is called, which does nothing: a debugger has its breakpoint there.
 * Between transitions, the tables are consistent and no signal is in flight. */

enum sdl_reason {
  SDL_ASKED,        /* stop_now */
  SDL_COUNT,        /* so many transitions were fired */
  SDL_TIME,         /* all transitions up to that time were fired */
  SDL_NOTHING,      /* no transition is ready, no timer is active */
  SDL_BREAKPOINT,   /* before the transition of sdl_first_ready */
  SDL_ERROR,        /* see sdl_error */
  SDL_HISTORY_FULL, /* the run is not over: continue after reading the history */
};

struct sdl_breakpoint {       /* of transitions */
  uint8_t type, state, input; /* or SDL_ANY */
  uint32_t number;            /* of the instance; 0 for any */
};

struct sdl_control {
  /* Orders; all but the history's and the breakpoints are void after a stop. */
  bool stop_now;
  bool passes_first;    /* no breakpoint before the first transition */
  uint32_t transitions; /* 0: any number */
  sdl_time until;       /* or SDL_FOREVER */
  bool keeps_history;   /* stop before what has not been read is overwritten */
  uint32_t history_read;
  uint8_t breakpoint_count;
  struct sdl_breakpoint breakpoint[SDL_MAX_BREAKPOINTS];
  /* Answers. */
  uint8_t reason;
  uint8_t breakpoint_hit; /* index */
  uint32_t stop_count;    /* calls of sdl_stop() */
};
extern volatile struct sdl_control sdl_control;

void sdl_stop(void);
/* Called when the system is about to run for the first time. */
void sdl_begin(void);
/* Called round each transition, for breakpoints with conditions of one's own. */
void sdl_before(const struct sdl_process *process);
void sdl_after(sdl_pid process, uint8_t state);

/* Mailbox of the environment, for one writer: is_full is written last by him, and last by the
 * kernel, which empties it before the next transition. */

enum sdl_mail_kind { SDL_MAIL_SIGNAL, SDL_MAIL_SET, SDL_MAIL_RESET };
struct sdl_mail {
  bool is_full;
  uint8_t kind;
  sdl_pid receiver; /* of the signal; owner of the timer */
  uint8_t signal;   /* or timer */
  int32_t parameter[SDL_MAX_PARAMETERS];
  uint32_t delay; /* of a timer */
};
extern volatile struct sdl_mail sdl_mail;
