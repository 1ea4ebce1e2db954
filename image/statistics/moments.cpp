#include "daxi/moments.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/statistics/moments_neon.h"
#include "image/statistics/moments_portable.h"

namespace dax {
namespace {

__extension__ using Int128 = __int128;

constexpr int32_t kMaxSide = 1 << 20;  // the greatest third moment has 117 bits

// Of the pixels of a row: the sums of v, x v, x^2 v and x^3 v.
template <class N>
struct RowSums {
  N of[4];
};

// Moments about one point.
template <class N>
struct Powers {
  N m00 = 0, m10 = 0, m01 = 0, m20 = 0, m11 = 0, m02 = 0, m30 = 0, m21 = 0, m12 = 0, m03 = 0;

  // About a point that lies (a, b) from here.
  Powers about(N a, N b) const {
    return {m00,
            m10 - a * m00,
            m01 - b * m00,
            m20 - 2 * a * m10 + a * a * m00,
            m11 - a * m01 - b * m10 + a * b * m00,
            m02 - 2 * b * m01 + b * b * m00,
            m30 - 3 * a * m20 + 3 * a * a * m10 - a * a * a * m00,
            m21 - 2 * a * m11 + a * a * m01 - b * m20 + 2 * a * b * m10 - a * a * b * m00,
            m12 - 2 * b * m11 + b * b * m10 - a * m02 + 2 * a * b * m01 - a * b * b * m00,
            m03 - 3 * b * m02 + 3 * b * b * m01 - b * b * b * m00};
  }

  void addRow(const RowSums<N>& sums, N y) {
    const N(&row)[4] = sums.of;
    m00 += row[0];
    m10 += row[1];
    m01 += y * row[0];
    m20 += row[2];
    m11 += y * row[1];
    m02 += y * y * row[0];
    m30 += row[3];
    m21 += y * row[2];
    m12 += y * y * row[1];
    m03 += y * y * y * row[0];
  }
};

// Sums of v, u v, u^2 v and u^3 v; u counts columns from some origin.
struct PartPowers {
  uint64_t m[4] = {};

  // Of pixels side by side, u being 1, 2, ...
  template <class T>
  PartPowers(const T* pixels, int32_t count) {
    uint64_t s[4] = {};
    for (int32_t i = count - 1; i >= 0; --i) {
      s[0] += pixels[i];
      for (int p = 1; p < 4; ++p) s[p] += s[p - 1];
    }
    setSumsOfSums(s);
  }

  // Of the pixels in the columns of blocks, u being kMomentLanes times the number of a block, from 1 on, and the column
  // in it.
  explicit PartPowers(const ColumnSums& columns) {
    constexpr uint64_t kWidth = kMomentLanes;
    for (uint64_t i = 0; i < kWidth; ++i) {
      const uint64_t s[4] = {columns.s[0][i], columns.s[1][i], columns.s[2][i], columns.s[3][i]};
      PartPowers column;
      column.setSumsOfSums(s);
      const uint64_t *const c = column.m, first = kWidth * c[1], second = kWidth * kWidth * c[2];
      m[0] += c[0];
      m[1] += i * c[0] + first;
      m[2] += i * i * c[0] + 2 * i * first + second;
      m[3] += i * i * i * c[0] + 3 * i * i * first + 3 * i * second + kWidth * kWidth * kWidth * c[3];
    }
  }

  // Adds these to sums of powers of x, where the origin lies at x = a.
  void addTo(Int128 (&row)[4], Int128 a) const {
    row[0] += m[0];
    row[1] += a * m[0] + m[1];
    row[2] += a * a * m[0] + 2 * a * m[1] + m[2];
    row[3] += a * a * a * m[0] + 3 * a * a * m[1] + 3 * a * m[2] + m[3];
  }

 private:
  PartPowers() = default;

