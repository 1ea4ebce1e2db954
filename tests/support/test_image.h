// Images for tests: any step, guarded memory that ends with the last pixel of the last row, deterministic contents.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "dax/types.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {

// A small generator (splitmix64): the same numbers on every machine.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t next() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }
  // Uniform in 0..n - 1, well enough.
  int32_t below(int32_t n) { return static_cast<int32_t>(next() % static_cast<uint64_t>(n)); }

 private:
  uint64_t state_;
};

template <class T>
class TestImage {
 public:
  // The last row ends with its last pixel, whatever the padding: reading on would fault.
  TestImage(DaxiSize size, int32_t padding = 0, Guard guard = Guard::after)
      : size_(size),
        step_(size.width + padding),
        pixels_(static_cast<size_t>(step_) * static_cast<size_t>(size.height - 1) + static_cast<size_t>(size.width),
                guard),
        before_(pixels_.size() * sizeof(T)) {}

  T* data() { return pixels_.data(); }
  const T* data() const { return pixels_.data(); }
  int32_t step() const { return step_; }
  DaxiSize size() const { return size_; }
  T* row(int32_t y) { return data() + static_cast<ptrdiff_t>(y) * step_; }
  const T* row(int32_t y) const { return data() + static_cast<ptrdiff_t>(y) * step_; }
  T& at(int32_t x, int32_t y) { return row(y)[x]; }
  const T& at(int32_t x, int32_t y) const { return row(y)[x]; }

  template <class Value>
  TestImage& fill(Value value) {
    for (int32_t y = 0; y < size_.height; ++y) {
      for (int32_t x = 0; x < size_.width; ++x) at(x, y) = static_cast<T>(value(x, y));
    }
    return *this;
  }

  // Random bytes in every pixel, so that every bit pattern of the type occurs.
  TestImage& randomize(uint64_t seed) {
    Random random(seed);
    for (int32_t y = 0; y < size_.height; ++y) {
      for (int32_t x = 0; x < size_.width; ++x) {
        uint64_t bits[2] = {random.next(), random.next()};
        std::memcpy(static_cast<void*>(&at(x, y)), bits, sizeof(T));
      }
    }
    return *this;
  }

  // Remembers all bytes, padding included; then tells whether they, or those of the padding, are still the same.
  void remember() { std::memcpy(before_.data(), pixels_.data(), before_.size()); }
  bool untouched() const { return std::memcmp(before_.data(), pixels_.data(), before_.size()) == 0; }
  bool paddingUntouched() const {
    const size_t padding = static_cast<size_t>(step_ - size_.width) * sizeof(T);
    for (int32_t y = 0; y + 1 < size_.height; ++y) {
      const T* const end = row(y) + size_.width;
      const size_t offset = static_cast<size_t>(end - data()) * sizeof(T);
      if (std::memcmp(end, before_.data() + offset, padding) != 0) return false;
    }
    return true;
  }

 private:
  DaxiSize size_;
  int32_t step_;
  GuardedBuffer<T> pixels_;
  std::vector<uint8_t> before_;
};

template <class T>
bool sameBits(const T& a, const T& b) {
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}

// Whether two images of one size hold the same bits in every pixel.
template <class T>
bool samePixels(const TestImage<T>& a, const TestImage<T>& b) {
  for (int32_t y = 0; y < a.size().height; ++y) {
    if (std::memcmp(a.row(y), b.row(y), static_cast<size_t>(a.size().width) * sizeof(T)) != 0) return false;
  }
  return true;
}

}  // namespace dax::test
