// Runs a solver with a buffer that grows to the size that the call requests.
#pragma once

#include <prmt.h>

#include <cstdlib>
#include <memory>

class GrowingBuffer {
 public:
  // Repeats solve(buffer, bytes) with more memory while it reports a buffer that is too small.
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
