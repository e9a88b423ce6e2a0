#pragma once

/* A small kernel for SDL systems: processes with states and input queues, signals, timers. Bounded
 * in memory and in time, without heap and library. Instances are run by one loop, transition by
 * transition, first ready, first served; nothing but the clock's interrupt runs beside it. */

#include <stdbool.h>
#include <stdint.h>

#include "sdl_config.h"

typedef uint64_t sdl_time; /* milliseconds since the start */
#define SDL_FOREVER UINT64_MAX

/* An instance: the index of its type + 1 in the upper 8 bits, its number in the others. Numbers are
 * not used again, so that the name of an instance that has ended never means another one. */
typedef uint32_t sdl_pid;
#define SDL_PID(type, number) ((sdl_pid)(((uint32_t)(type) + 1) << 24 | (uint32_t)(number)))
#define SDL_TYPE_OF(pid) ((uint8_t)(((pid) >> 24) - 1))
#define SDL_NUMBER_OF(pid) ((pid)&0xffffff)
#define SDL_NULL ((sdl_pid)0)
#define SDL_ENVIRONMENT ((sdl_pid)UINT32_MAX)

/* In place of a state. */
enum { SDL_START = 0xfd, SDL_STOP = 0xfe, SDL_ANY = 0xff };
/* In place of a signal: what a start transition consumes. */
enum { SDL_NO_SIGNAL = 0xfe };

struct sdl_signal {
  uint8_t type;   /* index into sdl_system.signals; timers have such signals, too */
  sdl_pid sender; /* filled in by the kernel; SDL_NULL for the environment and for a timer */
  int32_t parameter[SDL_MAX_PARAMETERS];
};

struct sdl_process {
  sdl_pid id; /* SDL_NULL: no instance has this place */
  const struct sdl_process_type *type;
  struct sdl_process *next_ready; /* in the queue of those that have a transition to make */
  sdl_pid parent, offspring;
  sdl_pid sender; /* of the last input; itself when that was a timer */
  uint8_t state;
  uint8_t queued;
  bool is_ready;  /* stands in that queue */
  bool is_firing; /* its transition runs; it becomes ready again only after that */
  int32_t variable[SDL_MAX_VARIABLES];
  struct sdl_signal input; /* what the present transition consumes */
  struct sdl_signal queue[SDL_QUEUE_LENGTH];
};

/* The definition of a system: constant tables, which the kernel works from and the debugger reads.
 */

/* The actions of a transition. Returns the next state: self->state to stay, SDL_STOP to end. */
typedef uint8_t sdl_body(struct sdl_process *self);

/* The input in the state is saved, that is, left in the queue. */
#define SDL_SAVE ((sdl_body *)0)

struct sdl_transition { /* an input that has none in a state is discarded there */
  uint8_t state;        /* or SDL_ANY; a row of the state itself wins */
  uint8_t input;
  sdl_body *body; /* or SDL_SAVE */
};

struct sdl_sort {
  const char *name;
  const char *const *literals; /* by value; none: "Integer" or "PId" */
  uint8_t literal_count;
};
extern const struct sdl_sort sdl_integer, sdl_boolean, sdl_pid_sort;

struct sdl_variable {
  const char *name;
  const struct sdl_sort *sort;
  int32_t initial;
};

struct sdl_signal_type {
  const char *name;
  const struct sdl_sort *parameter[SDL_MAX_PARAMETERS]; /* up to the first null */
  bool is_timer;
};

struct sdl_process_type {
  const char *name;
  uint32_t initial, maximum; /* instances */
  sdl_body *start;
  const char *const *states;
  const struct sdl_variable *variables;
  const struct sdl_transition *transitions;
  uint8_t state_count, variable_count, transition_count;
};

struct sdl_system {
  const char *name;
  const struct sdl_signal_type *signals;
  const struct sdl_process_type *const *processes;
  uint8_t signal_count, process_count;
  void (*to_environment)(const struct sdl_signal *signal);
};

#define SDL_COUNT(table) (sizeof(table) / sizeof((table)[0]))
/* For the definition of a process type. */
#define SDL_STATES(table) .states = (table), .state_count = SDL_COUNT(table)
#define SDL_VARIABLES(table) .variables = (table), .variable_count = SDL_COUNT(table)
#define SDL_TRANSITIONS(table) .transitions = (table), .transition_count = SDL_COUNT(table)

/* Defined by the application. */
extern const struct sdl_system sdl_system;

/* For the application. */

/* Creates the initial instances and runs the system. Never returns. */
_Noreturn void sdl_run(void);

/* For the bodies of transitions. What cannot be done is a dynamic error, see struct sdl_error. */

void sdl_assign(struct sdl_process *self, uint8_t variable, int32_t value);
/* The sum stops at the limits of the sort. */
void sdl_add(struct sdl_process *self, uint8_t variable, int32_t amount);
void sdl_output(struct sdl_process *self, sdl_pid receiver, struct sdl_signal signal);
/* To every living instance of the type, in the order of their numbers. */
void sdl_output_to_all(struct sdl_process *self, uint8_t type, struct sdl_signal signal);
void sdl_output_to_environment(struct sdl_process *self, struct sdl_signal signal);
/* Sets a timer to so many milliseconds from now; one that is active, or whose signal waits in the
 * queue, is reset first. */
void sdl_set(struct sdl_process *self, uint8_t timer, uint32_t delay);
void sdl_reset(struct sdl_process *self, uint8_t timer);
/* Creates an instance and assigns one of its variables before its start. self->offspring is
 * SDL_NULL when there is no room for one more. */
void sdl_create(struct sdl_process *self, uint8_t type, uint8_t variable, int32_t value);
