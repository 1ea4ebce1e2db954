#include "base/workers.h"

#include <unistd.h>

#include <cstdio>
#include <new>
#include <thread>
#include <utility>

#include "daxhost.h"

namespace dax::tool {

Pool::Pool(uint32_t threads)
    : pool_(DAXHOST_CreatePool(threads < std::thread::hardware_concurrency() ? threads : 0), DAXHOST_DestroyPool) {
  if (!pool_) throw std::bad_alloc();
}

Workers Pool::workers() const {
  return {pool_.get(), DAX_THREADPOOL_GetThreadsCnt(pool_.get())};
}

Progress::Progress(size_t total, std::string unit)
    : total_(total), unit_(std::move(unit)), shown_(total > 1 && isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
  if (shown_) std::fputs("\r\x1b[K", stderr);
}

void Progress::advance(size_t steps) {
  if (!shown_) return;
  const std::lock_guard lock(mutex_);
  done_ += steps;
  std::fprintf(stderr, "\r\x1b[K%zu of %zu %s", done_, total_, unit_.c_str());
  std::fflush(stderr);
}

}  // namespace dax::tool
