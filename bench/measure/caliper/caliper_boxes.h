// Boxes to measure in.
#pragma once

#include <cstdint>
#include <vector>

#include "bench/support/image.h"
#include "daxi/caliper.h"

namespace bench {

constexpr int32_t kUsualBoxes = 1000, kBoxWidth = 64, kBoxHeight = 16;
inline const int32_t kBoxes = scaled(kUsualBoxes);

// The amount is the number of boxes, not the image.
inline Image<uint8_t> boxedImage() {
  return noise<uint8_t>(kUsualSize);
}

// All over the image, well inside, in all directions or upright.
inline std::vector<CaliperBox> boxes(bool turned) {
  std::vector<CaliperBox> all;
  for (int32_t i = 0; i < kBoxes; ++i) {
    const auto x = static_cast<float>(60 + i * 7919 % 1800), y = static_cast<float>(60 + i * 104729 % 960);
    all.push_back({x, y, kBoxWidth, kBoxHeight, turned ? static_cast<float>(i % 628) / 100 - 3.14f : 0});
  }
  return all;
}

}  // namespace bench
