// Calls into the library: checks of the status, memory for work buffers.
#pragma once

#include <cstdint>
#include <memory>

#include "dax/status.h"

namespace dax::tool {

// Throws Failure(kRefused) with the library's status text.
void check(DaxStatus status, const char* step);

// Memory of the size that a query returned. Uninitialised: most calls use little of the worst case.
class Memory {
 public:
  explicit Memory(uint64_t bytes);
  void* get() const { return block_.get(); }

 private:
  struct Free {
    void operator()(void* block) const;
  };
  std::unique_ptr<void, Free> block_;
};

}  // namespace dax::tool
