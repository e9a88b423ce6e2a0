#pragma once

/* What the system needs of the board. */

#include <stdbool.h>
#include <stdint.h>

/* Milliseconds since the start; begins again after 49 days. */
uint32_t board_ticks(void);

/* Sleeps until the next interrupt, at most a millisecond. */
void board_sleep(void);

/* Switches a lamp, from 0. */
void board_switch_lamp(unsigned lamp, bool is_on);
