// Worker threads and a progress counter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace dax::tool {

// Threads that share the work on one image or cloud.
struct Workers {
  void* pool = nullptr;  // null: the calling thread alone
  uint32_t count = 1;
};

// The host's pool. Throws std::bad_alloc.
class Pool {
 public:
  // 0: one thread per processor, which is also the maximum.
  explicit Pool(uint32_t threads);
  Workers workers() const;

 private:
  std::unique_ptr<void, void (*)(void*)> pool_;
};

// A counter on the terminal, if there is one.
class Progress {
 public:
  Progress(size_t total, std::string unit);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void advance(size_t steps = 1);

 private:
  std::mutex mutex_;
  size_t done_ = 0;
  size_t total_;
  std::string unit_;
  bool shown_;
};

}  // namespace dax::tool
