/* Clocks for profiling. */
#ifndef DAX_CLOCK_H
#define DAX_CLOCK_H

#include "api.h"

DAX_BEGIN_DECLS

/* The processor's virtual counter times 1000 (modulo 2^64). On processors without that counter: the monotonic clock in
 * nanoseconds, times 1000. Thread-safe. */
DAX_API uint64_t DAX_GetCpuClocks(void);

/* Frequency of the counter in Hz, so that seconds = (clocks1 - clocks0) / 1000 / frequency. Thread-safe. */
DAX_API double DAX_GetCpuFrequency(void);

DAX_END_DECLS

#endif
