#include "image/colour/lab.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "image/colour/colour_matrix.h"
#include "image/colour/colour_rows.h"
#include "image/colour/srgb.h"

namespace dax {
namespace {

constexpr float kXyzUnit16 = 32768;

// As many pixels as a block holds, channel by channel.
struct ColourBlock {
  static constexpr int32_t kCount = 64;
  float c[3][kCount];
};

template <class T>
constexpr float kLevels = std::is_floating_point_v<T> ? 1 : std::numeric_limits<T>::max();

// Stored levels are value * scale + offset.
struct ChannelScale {
  float scale, offset;
};

template <class T>
void loadChannels(const T* src, int32_t count, const ChannelScale (&by)[3], ColourBlock& to) {
  const float s0 = 1 / by[0].scale, s1 = 1 / by[1].scale, s2 = 1 / by[2].scale;
  const float o0 = by[0].offset, o1 = by[1].offset, o2 = by[2].offset;
  for (int32_t i = 0; i < count; ++i) {
    to.c[0][i] = (static_cast<float>(src[3 * i]) - o0) * s0;
    to.c[1][i] = (static_cast<float>(src[3 * i + 1]) - o1) * s1;
    to.c[2][i] = (static_cast<float>(src[3 * i + 2]) - o2) * s2;
  }
}

// Values of integer pixels are far from the limits of 32 bits.
template <class T>
T levelOfChannel(float value, float scale, float offset) {
  const float level = value * scale + offset;
  if constexpr (std::is_floating_point_v<T>) {
    return level;
  } else {
    constexpr int32_t kMax = std::numeric_limits<T>::max();
    return static_cast<T>(std::clamp(static_cast<int32_t>(std::nearbyint(level)), 0, kMax));
  }
}

// Channel `kFirst` of the block comes first in memory; 2 for blue, green, red.
template <int kFirst, class T>
void storeChannels(const ColourBlock& from, int32_t count, const ChannelScale (&by)[3], T* dst) {
  const float s0 = by[0].scale, s1 = by[1].scale, s2 = by[2].scale;
  const float o0 = by[0].offset, o1 = by[1].offset, o2 = by[2].offset;
  for (int32_t i = 0; i < count; ++i) {
    dst[3 * i] = levelOfChannel<T>(from.c[kFirst][i], s0, o0);
    dst[3 * i + 1] = levelOfChannel<T>(from.c[1][i], s1, o1);
    dst[3 * i + 2] = levelOfChannel<T>(from.c[2 - kFirst][i], s2, o2);
  }
}

// Linear light.
template <class Order, class T>
void loadSrgb(const T* src, int32_t count, ColourBlock& to) {
  constexpr int kFirst = Order::kRed;
  if constexpr (std::is_same_v<T, uint8_t>) {
    for (int32_t i = 0; i < count; ++i) {
      to.c[kFirst][i] = kLinearOfBytes[src[3 * i]], to.c[1][i] = kLinearOfBytes[src[3 * i + 1]];
      to.c[2 - kFirst][i] = kLinearOfBytes[src[3 * i + 2]];
    }
  } else {
    constexpr ChannelScale kBy = {kLevels<T>, 0};
    loadChannels(src, count, {kBy, kBy, kBy}, to);
    if (kFirst == 2) std::swap(to.c[0], to.c[2]);
    for (auto& channel : to.c) {
      for (int32_t i = 0; i < count; ++i) channel[i] = linearOfSrgb(channel[i]);
    }
  }
}

template <class Order, class T>
void storeSrgb(ColourBlock& from, int32_t count, T* dst) {
  for (auto& channel : from.c) {
    for (int32_t i = 0; i < count; ++i) channel[i] = srgbOfLinear(channel[i]);
  }
  constexpr ChannelScale kBy = {kLevels<T>, 0};
  storeChannels<Order::kRed>(from, count, {kBy, kBy, kBy}, dst);
}

// Result k is the sum of m[k][j] c[j].
void multiplyBlock(const double (&m)[3][3], ColourBlock& block, int32_t count) {
  float a[3][3];
  for (int k = 0; k < 9; ++k) a[k / 3][k % 3] = static_cast<float>(m[k / 3][k % 3]);
  for (int32_t i = 0; i < count; ++i) {
    const float c0 = block.c[0][i], c1 = block.c[1][i], c2 = block.c[2][i];
    for (int k = 0; k < 3; ++k) block.c[k][i] = (a[k][0] * c0 + a[k][1] * c1) + a[k][2] * c2;
  }
}

// The same for rows that sum to 1: three equal numbers stay exactly what they are.
void mixBlock(const Matrix3& by, ColourBlock& block, int32_t count) {
  float a[3][3];
  for (int k = 0; k < 9; ++k) a[k / 3][k % 3] = static_cast<float>(by.m[k / 3][k % 3]);
  for (int32_t i = 0; i < count; ++i) {
    const float c1 = block.c[1][i], d0 = block.c[0][i] - c1, d2 = block.c[2][i] - c1;
    for (int k = 0; k < 3; ++k) block.c[k][i] = c1 + (a[k][0] * d0 + a[k][2] * d2);
  }
}

template <class T>
constexpr ChannelScale kXyzScale = {std::is_same_v<T, uint16_t> ? kXyzUnit16 : 1, 0};

// Of L, a and b.
template <class T>
constexpr std::array<ChannelScale, 3> labScales() {
  if constexpr (std::is_same_v<T, uint8_t>)
    return {{{2.55f, 0}, {1, 128}, {1, 128}}};
  else if constexpr (std::is_same_v<T, uint16_t>)
    return {{{655.35f, 0}, {256, 32768}, {256, 32768}}};
  else
    return {{{1, 0}, {1, 0}, {1, 0}}};
}

// Between linear light and XYZ by white.
constexpr Matrix3 kPartsOfRgb = [] {
  Matrix3 parts{};
  for (int k = 0; k < 9; ++k) parts.m[k / 3][k % 3] = kXyzOfRgb[k / 3][k % 3] / whitePoint(k / 3);
  return parts;
}();
constexpr Matrix3 kRgbOfParts = inverseOf(kPartsOfRgb.m);

// XYZ by white to Lab and back.
void labOfBlock(ColourBlock& block, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const float x = labOfPart(block.c[0][i]), y = labOfPart(block.c[1][i]), z = labOfPart(block.c[2][i]);
    block.c[0][i] = 116 * y - 16, block.c[1][i] = 500 * (x - y), block.c[2][i] = 200 * (y - z);
  }
}

void blockOfLab(ColourBlock& block, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const float y = (block.c[0][i] + 16) * (1.0f / 116);
    const float x = y + block.c[1][i] * (1.0f / 500), z = y - block.c[2][i] * (1.0f / 200);
    block.c[0][i] = partOfLab(x), block.c[1][i] = partOfLab(y), block.c[2][i] = partOfLab(z);
  }
}

