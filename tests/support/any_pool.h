// A pool of some threads: the mock pool on threads of its own, or the reference pool in programs that are linked with
// host_any_pool.cpp.
#pragma once

#include <cstdint>

namespace dax::test {

class AnyPool {
 public:
  explicit AnyPool(uint32_t threads);
  ~AnyPool();
  AnyPool(const AnyPool&) = delete;
  AnyPool& operator=(const AnyPool&) = delete;
  void* get() { return pool_; }

 private:
  void* pool_;
};

}  // namespace dax::test
