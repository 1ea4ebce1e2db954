// Work-buffer layout. A family describes its buffer once, as a struct of pieces; the size query returns the total, the
// worker asks each piece for its address, so the two cannot disagree.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

// Number of pixels; both sides must be at least 0.
inline uint64_t pixelsOf(DaxiSize size) {
  return static_cast<uint64_t>(size.width) * static_cast<uint64_t>(size.height);
}

// A typed part of a work buffer.
template <class T>
struct BufferPiece {
  uint64_t offset;
  T* in(void* buffer) const { return reinterpret_cast<T*>(static_cast<char*>(buffer) + offset); }
};

// Adds up pieces. Every piece starts at a multiple of 128 bytes from the start of the buffer, which itself is aligned
// as by malloc.
class BufferLayout {
 public:
  template <class T>
  BufferPiece<T> add(uint64_t count) {
    const BufferPiece<T> piece{total_};
    uint64_t bytes;
    overflow_ |= __builtin_mul_overflow(count, uint64_t{sizeof(T)}, &bytes);
    overflow_ |= __builtin_add_overflow(bytes, kGrain - 1, &bytes);
    overflow_ |= __builtin_add_overflow(total_, bytes / kGrain * kGrain, &total_);
    return piece;
  }

  // `count` adjacent slices of `bytes` each.
  BufferPiece<uint8_t> addSlices(uint64_t bytes, uint64_t count) {
    uint64_t all;
    overflow_ |= __builtin_mul_overflow(bytes, count, &all);
    return add<uint8_t>(all);
  }

  uint64_t total() const { return total_; }

  // Stores the size for a query: fails when it does not fit a signed 64-bit integer.
  DaxStatus store(uint64_t* bytes) const {
    if (overflow_ || total_ > INT64_MAX) return DAX_STS_BUFFER_OVERFLOW;
    *bytes = total_;
    return DAX_STS_OK;
  }

 private:
  static constexpr uint64_t kGrain = 128;
  uint64_t total_ = 0;
  bool overflow_ = false;
};

}  // namespace dax
