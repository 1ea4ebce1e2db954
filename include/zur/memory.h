/* Aligned memory and memory tables of the platform layer. Results are platform codes: 0, or a small negative number. */
#ifndef ZUR_MEMORY_H
#define ZUR_MEMORY_H

#include "../dax/api.h"

DAX_BEGIN_DECLS

/* One requested block. */
typedef struct ZurMemTabEntry {
  uint64_t size;      /* bytes; 0: the entry is unused */
  uint32_t alignment; /* bytes */
  void* base;         /* written by ZUR_AllocMemTab */
} ZurMemTabEntry;

/* Allocates `size` bytes at an address divisible by `alignment`, which may be any positive number, a power of two or
 * not. Null when size is 0, alignment below 1, size + alignment + 8 does not fit 64 bits, or memory is short.
 * Thread-safe. */
DAX_API void* ZUR_Malloc(uint64_t size, int32_t alignment);

/* Releases a block of ZUR_Malloc; null is ignored. Thread-safe. */
DAX_API void ZUR_Free(void* block);

/* Allocates every entry of non-zero size; an entry of size 0 gets a null base. Table null -> -21, count below 1 -> -26,
 * no memory -> -21: earlier entries stay allocated, later ones keep the base that they hold. ZERO A TABLE BEFORE ITS
 * FIRST USE, so that after a failure it can be freed as a whole. */
DAX_API int32_t ZUR_AllocMemTab(ZurMemTabEntry* table, int32_t count);

/* Frees every block and sets its base to null; the sizes stay. Table null -> -21, count below 1 -> -26. Freeing twice
 * is harmless. */
DAX_API int32_t ZUR_FreeMemTab(ZurMemTabEntry* table, int32_t count);

/* Checks a table that an operation receives: table null or count below 1 -> -21; then for each entry of non-zero size:
 * base null -> -3, alignment differs from the one asked for -> -4, base AND (alignment - 1) not zero -> -7. */
DAX_API int32_t ZUR_CheckMemTab(const ZurMemTabEntry* table, int32_t count, uint32_t alignment);

DAX_END_DECLS

#endif
