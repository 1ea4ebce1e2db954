#include "image/statistics/integral.h"

#include <algorithm>
#include <limits>

#include "daxi/integral.h"
#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/statistics/integral_neon.h"
#include "image/statistics/integral_portable.h"

namespace dax {
namespace {

// Whether the sum of all pixels fits the type of the result, whatever they are.
template <class Map, class T, class D>
bool canAddUp(DaxiSize size) {
  if constexpr (std::is_integral_v<T>) {
    using Of = std::numeric_limits<T>;
    const auto greatest = std::max(Map::of(int64_t{Of::max()}), Map::of(std::is_signed_v<T> ? -int64_t{Of::min()} : 0));
    return pixelsOf(size) <= uint64_t{std::numeric_limits<D>::max()} / static_cast<uint64_t>(greatest);
  } else {
    return true;
  }
}

template <class Map, class T, class D>
DaxStatus checkIntegral(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE((canAddUp<Map, T, D>(size)), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep) && int64_t{size.width} + 1 <= dstStep, DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class Row, class T, class D>
void integralRows(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, const Row& row) {
  std::fill_n(dst, size.width + 1, D{0});
  for (int32_t y = 0; y < size.height; ++y) {
    const D* const above = rowAt(dst, dstStep, y);
    D* const to = rowAt(dst, dstStep, y + 1);
    to[0] = 0;
    row(rowAt(src, srcStep, y), above + 1, to + 1, size.width);
  }
}

template <class Map, class T, class D>
void integralRowOf(const T* from, const D* above, D* to, int32_t width) {
  portable::integralRow<Map>(from, above, to, width);
}

auto byteRow(int32_t isa) {
  return usesNeon(isa) ? neon::integralOfBytes : portable::integralOfBytes;
}

// Sums of rows first, then of columns: the additions of a pixel and their order stay.
template <class Row, class T, class D>
DaxStatus integralOnPool(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                         const Row& row) {
  std::fill_n(dst, size.width + 1, D{0});
  DAX_REQUIRE_OK(runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      D* const to = rowAt(dst, dstStep, y + 1);
      to[0] = 0;
      row(rowAt(src, srcStep, y), dst + 1, to + 1, size.width);
    }
  }));
  return runRows(on, size.width, [&](int32_t first, int32_t end) {
    for (int32_t y = 1; y < size.height; ++y) {
      const D* const above = rowAt(dst, dstStep, y) + 1;
      D* const __restrict to = rowAt(dst, dstStep, y + 1) + 1;
      for (int32_t x = first; x < end; ++x) to[x] += above[x];
    }
  });
}

template <class Map, class Row, class T, class D>
DaxStatus computeIntegral(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                          const Row& row) {
  DAX_REQUIRE_OK((checkIntegral<Map>(src, srcStep, dst, dstStep, size)));
  if (hasPool(on.pool, on.threads)) return integralOnPool(on, src, srcStep, dst, dstStep, size, row);
  integralRows(src, srcStep, dst, dstStep, size, row);
  return DAX_STS_OK;
}

}  // namespace

void integral(const uint8_t* src, int32_t srcStep, uint32_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  integralRows(src, srcStep, dst, dstStep, size, byteRow(isa));
}

}  // namespace dax

#define DAX_INTEGRAL(NAME, TYPES, MAP, T, D, ROW)                                                                \
  DaxStatus DAXI_##NAME##_##TYPES##_C1R(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size) { \
    return dax::computeIntegral<dax::MAP>({}, src, srcStep, dst, dstStep, size, ROW);                            \
  }                                                                                                              \
  DaxStatus DAXI_##NAME##_##TYPES##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst,  \
                                           int32_t dstStep, DaxiSize size) {                                     \
    return dax::computeIntegral<dax::MAP>({pool, threads}, src, srcStep, dst, dstStep, size, ROW);               \
  }
#define DAX_PORTABLE_INTEGRAL(NAME, TYPES, MAP, T, D) \
  DAX_INTEGRAL(NAME, TYPES, MAP, T, D, (dax::integralRowOf<dax::MAP, T, D>))
DAX_INTEGRAL(Integral, 8u32u, Itself, uint8_t, uint32_t, dax::byteRow(dax::currentIsa()))
DAX_PORTABLE_INTEGRAL(Integral, 8u64u, Itself, uint8_t, uint64_t)
DAX_PORTABLE_INTEGRAL(Integral, 16u64u, Itself, uint16_t, uint64_t)
DAX_PORTABLE_INTEGRAL(Integral, 16s64s, Itself, int16_t, int64_t)
DAX_PORTABLE_INTEGRAL(Integral, 32f64f, Itself, float, double)
DAX_PORTABLE_INTEGRAL(IntegralSqr, 8u64u, Squared, uint8_t, uint64_t)
DAX_PORTABLE_INTEGRAL(IntegralSqr, 16u64u, Squared, uint16_t, uint64_t)
DAX_PORTABLE_INTEGRAL(IntegralSqr, 16s64u, Squared, int16_t, uint64_t)
DAX_PORTABLE_INTEGRAL(IntegralSqr, 32f64f, Squared, float, double)
#undef DAX_PORTABLE_INTEGRAL
#undef DAX_INTEGRAL
