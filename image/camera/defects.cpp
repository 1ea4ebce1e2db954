#include "daxi/defects.h"

#include <algorithm>
#include <cstring>

#include "frame/op2d.h"

namespace dax {
namespace {

constexpr int32_t kDefectReach = 7;

// Sum and number of good pixels; count / 2 added would round halves up, so an odd quotient is looked at.
struct GoodPixels {
  int32_t sum = 0, count = 0;

  int32_t mean() const {
    const int32_t quotient = sum / count, twice = 2 * (sum - quotient * count);
    return quotient + (twice > count || (twice == count && quotient % 2 != 0));
  }
};

template <class T>
struct DefectImage {
  Plane<const T> pixels;
  Plane<const uint8_t> map;
  DaxiSize size;

  bool isGood(int64_t x, int64_t y) const {
    return x >= 0 && y >= 0 && x < size.width && y < size.height && map.data[y * map.step + x] == 0;
  }

  // The nearest good pixels; none where count is 0.
  GoodPixels around(int32_t x, int32_t y, int32_t distance) const {
    GoodPixels found;
    for (int32_t i = 1; i <= kDefectReach && found.count == 0; ++i) {
      const int64_t d = int64_t{i} * distance;
      const int64_t places[4][2] = {{x - d, y}, {x + d, y}, {x, y - d}, {x, y + d}};
      for (const auto& [px, py] : places) {
        if (isGood(px, py)) found.sum += pixels.data[py * pixels.step + px], ++found.count;
      }
    }
    return found;
  }
};

// Good pixels are never written in place, so that what is read is the input.
template <class T>
DaxStatus replaceDefects(const T* src, int32_t srcStep, const uint8_t* map, int32_t mapStep, T* dst, int32_t dstStep,
                         DaxiSize size, int32_t distance, int64_t* unmended) {
  const Plane from{src, srcStep};
  const Plane defects{map, mapStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(unmended, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, defects, to));
  DAX_REQUIRE(distance == 1 || distance == 2, DAX_STS_BAD_PARAM);
  const DefectImage<T> image{from, defects, size};
  *unmended = 0;
  for (int32_t y = 0; y < size.height; ++y) {
    T* const row = rowAt(dst, dstStep, y);
    const uint8_t* const isDefect = rowAt(map, mapStep, y);
    std::memmove(row, rowAt(src, srcStep, y), static_cast<size_t>(size.width) * sizeof(T));
    for (int32_t x = 0; x < size.width; ++x) {
      if (isDefect[x] == 0) continue;
      const GoodPixels good = image.around(x, y, distance);
      if (good.count > 0)
        row[x] = static_cast<T>(good.mean());
      else
        ++*unmended;
    }
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_DEFECTS(SUFFIX, T)                                                                                     \
  DaxStatus DAXI_ReplaceDefects_##SUFFIX##_C1R(const T* src, int32_t srcStep, const uint8_t* map, int32_t mapStep, \
                                               T* dst, int32_t dstStep, DaxiSize size, int32_t distance,           \
                                               int64_t* unmended) {                                                \
    return dax::replaceDefects(src, srcStep, map, mapStep, dst, dstStep, size, distance, unmended);                \
  }
DAX_DEFECTS(8u, uint8_t)
DAX_DEFECTS(16u, uint16_t)
#undef DAX_DEFECTS
