#include "base/library_call.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "base/failure.h"

namespace dax::tool {

void check(DaxStatus status, const char* step) {
  if (status == DAX_STS_OK) return;
  char code[16];
  std::snprintf(code, sizeof code, "0x%08x", status);
  throw Failure(ExitStatus::kRefused, std::string(step) + " refused: " + DAX_GetStatusText(status) + " (" + code + ")");
}

Memory::Memory(uint64_t bytes) : block_(std::malloc(bytes == 0 ? 1 : bytes)) {
  if (!block_) throw std::bad_alloc();
}

void Memory::Free::operator()(void* block) const {
  std::free(block);
}

}  // namespace dax::tool
