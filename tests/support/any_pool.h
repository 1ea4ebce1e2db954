// A pool of some threads: the reference pool where the test is built with it (DAX_ON_HOST_POOL), else the mock pool on
// threads of its own.
#pragma once

#include <cstdint>

#if DAX_ON_HOST_POOL
#include "daxhost.h"
#else
#include "tests/support/mock_pool.h"
#endif

namespace dax::test {

#if DAX_ON_HOST_POOL
class AnyPool {
 public:
  explicit AnyPool(uint32_t threads) : pool_(DAXHOST_CreatePool(threads)) {}
  ~AnyPool() { DAXHOST_DestroyPool(pool_); }
  AnyPool(const AnyPool&) = delete;
  AnyPool& operator=(const AnyPool&) = delete;
  void* get() { return pool_; }

 private:
  void* pool_;
};
#else
class AnyPool {
 public:
  explicit AnyPool(uint32_t threads) {
    pool_.threads = threads;
    pool_.concurrent = true;
  }
  void* get() { return &pool_; }

 private:
  MockPool pool_;
};
#endif

}  // namespace dax::test
