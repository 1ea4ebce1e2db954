#include "daxi/yuv.h"

#include <algorithm>
#include <array>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/camera/yuv_neon.h"
#include "image/camera/yuv_portable.h"

namespace dax {
namespace {

struct YuvPlane {
  const uint8_t* data;
  int32_t step;
  int64_t rowBytes;
  int32_t rowsOfSample;  // 2: a row for two of the image

  const uint8_t* row(int32_t y) const { return rowAt(data, step, y / rowsOfSample); }
};

int64_t halfUp(int32_t side) {
  return (int64_t{side} + 1) / 2;
}

template <size_t kPlanes>
DaxStatus checkYuv(const std::array<YuvPlane, kPlanes>& planes, const uint8_t* dst, int32_t dstStep, int32_t channels,
                   DaxiSize size) {
  const auto hasData = [](const YuvPlane& p) { return p.data != nullptr; };
  const auto hasStep = [](const YuvPlane& p) { return p.rowBytes <= p.step; };
  DAX_REQUIRE(std::all_of(planes.begin(), planes.end(), hasData) && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(std::all_of(planes.begin(), planes.end(), hasStep) && rowFits(size.width, dstStep, channels),
              DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// rowOf(y): where the samples of a row begin.
template <class Format, class Order, size_t kPlanes, class RowOf>
DaxStatus decodeYuv(PoolThreads on, const std::array<YuvPlane, kPlanes>& planes, RowOf rowOf, uint8_t* dst,
                    int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  DAX_REQUIRE_OK(checkYuv(planes, dst, dstStep, 3, size));
  DAX_REQUIRE_OK(checkYCbCr(standard, range));
  const YCbCrDecoder by(standard, range);
  using Row = void (*)(const YuvRow&, uint8_t*, int32_t, const YCbCrDecoder&);
  const Row row =
      usesNeon(currentIsa()) ? Row{neon::decodeYuvRow<Format, Order>} : Row{portable::decodeYuvRow<Format, Order>};
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) row(rowOf(y), rowAt(dst, dstStep, y), size.width, by);
  });
}

template <class Format, class Order>
DaxStatus decodeSemiplanar(PoolThreads on, const uint8_t* y, int32_t yStep, const uint8_t* chroma, int32_t chromaStep,
                           uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  const std::array<YuvPlane, 2> planes = {{{y, yStep, size.width, 1}, {chroma, chromaStep, 2 * halfUp(size.width), 2}}};
  const auto rowOf = [&](int32_t i) {
    const uint8_t* const pairs = planes[1].row(i);
    return Format::kUFirst ? YuvRow{planes[0].row(i), pairs, pairs + 1} : YuvRow{planes[0].row(i), pairs + 1, pairs};
  };
  return decodeYuv<Format, Order>(on, planes, rowOf, dst, dstStep, size, standard, range);
}

template <class Order>
DaxStatus decodePlanar(PoolThreads on, const uint8_t* y, int32_t yStep, const uint8_t* u, int32_t uStep,
                       const uint8_t* v, int32_t vStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                       int32_t range) {
  const int64_t half = halfUp(size.width);
  const std::array<YuvPlane, 3> planes = {{{y, yStep, size.width, 1}, {u, uStep, half, 2}, {v, vStep, half, 2}}};
  const auto rowOf = [&](int32_t i) { return YuvRow{planes[0].row(i), planes[1].row(i), planes[2].row(i)}; };
  return decodeYuv<I420, Order>(on, planes, rowOf, dst, dstStep, size, standard, range);
}

template <bool kYFirst, class Order>
DaxStatus decodePacked(PoolThreads on, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                       DaxiSize size, int32_t standard, int32_t range) {
  const std::array<YuvPlane, 1> planes = {{{src, srcStep, 4 * halfUp(size.width), 1}}};
  const auto rowOf = [&](int32_t i) {
    const uint8_t* const row = planes[0].row(i);
    return kYFirst ? YuvRow{row, row + 1, row + 3} : YuvRow{row + 1, row, row + 2};
  };
  return decodeYuv<PackedYuv, Order>(on, planes, rowOf, dst, dstStep, size, standard, range);
}

// Levels of Y as grey: in video range ((y - 16) 255 + 109) div 219 is the nearest integer.
template <int32_t kDistance, int32_t kOffset>
DaxStatus grayOfY(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t range) {
  const int64_t rowBytes = kDistance == 1 ? size.width : 4 * halfUp(size.width);
  DAX_REQUIRE_OK(checkYuv(std::array<YuvPlane, 1>{{{src, srcStep, rowBytes, 1}}}, dst, dstStep, 1, size));
  DAX_REQUIRE_OK(checkYCbCr(DAXI_COLOUR_BT601, range));
  uint8_t levels[256];
  for (int32_t y = 0; y < 256; ++y) {
    const int32_t video = (std::clamp(y, 16, 235) * 255 - 16 * 255 + 109) / 219;
    levels[y] = static_cast<uint8_t>(range == DAXI_COLOUR_FULL ? y : video);
  }
  for (int32_t y = 0; y < size.height; ++y) {
    const uint8_t* const from = rowAt(src, srcStep, y) + kOffset;
    uint8_t* const to = rowAt(dst, dstStep, y);
    for (ptrdiff_t x = 0; x < size.width; ++x) to[x] = levels[from[kDistance * x]];
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_SEMIPLANAR(NAME, FORMAT, ORDER, CHROMA)                                                                 \
  DaxStatus DAXI_##NAME##_8u_P2C3R(const uint8_t* y, int32_t yStep, const uint8_t* CHROMA, int32_t CHROMA##Step,    \
                                   uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) { \
    return dax::decodeSemiplanar<dax::FORMAT, dax::ORDER>({}, y, yStep, CHROMA, CHROMA##Step, dst, dstStep, size,   \
                                                          standard, range);                                         \
  }                                                                                                                 \
  DaxStatus DAXI_##NAME##_8u_P2C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,                \
                                      const uint8_t* CHROMA, int32_t CHROMA##Step, uint8_t* dst, int32_t dstStep,   \
                                      DaxiSize size, int32_t standard, int32_t range) {                             \
    return dax::decodeSemiplanar<dax::FORMAT, dax::ORDER>({pool, threads}, y, yStep, CHROMA, CHROMA##Step, dst,     \
                                                          dstStep, size, standard, range);                          \
  }
#define DAX_PLANAR(NAME, ORDER)                                                                                        \
  DaxStatus DAXI_##NAME##_8u_P3C3R(const uint8_t* y, int32_t yStep, const uint8_t* u, int32_t uStep, const uint8_t* v, \
                                   int32_t vStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,      \
                                   int32_t range) {                                                                    \
    return dax::decodePlanar<dax::ORDER>({}, y, yStep, u, uStep, v, vStep, dst, dstStep, size, standard, range);       \
  }                                                                                                                    \
  DaxStatus DAXI_##NAME##_8u_P3C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep, const uint8_t* u, \
                                      int32_t uStep, const uint8_t* v, int32_t vStep, uint8_t* dst, int32_t dstStep,   \
                                      DaxiSize size, int32_t standard, int32_t range) {                                \
    return dax::decodePlanar<dax::ORDER>({pool, threads}, y, yStep, u, uStep, v, vStep, dst, dstStep, size, standard,  \
                                         range);                                                                       \
  }
