// What every call into the library needs: its status checked, its memory owned.
#pragma once

#include <cstdint>
#include <memory>

#include "dax/status.h"

namespace dax::tool {

// Throws Failure(kRefused) with the library's status text.
void check(DaxStatus status, const char* step);

// Memory that a size query asked for. Left uninitialised: of the worst case that it provides for, little is touched.
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