// The matrix between linear levels and XYZ in its unit.
template <class T>
constexpr double kXyzPerLevel = static_cast<double>(kXyzScale<T>.scale) / kLevels<T>;

template <class T, class Exchange>
DaxStatus convertLinear(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                        const double (&m)[3][3], double factor, Exchange exchange) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  ColourMatrix by = {};
  for (int k = 0; k < 9; ++k) by.m[k / 3][k % 3] = m[k / 3][k % 3] * factor;
  exchange(by);
  return timesMatrix(on, from, to, size, by);
}

}  // namespace

// Each works on a block of up to ColourBlock::kCount pixels.
struct SrgbToXyz {
  template <class Order, class T>
  static void block(const T* src, T* dst, int32_t count) {
    ColourBlock block;
    loadSrgb<Order>(src, count, block);
    multiplyBlock(kXyzOfRgb, block, count);
    storeChannels<0>(block, count, {kXyzScale<T>, kXyzScale<T>, kXyzScale<T>}, dst);
  }
};

struct XyzToSrgb {
  template <class Order, class T>
  static void block(const T* src, T* dst, int32_t count) {
    ColourBlock block;
    loadChannels(src, count, {kXyzScale<T>, kXyzScale<T>, kXyzScale<T>}, block);
    multiplyBlock(kRgbOfXyz.m, block, count);
    storeSrgb<Order>(block, count, dst);
  }
};

struct SrgbToLab {
  template <class Order, class T>
  static void block(const T* src, T* dst, int32_t count) {
    constexpr auto kScales = labScales<T>();
    ColourBlock block;
    loadSrgb<Order>(src, count, block);
    mixBlock(kPartsOfRgb, block, count);
    labOfBlock(block, count);
    storeChannels<0>(block, count, {kScales[0], kScales[1], kScales[2]}, dst);
  }
};

struct LabToSrgb {
  template <class Order, class T>
  static void block(const T* src, T* dst, int32_t count) {
    constexpr auto kScales = labScales<T>();
    ColourBlock block;
    loadChannels(src, count, {kScales[0], kScales[1], kScales[2]}, block);
    blockOfLab(block, count);
    mixBlock(kRgbOfParts, block, count);
    storeSrgb<Order>(block, count, dst);
  }
};

template <class Conversion, class Order, class T>
DaxStatus convertLab(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  return convertRows(on, from, to, size, [](const T* s, T* d, int32_t count) {
    for (int32_t x = 0, part; x < count; x += part) {
      part = std::min(count - x, ColourBlock::kCount);
      Conversion::template block<Order>(s + 3 * ptrdiff_t{x}, d + 3 * ptrdiff_t{x}, part);
    }
  });
}

template <class Order, class T>
DaxStatus linearToXyz(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  return convertLinear(on, src, srcStep, dst, dstStep, size, kXyzOfRgb, kXyzPerLevel<T>, [](ColourMatrix& by) {
    if (Order::kRed == 2) {
      for (auto& row : by.m) std::swap(row[0], row[2]);
    }
  });
}

template <class Order, class T>
DaxStatus xyzToLinear(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  return convertLinear(on, src, srcStep, dst, dstStep, size, kRgbOfXyz.m, 1 / kXyzPerLevel<T>, [](ColourMatrix& by) {
    if (Order::kRed == 2) std::swap(by.m[0], by.m[2]);
  });
}

#define DAX_LAB(CONVERSION, ORDER, T) \
  template DaxStatus convertLab<CONVERSION, ORDER, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize);
#define DAX_XYZ(ORDER, T)                                                                          \
  template DaxStatus linearToXyz<ORDER, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize); \
  template DaxStatus xyzToLinear<ORDER, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize); \
  DAX_LAB(SrgbToXyz, ORDER, T)                                                                     \
  DAX_LAB(XyzToSrgb, ORDER, T)
#define DAX_LAB_TYPE(ORDER, T) \
  DAX_LAB(SrgbToLab, ORDER, T) \
  DAX_LAB(LabToSrgb, ORDER, T)
#define DAX_LAB_ORDER(ORDER)    \
  DAX_XYZ(ORDER, uint16_t)      \
  DAX_XYZ(ORDER, float)         \
  DAX_LAB_TYPE(ORDER, uint8_t)  \
  DAX_LAB_TYPE(ORDER, uint16_t) \
  DAX_LAB_TYPE(ORDER, float)
DAX_LAB_ORDER(RgbOrder)
DAX_LAB_ORDER(BgrOrder)
#undef DAX_LAB_ORDER
#undef DAX_LAB_TYPE
#undef DAX_XYZ
#undef DAX_LAB

}  // namespace dax
