// Rate and latencies of a stream of frames.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace live {

// The latest values of a quantity, and their percentiles.
class Percentiles {
 public:
  void add(double value) {
    if (values_.size() < kMax) {
      values_.push_back(value);
    } else {
      values_[next_] = value;
      next_ = (next_ + 1) % kMax;
    }
  }

  // Nearest rank: the smallest value that `percent` of the values do not exceed; 0 without values.
  double at(double percent) const {
    if (values_.empty()) return 0;
    std::vector<double> sorted = values_;
    const auto count = static_cast<double>(sorted.size());
    const auto rank = static_cast<std::ptrdiff_t>(std::max(1.0, std::ceil(percent / 100 * count))) - 1;
    std::nth_element(sorted.begin(), sorted.begin() + rank, sorted.end());
    return sorted[static_cast<size_t>(rank)];
  }

 private:
  static constexpr size_t kMax = 10000;
  std::vector<double> values_;
  size_t next_ = 0;
};

struct Statistics {
  uint64_t frames = 0;         // inspected
  uint64_t damaged = 0;        // incomplete, or not in the requested format
  uint64_t dropped = 0;        // sent by the camera but never received
  uint64_t reconnections = 0;  // after a loss
  uint64_t firstNumber = 0;    // number of the first and the latest frame received since it was opened,
  uint64_t lastNumber = 0;     // since it was opened
  double connectedSeconds = 0;
  Percentiles inspection;  // milliseconds in the library
  Percentiles latency;     // milliseconds from a frame's first packet to its result

  double rate() const { return connectedSeconds > 0 ? static_cast<double>(frames) / connectedSeconds : 0; }
};

}  // namespace live
