// Sums of real numbers in an order that is fixed, and whose error grows with the logarithm of their number: blocks of 4096,
// of which number i is added to lane i modulo 8; lanes are added as ((0 + 4) + (2 + 6)) + ((1 + 5) + (3 + 7)), blocks in pairs,
// these in pairs again, and what has no partner from the last to the first.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace dax {

class PairwiseSum {
 public:
  // Adds value(0), ..., value(count - 1).
  template <class Value>
  void add(int32_t count, const Value& value) {
    for (int32_t x = 0; x < count;) {
      const int32_t whole = std::min(count - x, kBlock - filled_) / kLanes * kLanes;
      if (filled_ % kLanes == 0 && whole > 0) {
        addWhole(x, x + whole, value);
        x += whole;
        filled_ += whole;
      } else {
        lanes_[filled_++ % kLanes] += value(x++);
      }
      if (filled_ == kBlock) closeBlock();
    }
  }

  // A NaN is the positive quiet one, on every machine.
  double total() const {
    double sum = filled_ > 0 ? block() : 0;
    for (int k = 0; k < kLevels; ++k) {
      if (blocks_ >> k & 1) sum = levels_[k] + sum;
    }
    return std::isnan(sum) ? std::numeric_limits<double>::quiet_NaN() : sum;
  }

  uint64_t count() const { return blocks_ * kBlock + static_cast<uint64_t>(filled_); }

 private:
  static constexpr int32_t kLanes = 8, kBlock = 4096;
  static constexpr int kLevels = 52;

  template <class Value>
  void addWhole(int32_t first, int32_t end, const Value& value) {
    double lanes[kLanes];
    std::copy(lanes_, lanes_ + kLanes, lanes);
    for (int32_t x = first; x < end; x += kLanes) {
      for (int32_t i = 0; i < kLanes; ++i) lanes[i] += value(x + i);
    }
    std::copy(lanes, lanes + kLanes, lanes_);
  }

  double block() const {
    const double* const l = lanes_;
    return ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
  }

  void closeBlock() {
    double sum = block();
    int k = 0;
    for (; blocks_ >> k & 1; ++k) sum = levels_[k] + sum;
    levels_[k] = sum;
    ++blocks_;
    filled_ = 0;
    std::fill(lanes_, lanes_ + kLanes, 0.0);
  }

  double lanes_[kLanes] = {};
  double levels_[kLevels] = {};  // level k: 2^k blocks, where that bit of blocks_ is set
  uint64_t blocks_ = 0;
  int32_t filled_ = 0;
};

}  // namespace dax