  // Sums of sums from the last pixel to the first are sums of v times 1, u, u (u + 1) / 2 and u (u + 1) (u + 2) / 6.
  void setSumsOfSums(const uint64_t (&s)[4]) {
    m[0] = s[0], m[1] = s[1], m[2] = 2 * s[2] - s[1], m[3] = 6 * s[3] - 3 * m[2] - 2 * s[1];
  }
};

template <class T>
RowSums<Int128> sumsOfRow(const T* from, int32_t width, bool neon) {
  auto* const sumsOf = neon ? neon::columnSums<T> : portable::columnSums<T>;
  RowSums<Int128> row = {};
  int32_t x = 0;
  while (x <= width - kMomentLanes) {
    const int32_t blocks = std::min(kMaxMomentBlocks<T>, (width - x) / kMomentLanes);
    PartPowers(sumsOf(from + x, blocks)).addTo(row.of, x - kMomentLanes);
    x += blocks * kMomentLanes;
  }
  PartPowers(from + x, width - x).addTo(row.of, x - 1);
  return row;
}

// Floats, x counted from a column.
RowSums<double> sumsOfRow(const float* from, int32_t width, int32_t centre) {
  constexpr int32_t kLanes = 4;
  double lanes[4][kLanes] = {};
  const auto add = [&](int32_t x, int32_t lane) {
    const double along = x - centre;
    double term = from[x];
    for (auto& power : lanes) {
      power[lane] += term;
      term *= along;
    }
  };
  int32_t x = 0;
  for (; x <= width - kLanes; x += kLanes) {
    for (int32_t lane = 0; lane < kLanes; ++lane) add(x + lane, lane);
  }
  for (; x < width; ++x) add(x, x % kLanes);
  RowSums<double> row;
  for (int p = 0; p < 4; ++p) row.of[p] = (lanes[p][0] + lanes[p][2]) + (lanes[p][1] + lanes[p][3]);
  return row;
}

template <class N>
struct HeldRows {
  explicit HeldRows(DaxiSize size) : rows(layout.add<RowSums<N>>(static_cast<uint64_t>(size.height))) {}
  BufferLayout layout;
  BufferPiece<RowSums<N>> rows;
};

// A region, and where its rows are summed up: on the calling thread, or on a pool that leaves the sums of all rows in
// `held`.
template <class T>
struct MomentsOf {
  const T* src;
  int32_t srcStep;
  DaxiSize size;
  PoolThreads on;
  void* buffer;

