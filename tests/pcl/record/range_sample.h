// Range records for tests, in memory of their own.
#pragma once

#include <cstdint>
#include <vector>

#include "dax3dpcl/range_record.h"

namespace dax::test {

// A valid record with every part that is asked for; values and pixels differ from place to place.
struct RangeSample {
  // colourFormat: 200, 201, or 0 for none.
  RangeSample(int32_t width, int32_t height, uint32_t type = DAX3D_RANGE_WITH_MASK, uint32_t colourFormat = 0)
      : values(count(width, height)), mask(count(width, height)), colour(3 * count(width, height)) {
    for (size_t i = 0; i < values.size(); ++i) {
      values[i] = static_cast<int16_t>(i * 257 - 300);
      mask[i] = i % 3 ? 255 : 0;
      for (size_t k = 0; k < 3; ++k) colour[3 * i + k] = static_cast<uint8_t>(i * 7 + k);
    }
    record.type = type;
    record.scale = {0.1f, -0.2f, 0.01f};
    record.offset = {-1, 2, 3.5f};
    auto* const calib = reinterpret_cast<double*>(&record.calib);
    for (int i = 0; i < 35; ++i) calib[i] = i + 0.125;
    set(record.range, 3, width, height, width, values.data());
    if (type == DAX3D_RANGE_WITH_MASK) set(record.mask, 1, width, height, width, mask.data());
    if (colourFormat == 201) set(record.colour, 201, width, height, 3 * width, colour.data());
    if (colourFormat == 200) {
      set(record.colour, 200, width, height, width, colour.data());
      for (int i = 1; i < 3; ++i) {
        record.colour.image.step[i] = width;
        record.colour.owner[i] = record.colour.image.plane[i] = colour.data() + static_cast<size_t>(i) * values.size();
      }
    }
  }

  static size_t count(int32_t width, int32_t height) {
    return static_cast<size_t>(width) * static_cast<size_t>(height);
  }

  static void set(DAX3D_IMAGE_SLOT& slot, uint32_t format, int32_t width, int32_t height, int32_t step, void* plane) {
    slot.image = {format, width, height, {step}, {plane}};
    slot.owner[0] = plane;
  }

  DAX3D_RANGE_V4 record = {};
  std::vector<int16_t> values;
  std::vector<uint8_t> mask, colour;
};

}  // namespace dax::test
