/* Clock of the platform layer. */
#ifndef ZUR_CLOCK_H
#define ZUR_CLOCK_H

#include "../dax/api.h"

DAX_BEGIN_DECLS

/* Always 0: the platform layer has no clock. Use DAX_GetCpuClocks. Thread-safe. */
DAX_API uint64_t ZUR_GetCpuClocks(void);

DAX_END_DECLS

#endif
