#include "tests/allocation/failing_malloc.h"

#include <cstddef>

namespace {

int64_t failingCall = -1, tried = 0, live = 0;

bool fails() {
  return tried++ == failingCall;
}

void* counted(void* block) {
  live += block != nullptr;
  return block;
}

}  // namespace

// The linker sends calls of malloc to __wrap_malloc, and those of __real_malloc to malloc.
extern "C" {
void* __real_malloc(size_t bytes);
void* __real_calloc(size_t count, size_t bytes);
void* __real_realloc(void* block, size_t bytes);
void __real_free(void* block);

void* __wrap_malloc(size_t bytes) {
  return fails() ? nullptr : counted(__real_malloc(bytes));
}

void* __wrap_calloc(size_t count, size_t bytes) {
  return fails() ? nullptr : counted(__real_calloc(count, bytes));
}

void* __wrap_realloc(void* block, size_t bytes) {
  if (fails()) return nullptr;
  void* const moved = __real_realloc(block, bytes);
  live += moved && !block;
  return moved;
}

void __wrap_free(void* block) {
  live -= block != nullptr;
  __real_free(block);
}
}

namespace dax::test {

void failAllocation(int64_t failing) {
  failingCall = failing;
  tried = 0;
}

int64_t allocationsTried() {
  return tried;
}

int64_t liveBlocks() {
  return live;
}

}  // namespace dax::test
