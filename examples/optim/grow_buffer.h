// Runs a solver with a buffer that grows to what the call asks for.
#pragma once

#include <prmt.h>

#include <cstdlib>
#include <memory>

class GrowingBuffer {
 public:
  // solve(buffer, bytes) is tried again with more memory as long as it says that it needs more.
  template <class Solve>
  int32_t run(const Solve& solve) {
    for (;;) {
      uint64_t bytes = bytes_;
      const int32_t status = solve(memory_.get(), &bytes);
      if (status != PRMT_STS_BUFFER_TOO_SMALL) return status;
      bytes_ = bytes + bytes / 4;
      memory_.reset(std::malloc(bytes_));
    }
  }
  uint64_t bytes() const { return bytes_; }

 private:
  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  uint64_t bytes_ = 1 << 16;
  std::unique_ptr<void, Free> memory_{std::malloc(bytes_)};
};
