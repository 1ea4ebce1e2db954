// A solver's memory: pieces of the caller's buffer. Lasting pieces are taken from its start, temporary ones from its
// end. When the buffer is too small, the arena keeps counting, so that it can report the size that is needed.
#pragma once

#include <algorithm>
#include <cstdint>

namespace dax {

// `count` must be at least 0.
inline uint64_t unsignedOf(int64_t count) {
  return static_cast<uint64_t>(count);
}

class Arena {
 public:
  // Without memory (null, 0) an arena only measures.
  Arena(void* memory, uint64_t bytes) : memory_(static_cast<char*>(memory)), bytes_(bytes / kGrain * kGrain) {}

  // Room for `count` values, or null when it does not fit. Pieces start at multiples of 128 bytes from the buffer's
  // start.
  template <class T>
  T* take(uint64_t count) {
    const uint64_t at = used_;
    add(used_, roundedBytes(count, sizeof(T)));
    return place<T>(at);
  }

  // The same, but temporary: until the Scope that was opened before ends.
  template <class T>
  T* borrow(uint64_t count) {
    add(borrowed_, roundedBytes(count, sizeof(T)));
    return place<T>(bytes_ - borrowed_);
  }

  class Scope {
   public:
    explicit Scope(Arena& arena) : arena_(arena), borrowed_(arena.borrowed_) {}
    ~Scope() { arena_.borrowed_ = borrowed_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Arena& arena_;
    uint64_t borrowed_;
  };

  // release(mark()) frees what was taken in between.
  uint64_t mark() const { return used_; }
  void release(uint64_t mark) { used_ = mark; }

  bool fits() const { return !overflow_ && peak_ <= bytes_; }
  bool overflows() const { return overflow_ || peak_ > INT64_MAX; }
  uint64_t needed() const { return peak_; }

 private:
  static constexpr uint64_t kGrain = 128;

  uint64_t roundedBytes(uint64_t count, uint64_t size) {
    uint64_t bytes;
    overflow_ |= __builtin_mul_overflow(count, size, &bytes);
    overflow_ |= __builtin_add_overflow(bytes, kGrain - 1, &bytes);
    return bytes / kGrain * kGrain;
  }
  void add(uint64_t& end, uint64_t bytes) {
    overflow_ |= __builtin_add_overflow(end, bytes, &end);
    uint64_t both;
    overflow_ |= __builtin_add_overflow(used_, borrowed_, &both);
    peak_ = std::max(peak_, both);
  }
  template <class T>
  T* place(uint64_t at) const {
    return fits() && memory_ ? reinterpret_cast<T*>(memory_ + at) : nullptr;
  }

  char* memory_;
  uint64_t bytes_;
  uint64_t used_ = 0;
  uint64_t borrowed_ = 0;
  uint64_t peak_ = 0;
  bool overflow_ = false;
};

}  // namespace dax