  // rowSums(row) -> RowSums; rows count from `centre`.
  template <class N, class SumsOfRow>
  DaxStatus add(Powers<N>& powers, int32_t centre, const SumsOfRow& rowSums) const {
    if (!buffer) {
      for (int32_t y = 0; y < size.height; ++y) powers.addRow(rowSums(rowAt(src, srcStep, y)), y - centre);
      return DAX_STS_OK;
    }
    auto* const held = HeldRows<N>(size).rows.in(buffer);
    DAX_REQUIRE_OK(runRows(on, size.height, [&](int32_t first, int32_t end) {
      for (int32_t y = first; y < end; ++y) held[y] = rowSums(rowAt(src, srcStep, y));
    }));
    for (int32_t y = 0; y < size.height; ++y) powers.addRow(held[y], y - centre);
    return DAX_STS_OK;
  }
};

Powers<double> rounded(const Powers<Int128>& m) {
  const auto real = [](Int128 value) { return static_cast<double>(value); };
  return {real(m.m00), real(m.m10), real(m.m01), real(m.m20), real(m.m11),
          real(m.m02), real(m.m30), real(m.m21), real(m.m12), real(m.m03)};
}

void setHu(DaxiMoments& m) {
  const double sum = m.nu20 + m.nu02, difference = m.nu20 - m.nu02;
  const double a = m.nu30 - 3 * m.nu12, b = 3 * m.nu21 - m.nu03;
  const double c = m.nu30 + m.nu12, d = m.nu21 + m.nu03;
  const double cc = c * c, dd = d * d;
  m.hu[0] = sum;
  m.hu[1] = difference * difference + 4 * m.nu11 * m.nu11;
  m.hu[2] = a * a + b * b;
  m.hu[3] = cc + dd;
  m.hu[4] = a * c * (cc - 3 * dd) + b * d * (3 * cc - dd);
  m.hu[5] = difference * (cc - dd) + 4 * m.nu11 * c * d;
  m.hu[6] = b * c * (cc - 3 * dd) - a * d * (3 * cc - dd);
}

// From raw moments and from those about the centroid, but for what the centroid's rounding to a pixel leaves.
DaxiMoments momentsFrom(const Powers<double>& raw, const Powers<double>& nearCentroid) {
  const Powers<double> mu = nearCentroid.about(nearCentroid.m10 / raw.m00, nearCentroid.m01 / raw.m00);
  const double second = raw.m00 * raw.m00, third = second * std::sqrt(raw.m00);
  DaxiMoments m = {};
  m.m00 = raw.m00, m.m10 = raw.m10, m.m01 = raw.m01, m.m20 = raw.m20, m.m11 = raw.m11;
  m.m02 = raw.m02, m.m30 = raw.m30, m.m21 = raw.m21, m.m12 = raw.m12, m.m03 = raw.m03;
  m.x = raw.m10 / raw.m00, m.y = raw.m01 / raw.m00;
  m.mu20 = mu.m20, m.mu11 = mu.m11, m.mu02 = mu.m02;
  m.mu30 = mu.m30, m.mu21 = mu.m21, m.mu12 = mu.m12, m.mu03 = mu.m03;
  m.nu20 = mu.m20 / second, m.nu11 = mu.m11 / second, m.nu02 = mu.m02 / second;
  m.nu30 = mu.m30 / third, m.nu21 = mu.m21 / third, m.nu12 = mu.m12 / third, m.nu03 = mu.m03 / third;
  setHu(m);
  return m;
}

DaxStatus checkMoments(const void* src, int32_t srcStep, DaxiSize size, const DaxiMoments* moments) {
  DAX_REQUIRE(src && moments, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && atMost(size, kMaxSide), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class T>
DaxStatus momentsOf(const MomentsOf<T>& region, DaxiMoments* moments) {
  Powers<Int128> raw;
  const auto rowSums = [width = region.size.width, neon = usesNeon(currentIsa())](const T* row) {
    return sumsOfRow(row, width, neon);
  };
  DAX_REQUIRE_OK(region.add(raw, 0, rowSums));
  DAX_REQUIRE(raw.m00 > 0, DAX_STS_DEGENERATE);
  const auto nearest = [&](Int128 first) { return (2 * first + raw.m00) / (2 * raw.m00); };
  *moments = momentsFrom(rounded(raw), rounded(raw.about(nearest(raw.m10), nearest(raw.m01))));
  return DAX_STS_OK;
}

// The pixel next to a coordinate.
int32_t nearestPixel(double centroid, int32_t side) {
  return static_cast<int32_t>(std::rint(std::clamp(centroid, 0.0, side - 1.0)));
}

// Floats: the second pass is about the pixel next to the centroid.
DaxStatus momentsOf(const MomentsOf<float>& region, DaxiMoments* moments) {
  const DaxiSize size = region.size;
  const auto powersAbout = [&](Powers<double>& powers, int32_t x, int32_t y) {
    return region.add(powers, y, [=](const float* row) { return sumsOfRow(row, size.width, x); });
  };
  Powers<double> raw, central;
  DAX_REQUIRE_OK(powersAbout(raw, 0, 0));
  // Where it is finite, so are all pixels, and the other moments.
  DAX_REQUIRE(raw.m00 > 0 && raw.m00 <= DBL_MAX, DAX_STS_DEGENERATE);
  const int32_t x = nearestPixel(raw.m10 / raw.m00, size.width), y = nearestPixel(raw.m01 / raw.m00, size.height);
  DAX_REQUIRE_OK(powersAbout(central, x, y));
  *moments = momentsFrom(raw, central);
  return DAX_STS_OK;
}

template <class T>
DaxStatus checkedMoments(const MomentsOf<T>& region, DaxiMoments* moments) {
  DAX_REQUIRE_OK(checkMoments(region.src, region.srcStep, region.size, moments));
  return momentsOf(region, moments);
}

template <class T>
using MomentNumber = std::conditional_t<std::is_integral_v<T>, Int128, double>;

template <class T>
DaxStatus storeMomentsBytes(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && atMost(size, kMaxSide), DAX_STS_BAD_PARAM);
  return HeldRows<MomentNumber<T>>(size).layout.store(bytes);
}

}  // namespace
}  // namespace dax

#define DAX_MOMENTS(SUFFIX, T)                                                                                         \
  DaxStatus DAXI_Moments_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, DaxiMoments* moments) {          \
    return dax::checkedMoments<T>({src, srcStep, size, {}, nullptr}, moments);                                         \
  }                                                                                                                    \
  DaxStatus DAXI_Moments_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize size, \
                                           DaxiMoments* moments, void* buffer) {                                       \
    DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);                                                                         \
    return dax::checkedMoments<T>({src, srcStep, size, {pool, threads}, buffer}, moments);                             \
  }                                                                                                                    \
  DaxStatus DAXI_MomentsBufferSize_##SUFFIX##_MT(DaxiSize size, uint64_t* bytes) {                                     \
    return dax::storeMomentsBytes<T>(size, bytes);                                                                     \
  }
DAX_MOMENTS(8u, uint8_t)
DAX_MOMENTS(16u, uint16_t)
DAX_MOMENTS(32f, float)
#undef DAX_MOMENTS
