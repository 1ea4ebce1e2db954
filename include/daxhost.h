/* Reference host pool: the two functions that the library imports, over a task scheduler.
 *
 * Link libdaxhost with libdax and pass a pool to the _MT functions, with DAX_THREADPOOL_GetThreadsCnt as thread count.
 */
#ifndef DAXHOST_H
#define DAXHOST_H

#include "dax/threadpool.h"

DAX_BEGIN_DECLS

/* Creates a pool of `threads` workers, the calling thread among them; 0: one per processor. Null when memory is short
 * or threads is above 1024. Thread-safe. */
DAX_API void* DAXHOST_CreatePool(uint32_t threads);

/* Destroys a pool that no call is using; null is ignored. */
DAX_API void DAXHOST_DestroyPool(void* pool);

DAX_END_DECLS

#endif
