/* Aligned memory, memory tables and the host's allocator. */
#ifndef DAX_MEMORY_H
#define DAX_MEMORY_H

#include "status.h"

DAX_BEGIN_DECLS

enum {
  DAX_MEMORY_CPU = 1,    /* processor memory */
  DAX_MEMORY_DEVICE = 2, /* device memory; in this build it cannot be allocated */
  DAX_MEMORY_MAPPED = 4  /* version-3 tables only: the second pointer is checked on its own */
};

/* One block of a library memory table. */
typedef struct DaxMemTabEntry {
  uint64_t size;      /* bytes; 0: the entry is unused */
  uint32_t alignment; /* bytes */
  uint64_t reserved;
  void* base;    /* written by the allocation */
  uint32_t kind; /* DAX_MEMORY_CPU or DAX_MEMORY_DEVICE */
} DaxMemTabEntry;

/* Version-2 entry, one word longer. Tables of it go to DAX_CheckMemTabV2 only. */
typedef struct DaxMemTabEntryV2 {
  uint64_t size;
  uint32_t alignment;
  uint64_t reserved;
  void* base;
  uint32_t kind;
  uint64_t reserved2;
} DaxMemTabEntryV2;

/* Version-3 entry: fifteen 64-bit words. */
typedef struct DaxMemTabEntryV3 {
  uint64_t size;      /* bytes; 0: the entry is unused */
  uint32_t alignment; /* bytes */
  uint32_t attribute;
  uint64_t reserved;
  void* base;            /* written by the allocation */
  void* second;          /* start of the data; equal to base when the library allocates */
  uint64_t kind;         /* DAX_MEMORY_CPU, DAX_MEMORY_DEVICE or DAX_MEMORY_MAPPED */
  void* hostContext;     /* set by the library in requests to the host */
  uint64_t reserved2[8]; /* zero */
} DaxMemTabEntryV3;

/* Host callback: takes one request (`count` is 1), returns 0 or a status that the library passes back unchanged. The
 * allocating one writes the block's start into request->base. */
typedef DaxStatus (*DaxHostMemoryFunction)(DaxMemTabEntryV3* request, uint32_t count);

/* The host's allocator for processor memory. */
typedef struct DaxHostAllocator {
  DaxHostMemoryFunction allocate;
  DaxHostMemoryFunction free;
  void* context; /* handed back in every request */
} DaxHostAllocator;

/* The same pair as ZUR_Malloc and ZUR_Free: any positive alignment, null on failure. Thread-safe. */
DAX_API void* DAX_CpuMemMalloc(uint64_t size, int32_t alignment);
DAX_API void DAX_CpuMemFree(void* block);

/* Device memory has no implementation: always null, and nothing to free. Thread-safe. */
DAX_API void* DAXCUDA_Malloc(void);
DAX_API void DAXCUDA_Free(void* block);

/* Allocates by kind: DAX_MEMORY_CPU as DAX_CpuMemMalloc, everything else null. Thread-safe. */
DAX_API void* DAX_MemMalloc(uint64_t size, int32_t alignment, uint32_t kind);

/* Frees by kind; null and unknown kinds are ignored. Thread-safe. */
DAX_API void DAX_MemFree(void* block, uint32_t kind);

/* Allocates every entry of non-zero size by its kind; an entry of size 0 gets a null base. Table null -> 0x10000014,
 * count below 1 -> 0x10000019, no memory -> 0x1000002b: earlier entries stay allocated, later ones keep the base that
 * they hold. ZERO A TABLE BEFORE ITS FIRST USE, so that after a failure it can be freed as a whole. */
DAX_API DaxStatus DAX_AllocMemTab(DaxMemTabEntry* table, int32_t count);

/* Frees every block and clears its size and base. Codes as DAX_AllocMemTab. Freeing twice is harmless. */
DAX_API DaxStatus DAX_FreeMemTab(DaxMemTabEntry* table, int32_t count);

/* Checks a table that an operation receives: table null or count below 1 -> 0x10000014; then for each entry of non-zero
 * size: base null -> 0x10000002, alignment differs from the one asked for -> 0x10000003, size below alignment ->
 * 0x10000004, size no multiple of alignment (or alignment 0) -> 0x10000005, base AND (alignment - 1) not zero ->
 * 0x10000006. */
DAX_API DaxStatus DAX_CheckMemTab(const DaxMemTabEntry* table, int32_t count, uint32_t alignment);

/* As DAX_CheckMemTab without the two checks of the size. */
DAX_API DaxStatus DAX_CheckMemTabV2(const DaxMemTabEntryV2* table, int32_t count, uint32_t alignment);

/* As DAX_AllocMemTab; base and second both receive the block. A size above 0 of a kind other than 1 and 2 ->
 * 0x1000002b; that entry keeps its pointers, as those after it do. */
DAX_API DaxStatus DAX_AllocMemTabV3(DaxMemTabEntryV3* table, int32_t count);

/* As DAX_FreeMemTab; clears size, base and second. */
DAX_API DaxStatus DAX_FreeMemTabV3(DaxMemTabEntryV3* table, int32_t count);

/* As DAX_CheckMemTabV2; for entries of kind 4 second is checked like base (0x10000002, 0x10000006). */
DAX_API DaxStatus DAX_CheckMemTabV3(const DaxMemTabEntryV3* table, int32_t count, uint32_t alignment);

/* Allocates every entry, those of size 0 included, through the host. The request is a copy of the entry as it stands,
 * its pointers included, with the host's context; a callback that leaves request->base alone leaves what the entry
 * held. Table null -> 0x10000014; count below 1 -> 0x10000019; allocator or its allocate function null -> 0x10000014;
 * then per entry: kind other than 1 -> 0x1000002b, and the entry is unchanged; the callback's non-zero status is
 * returned, and both pointers of the entry are set to null. Earlier entries stay allocated, later ones keep what they
 * hold: ZERO A TABLE BEFORE ITS FIRST USE. */
DAX_API DaxStatus DAX_AllocCpuMemTabV3(DaxMemTabEntryV3* table, int32_t count, const DaxHostAllocator* allocator);

/* Frees every entry that has a base through the host and clears its size, base and second. Table null -> 0x10000014;
 * count below 1 -> 0x10000019; allocator or its free function null -> 0x10000014; then per entry: kind other than 1 ->
 * 0x1000002b; the callback's non-zero status is returned at once. */
DAX_API DaxStatus DAX_FreeCpuMemTabV3(DaxMemTabEntryV3* table, int32_t count, const DaxHostAllocator* allocator);

/* One block from the host: a request of attribute 16 and kind 1. Null when the callback fails, or when the allocator or
 * its allocate function is null. */
DAX_API void* DAX_Mem_MallocCpuV3(uint64_t size, uint32_t alignment, const DaxHostAllocator* allocator);

/* Gives a block back to the host: a request of alignment 128, attribute 16, reserved word 2 and kind 1. Returns the
 * callback's status; 0x10000014 when the allocator or its free function is null. */
DAX_API DaxStatus DAX_Mem_FreeCpuV3(void* block, uint64_t size, const DaxHostAllocator* allocator);

DAX_END_DECLS

#endif
