#pragma once

/* What the kernel reserves for the system. There is no heap: each of these is a bound that is kept
 * and told of when it is reached. */

#define SDL_MAX_INSTANCES 28   /* of all process types together */
#define SDL_MAX_VARIABLES 3    /* of a process type */
#define SDL_MAX_PARAMETERS 2   /* of a signal */
#define SDL_QUEUE_LENGTH 8     /* signals that wait for one instance, the saved ones included */
#define SDL_MAX_TIMERS 26      /* active at one time */
#define SDL_HISTORY_LENGTH 256 /* events; a power of two */
#define SDL_MAX_BREAKPOINTS 32 /* rows of the debugger's table */

/* Whether time is simulated from the start: see sdl_simulates_time in kernel.h. */
#ifndef SDL_SIMULATED_TIME
#define SDL_SIMULATED_TIME 0
#endif
