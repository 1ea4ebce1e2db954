// Memory of a solver: pieces of the caller's buffer. What stays is taken from its start, what is needed for a while from its
// end. Where the buffer is too small, the arena goes on counting, so that it can tell what would have been enough.
#pragma once

#include <algorithm>
#include <cstdint>

namespace dax {

// A count that is not negative.
inline uint64_t unsignedOf(int64_t count) {
  return static_cast<uint64_t>(count);
}

class Arena {
 public:
  // Without memory (null, 0) an arena measures.
  Arena(void* memory, uint64_t bytes) : memory_(static_cast<char*>(memory)), bytes_(bytes / kGrain * kGrain) {}

  // Room for `count` values, or null when it does not fit. Pieces start at multiples of 128 bytes from the buffer's start.
  template <class T>
  T* take(uint64_t count) {
    const uint64_t at = used_;
    add(used_, roundedBytes(count, sizeof(T)));
    return place<T>(at);
  }

  // The same, until the scope ends.
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

  // What was taken after mark() is free again with release().
  uint64_t mark() const { return used_; }
  void release(uint64_t mark) { used_ = mark; }

  bool fits() const { return !overflow_ && most_ <= bytes_; }
  bool overflows() const { return overflow_ || most_ > INT64_MAX; }
  uint64_t needed() const { return most_; }

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
    most_ = std::max(most_, both);
  }
  template <class T>
  T* place(uint64_t at) const {
    return fits() && memory_ ? reinterpret_cast<T*>(memory_ + at) : nullptr;
  }

  char* memory_;
  uint64_t bytes_;
  uint64_t used_ = 0;
  uint64_t borrowed_ = 0;
  uint64_t most_ = 0;
  bool overflow_ = false;
};

}  // namespace dax
