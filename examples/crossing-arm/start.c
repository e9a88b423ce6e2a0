/* The board: ARM's MPS2 with a Cortex-M3 (AN385), which QEMU simulates as mps2-an385. Vector table,
 * start-up, the clock and the lamps. */

#include <stddef.h>

#include "board.h"

/* Laid out by link.ld. */
extern uint32_t data_load[], data_start[], data_end[], bss_start[], bss_end[], stack_top[];

int main(void);
void reset(void);
void fault(void);
void tick(void);
void *memcpy(void *restrict target, const void *restrict source, size_t size);
void *memset(void *target, int byte, size_t size);

enum { CLOCK_HERTZ = 25000000, TICKS_PER_SECOND = 1000 };

struct sys_tick {
  uint32_t control, reload, current, calibration;
};
#define SYS_TICK ((volatile struct sys_tick *)0xe000e010)
/* Enabled, with interrupt, by the processor's clock. */
enum { SYS_TICK_RUNS = 7 };

#define LAMPS ((volatile uint32_t *)0x40028000)
enum { LAMP_COUNT = 2 };

static volatile uint32_t ticks;

uint32_t board_ticks(void) {
  return ticks;
}

void board_sleep(void) {
  __asm__ volatile("wfi" ::: "memory");
}

void board_switch_lamp(unsigned lamp, bool is_on) {
  if (lamp < LAMP_COUNT) {
    const uint32_t bit = 1U << lamp;
    *LAMPS = is_on ? *LAMPS | bit : *LAMPS & ~bit;
  }
}

void tick(void) {
  ++ticks;
}

/* A place for a breakpoint. */
void fault(void) {
  for (;;) {
  }
}

void reset(void) {
  const uint32_t *from = data_load;
  for (uint32_t *to = data_start; to < data_end; ++to, ++from) {
    *to = *from;
  }
  for (uint32_t *to = bss_start; to < bss_end; ++to) {
    *to = 0;
  }
  SYS_TICK->reload = CLOCK_HERTZ / TICKS_PER_SECOND - 1;
  SYS_TICK->current = 0;
  SYS_TICK->control = SYS_TICK_RUNS;
  main();
}

/* The compiler calls these two for structures. */
void *memcpy(void *restrict target, const void *restrict source, size_t size) {
  unsigned char *to = target;
  const unsigned char *from = source;
  while (size-- > 0) {
    *to++ = *from++;
  }
  return target;
}

void *memset(void *target, int byte, size_t size) {
  unsigned char *to = target;
  while (size-- > 0) {
    *to++ = (unsigned char)byte;
  }
  return target;
}

/* The initial stack pointer and the 15 exceptions of the processor; those without a name here are
 * reserved or not used. */
union vector {
  uint32_t *stack;
  void (*handler)(void);
};
enum {
  RESET = 1,
  NMI,
  HARD_FAULT,
  MEMORY_FAULT,
  BUS_FAULT,
  USAGE_FAULT,
  SYSTEM_TICK = 15,
  VECTORS
};
__attribute__((section(".vectors"), used)) static const union vector vectors[VECTORS] = {
    [0] = {.stack = stack_top},          [RESET] = {.handler = reset},
    [NMI] = {.handler = fault},          [HARD_FAULT] = {.handler = fault},
    [MEMORY_FAULT] = {.handler = fault}, [BUS_FAULT] = {.handler = fault},
    [USAGE_FAULT] = {.handler = fault},  [SYSTEM_TICK] = {.handler = tick},
};
