// Blocks, the host's allocator, memory tables.
#include <cstdlib>
#include <vector>

#include "dax.h"
#include "tests/hostile/call.h"
#include "zur.h"

namespace dax::hostile {
namespace {

// --- Blocks ---

int64_t anySize(Call& c) {
  return c.chance(97) ? c.between(0, 5000) : c.pick<int64_t>({-1, -8, -1000, INT64_MAX, INT64_MAX - 100});
}

// The block is as long and as aligned as was asked for.
void allocate(Call& c) {
  const int64_t size = anySize(c);
  c.set("size", static_cast<uint64_t>(size));
  c.number("alignment", 1, 300);
  const bool hasKind = c.has("kind");
  if (hasKind) c.anyOf("kind", {DAX_MEMORY_CPU, DAX_MEMORY_CPU, DAX_MEMORY_DEVICE});
  // Gigabytes of alignment are valid and pointless.
  if (c.integer("alignment") > 100000) c.set("alignment", int32_t{65536});
  c.settle = [&c, size](uint64_t result) -> uint64_t {
    auto* const block = reinterpret_cast<uint8_t*>(result);
    if (!block) return 0;
    if (size > 0 && size <= 5000) std::memset(block, 1, static_cast<size_t>(size));
    if (result % static_cast<uint64_t>(c.integer("alignment")) != 0) c.complaint = "misaligned block";
    ZUR_Free(block);
    return 1;
  };
}

void release(Call& c) {
  c.set("block", c.isSpoiled("block") ? nullptr : ZUR_Malloc(static_cast<uint64_t>(c.between(1, 999)), 16));
  if (c.has("kind")) c.set("kind", uint32_t{DAX_MEMORY_CPU});
  c.once = true;
}

void releaseDevice(Call& c) {
  c.set<void*>("block", nullptr);
}

// --- The host's allocator ---

struct Host {
  DaxStatus failure = 0;
  int32_t failsAt = -1;
  int32_t calls = 0;
};

DaxStatus hostAllocate(DaxMemTabEntryV3* request, uint32_t) {
  Host& host = *static_cast<Host*>(request->hostContext);
  if (host.calls++ == host.failsAt) return host.failure;
  request->base = std::malloc(std::max<size_t>(request->size, 1));
  return DAX_STS_OK;
}

DaxStatus hostFree(DaxMemTabEntryV3* request, uint32_t) {
  Host& host = *static_cast<Host*>(request->hostContext);
  if (host.calls++ == host.failsAt) return host.failure;
  std::free(request->base);
  return DAX_STS_OK;
}

constexpr DaxStatus kHostFailure = 0x10000777;

// Memory of the host that the callbacks change.
Host* makeHost(Call& c) {
  Host* const host = c.elements<Host>("host", 1, Role::foreign);
  *host = {kHostFailure, c.chance(10) ? c.random.below(3) : -1, 0};
  c.mayWriteOn(kHostFailure);
  return host;
}

DaxHostAllocator* makeAllocator(Call& c, Host* host) {
  auto* const allocator = c.record<DaxHostAllocator>("allocator");
  if (!allocator) return nullptr;
  *allocator = {hostAllocate, hostFree, host};
  if (c.isSpoiled("allocator")) (c.chance(50) ? allocator->allocate : allocator->free) = nullptr;
  return allocator;
}

// --- Memory tables ---

// A block of a table given to a check: aligned or not, missing or not; never followed.
void* anyBase(Call& c, uintptr_t address) {
  return c.chance(97) ? reinterpret_cast<void*>(address + (c.chance(95) ? 0 : 8)) : nullptr;
}

template <class Entry>
Entry* makeTable(Call& c, int64_t max) {
  const int64_t count = c.number("count", 1, max);
  auto* const table = static_cast<Entry*>(c.array("table", count < 1 ? -1 : count));
  const bool fill = table && c.blockOf("table")->bytes > 0;
  for (int64_t i = 0; fill && i < count; ++i) {
    table[i] = {};
    table[i].size = c.chance(20) ? 0 : static_cast<uint64_t>(c.between(1, 8)) * 128;
    table[i].alignment = c.chance(97) ? 128 : static_cast<uint32_t>(c.random.below(300));
    if constexpr (requires { table[i].kind; }) table[i].kind = DAX_MEMORY_CPU;
  }
  return fill ? table : nullptr;
}

// Entries as aligned as is asked for, or as usual. An alignment that one block lacks, all lack: entries are checked one
// after the other, and the contract tells the order of the checks of one.
template <class Entry>
void checkTable(Call& c) {
  const int64_t alignment = c.anyOf("alignment", {128});
  Entry* const table = makeTable<Entry>(c, 3);
  c.vague |= c.isSpoiled("count") && c.integer("count") >= 1;  // other entries, which may be wrong in any way
  const bool agrees = c.chance(50);
  const auto address = static_cast<uintptr_t>(c.between(1, 1000)) * 128;
  for (int64_t i = 0; table && i < c.integer("count"); ++i) {
    if (agrees) table[i].alignment = static_cast<uint32_t>(alignment);
    table[i].base = anyBase(c, address);
    if constexpr (requires { table[i].second; }) {
      table[i].second = c.chance(50) ? table[i].base : anyBase(c, address);
      table[i].kind = static_cast<uint64_t>(c.pick({1, 2, 4}));
    }
  }
}

// Which blocks there are; frees them.
template <class Entry>
uint64_t drain(Entry* table, int64_t count, void (*free)(void*)) {
  uint64_t present = 0;
  for (int64_t i = 0; table && i < count; ++i) {
    present = 2 * present + (table[i].base != nullptr);
    if (table[i].base) std::memset(table[i].base, 1, table[i].size);
    free(table[i].base);
  }
  return present;
}

template <class Entry>
void allocateTable(Call& c) {
  Entry* const table = makeTable<Entry>(c, 20);
  c.mayWriteOn(DAX_STS_NO_MEMORY);
  if (!table) return;
  c.blockOf("table")->role = Role::foreign;
  const int64_t count = c.integer("count");
  if constexpr (requires { table->kind; }) {
    if (c.isSpoiled("table")) table[c.between(0, count - 1)].kind = static_cast<uint32_t>(c.hostileInteger());
  }
  // The bases are written for every outcome but a refusal of the arguments, which these are not.
  c.settle = [table, count](uint64_t result) { return result * 31 + drain(table, count, ZUR_Free); };
}

// Frees the blocks that the function leaves: all when it refuses, and those whose kind it does not know.
template <class Entry>
void freeTable(Call& c) {
  Entry* const table = makeTable<Entry>(c, 20);
  c.once = true;
  std::vector<void*> blocks;
  for (int64_t i = 0; table && i < c.integer("count"); ++i) {
    if (table[i].size) table[i].base = ZUR_Malloc(table[i].size, 128);
    blocks.push_back(table[i].base);
  }
  c.settle = [table, blocks](uint64_t result) {
    for (size_t i = 0; i < blocks.size(); ++i) {
      bool isLeft = static_cast<uint32_t>(result) != 0;
      if constexpr (requires { table->kind; }) isLeft |= table[i].kind != DAX_MEMORY_CPU;
      if (isLeft) ZUR_Free(blocks[i]);
    }
    return uint64_t{0};
  };
}

void allocateHostTable(Call& c) {
  auto* const table = makeTable<DaxMemTabEntryV3>(c, 20);
  Host* const host = makeHost(c);
  makeAllocator(c, host);
  c.mayWriteOn(DAX_STS_NO_MEMORY);
  if (!table) return;
  const int64_t count = c.integer("count");
  if (c.isSpoiled("table")) table[c.between(0, count - 1)].kind = static_cast<uint64_t>(c.hostileInteger());
  c.once = true;
  // Before the first allocation all bases are set to null, unless the arguments are refused.
  c.settle = [table, count](uint64_t) { return drain(table, count, std::free); };
}

void freeHostTable(Call& c) {
  auto* const table = makeTable<DaxMemTabEntryV3>(c, 20);
  Host* const host = makeHost(c);
  makeAllocator(c, host);
  c.mayWriteOn(DAX_STS_NO_MEMORY);
  c.once = true;
  if (!table) return;
  const int64_t count = c.integer("count");
  for (int64_t i = 0; i < count; ++i) table[i].base = c.chance(80) ? std::malloc(table[i].size + 1) : nullptr;
  if (c.isSpoiled("table")) table[c.between(0, count - 1)].kind = static_cast<uint64_t>(c.hostileInteger());
  c.settle = [table, count](uint64_t) { return drain(table, count, std::free); };
}

void hostBlock(Call& c) {
  makeAllocator(c, makeHost(c));
  c.set("size", static_cast<uint64_t>(c.between(0, 5000)));
  c.number("alignment", 1, 512);
  c.settle = [](uint64_t result) {
    std::free(reinterpret_cast<void*>(result));
    return uint64_t{result != 0};
  };
}

void freeHostBlock(Call& c) {
  makeAllocator(c, makeHost(c));
  c.set("size", static_cast<uint64_t>(c.between(0, 5000)));
  void* const block = std::malloc(16);
  c.set("block", block);
  c.once = true;
  c.settle = [block](uint64_t result) {
    if (result != 0) std::free(block);
    return uint64_t{0};
  };
}

const Rows rows = {
    {"ZUR_Malloc", allocate},
    {"DAX_CpuMemMalloc", allocate},
    {"DAX_MemMalloc", allocate},
    {"ZUR_Free", release},
    {"DAX_CpuMemFree", release},
    {"DAX_MemFree", release},
    {"DAXCUDA_Free", releaseDevice},
    {"ZUR_CheckMemTab", checkTable<ZurMemTabEntry>},
    {"DAX_CheckMemTab", checkTable<DaxMemTabEntry>},
    {"DAX_CheckMemTabV2", checkTable<DaxMemTabEntryV2>},
    {"DAX_CheckMemTabV3", checkTable<DaxMemTabEntryV3>},
    {"ZUR_AllocMemTab", allocateTable<ZurMemTabEntry>},
    {"DAX_AllocMemTab", allocateTable<DaxMemTabEntry>},
    {"DAX_AllocMemTabV3", allocateTable<DaxMemTabEntryV3>},
    {"ZUR_FreeMemTab", freeTable<ZurMemTabEntry>},
    {"DAX_FreeMemTab", freeTable<DaxMemTabEntry>},
    {"DAX_FreeMemTabV3", freeTable<DaxMemTabEntryV3>},
    {"DAX_AllocCpuMemTabV3", allocateHostTable},
    {"DAX_FreeCpuMemTabV3", freeHostTable},
    {"DAX_Mem_MallocCpuV3", hostBlock},
    {"DAX_Mem_FreeCpuV3", freeHostBlock},
};

}  // namespace

}  // namespace dax::hostile
