#include "daxhost.h"
#include "tests/support/any_pool.h"

namespace dax::test {

AnyPool::AnyPool(uint32_t threads) : pool_(DAXHOST_CreatePool(threads)) {}

AnyPool::~AnyPool() {
  DAXHOST_DestroyPool(pool_);
}

}  // namespace dax::test