#define DAX_PAIRS(NAME, Y_FIRST, ORDER)                                                                                \
  DaxStatus DAXI_##NAME##_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,  \
                                   int32_t standard, int32_t range) {                                                  \
    return dax::decodePacked<Y_FIRST, dax::ORDER>({}, src, srcStep, dst, dstStep, size, standard, range);              \
  }                                                                                                                    \
  DaxStatus DAXI_##NAME##_8u_C2C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst, \
                                      int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {               \
    return dax::decodePacked<Y_FIRST, dax::ORDER>({pool, threads}, src, srcStep, dst, dstStep, size, standard, range); \
  }
#define DAX_YUV_ORDER(TO, ORDER)              \
  DAX_SEMIPLANAR(NV12To##TO, Nv12, ORDER, uv) \
  DAX_SEMIPLANAR(NV21To##TO, Nv21, ORDER, vu) \
  DAX_PLANAR(I420To##TO, ORDER)               \
  DAX_PAIRS(YUYVTo##TO, true, ORDER)          \
  DAX_PAIRS(UYVYTo##TO, false, ORDER)
DAX_YUV_ORDER(RGB, RgbOrder)
DAX_YUV_ORDER(BGR, BgrOrder)
#undef DAX_YUV_ORDER
#undef DAX_PAIRS
#undef DAX_PLANAR
#undef DAX_SEMIPLANAR

DaxStatus DAXI_YToGray_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                              int32_t range) {
  return dax::grayOfY<1, 0>(src, srcStep, dst, dstStep, size, range);
}
DaxStatus DAXI_YUYVToGray_8u_C2C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t range) {
  return dax::grayOfY<2, 0>(src, srcStep, dst, dstStep, size, range);
}
DaxStatus DAXI_UYVYToGray_8u_C2C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t range) {
  return dax::grayOfY<2, 1>(src, srcStep, dst, dstStep, size, range);
}
