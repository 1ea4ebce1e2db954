/* The host's thread pool. The number of threads that an _MT member is given is the number of its tiles and of the
 * slices of its work buffer: any number works with any pool, and the pool's own (DAX_THREADPOOL_GetThreadsCnt) is the
 * best.
 *
 * The library owns no threads. Its _MT members hand tiles of rows or indices to the two functions below, which the host
 * exports. Both are weak imports: in a host without them every _MT member runs single-threaded, with the same result.
 */
#ifndef DAX_THREADPOOL_H
#define DAX_THREADPOOL_H

#include "status.h"

DAX_BEGIN_DECLS

/* One tile of work, run by the host. `context` goes through unchanged; `first` is the index at which the tile starts;
 * `bound` may be the tile's end or its length (library tiles ignore it); `worker` is the index of the thread in
 * the pool (library tiles ignore it: they take their slices by tile). A host returns the first non-zero status that a
 * tile gave it. */
typedef DaxStatus (*DaxTileFunction)(void* context, uint32_t first, int32_t bound, uint32_t worker);

/* Exported by the host. Runs `tile` once for each tile of [0, total) cut into consecutive pieces of `tileSize` (the
 * last one may be shorter), each with a worker index below the pool's thread count, never two at a time with the same
 * index, and returns when all have finished. The status goes back to the library's caller unchanged. */
DAX_HOST_IMPORT DaxStatus DAX_THREADPOOL_Compute1DTiled(void* pool, DaxTileFunction tile, void* context, int32_t total,
                                                        int32_t tileSize);

/* Exported by the host. Number of workers of the pool. */
DAX_HOST_IMPORT uint32_t DAX_THREADPOOL_GetThreadsCnt(void* pool);

DAX_END_DECLS

#endif
