#pragma once

/* What the two halves of the kernel, kernel.c and kernel_debug.c, offer each other. */

#include "kernel_debug.h"

/* kernel.c */

/* What the next transition of a ready instance consumes; SDL_NO_SIGNAL before its start. */
uint8_t sdl_next_input(const struct sdl_process *process);

/* kernel_debug.c */

void sdl_record(struct sdl_event event);
void sdl_record_signal(enum sdl_event_kind kind, const struct sdl_process *self, sdl_pid other,
                       const struct sdl_signal *signal, enum sdl_problem result);

/* Notes a dynamic error. `self` is the instance whose transition runs; null outside of one. */
void sdl_report(enum sdl_problem problem, const struct sdl_process *self, uint8_t signal,
                sdl_pid receiver);

/* Calls sdl_stop(); the orders are void then. */
void sdl_stop_for(enum sdl_reason reason);

/* Whether it stopped. */
bool sdl_stops_for_error(void);
bool sdl_stops_before(const struct sdl_process *process);
/* To be called after each transition. */
void sdl_check_orders(void);
