#include "daxi/filter_box.h"

#include <algorithm>
#include <type_traits>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/window/filter_box.h"
#include "image/window/filter_box_columns.h"
#include "image/window/filter_box_portable.h"
#if DAX_HAVE_NEON
#include "image/window/filter_box_neon.h"
#include "image/window/window_sums.h"
#include "image/window/window_sums_neon.h"
#endif

namespace dax {
namespace {

// One sum for every pixel of the longer side: for the running sums of a row, and then for those of as many columns as
// fit.
struct BoxBuffer {
  explicit BoxBuffer(DaxiSize size) : entries(std::max(size.width, size.height)), sums(layout.add<uint32_t>(entries)) {}
  uint32_t entries;
  BufferLayout layout;
  BufferPiece<uint32_t> sums;
};

// Column pass, strip by strip.
template <class Sum>
void boxColumns(Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, Sum* buffer, uint32_t entries,
                [[maybe_unused]] int32_t isa) {
  BoxColumnKernels<Sum> kernels{portable::boxStep<Sum>, portable::addTo<Sum>, portable::subtractInto<Sum>};
#if DAX_HAVE_NEON
  if (usesNeon(isa)) kernels = {neon::boxStep<Sum>, neon::addTo<Sum>, neon::subtractInto<Sum>};
#endif
  const int32_t ringRows = BoxRing<Sum>::rows(radius), chainRows = BoxChains<Sum>::rows(size.height, radius);
  // At least 1, since a window is lower than the image.
  int32_t strip = static_cast<int32_t>(entries) / std::min(ringRows, chainRows);
  if (strip > 16) strip -= strip % 16;
  for (int32_t x = 0; x < size.width;) {
    const BoxStrip<Sum> columns{dst + x, dstStep, size.height, std::min(strip, size.width - x)};
    if (ringRows <= chainRows) {
      BoxRing<Sum>(columns, radius, buffer).run(kernels);
    } else {
      BoxChains<Sum>(columns, radius, buffer).run(kernels);
    }
    x += columns.width;
  }
}

// Row pass. Four rows at a time cannot be done in place, since their sums need the pixels twice.
template <class T, class Sum>
void boxRows(const T* src, int32_t srcStep, Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, Sum* sums,
             [[maybe_unused]] int32_t isa) {
  const auto srcRow = [&](int32_t y) { return rowAt(src, srcStep, y); };
  const auto dstRow = [&](int32_t y) { return rowAt(dst, dstStep, y); };
  int32_t y = 0;
#if DAX_HAVE_NEON
  if constexpr (!std::is_same_v<T, uint8_t>) {
    if (usesNeon(isa) && static_cast<const void*>(src) != dst) {
      for (; y <= size.height - 4; y += 4) {
        neon::boxFourRows<T, Sum>({srcRow(y), srcRow(y + 1), srcRow(y + 2), srcRow(y + 3)},
                                  {dstRow(y), dstRow(y + 1), dstRow(y + 2), dstRow(y + 3)}, size.width, radius);
      }
    }
  }
#endif
  for (; y < size.height; ++y) portable::boxRow(srcRow(y), dstRow(y), size.width, radius, sums);
}

#if DAX_HAVE_NEON
struct BoxStore {
  uint32_t* dst;
  void block(int32_t x, const uint32x4x4_t& sums) const { vst4q_u32(dst + x, sums); }
  void pixel(int32_t x, uint32_t sum) const { dst[x] = sum; }
};

// Columns of 8-bit pixels add up to 16 bits: both passes at once. Two bytes for every column and for the
// window, which is no wider than the image, fit the buffer.
constexpr int32_t kMostByteRows = 257;

void boxBytes(const uint8_t* src, int32_t srcStep, uint32_t* dst, int32_t dstStep, DaxiSize size, int32_t radius,
              uint32_t* buffer) {
  const WindowReach reach(2 * radius + 1);
  const neon::ExtendedColumns<uint16_t> extended{reinterpret_cast<uint16_t*>(buffer), size.width, reach};
  extended.clear();
  forEachWindowRow(ClippedRows<uint8_t>{src, srcStep, size.height}, reach, 0, size.height, extended.columns(),
                   size.width, neon::moveRow<uint8_t>,
                   [&](int32_t y) { extended.slide(BoxStore{rowAt(dst, dstStep, y)}); });
}
#endif

}  // namespace

template <class T, class Sum>
void filterBox(const T* src, int32_t srcStep, Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, void* buffer,
               int32_t isa) {
  const BoxBuffer layout(size);
#if DAX_HAVE_NEON
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (usesNeon(isa) && 2 * radius + 1 <= kMostByteRows) {
      return boxBytes(src, srcStep, dst, dstStep, size, radius, layout.sums.in(buffer));
    }
  }
#endif
  Sum* const sums = reinterpret_cast<Sum*>(layout.sums.in(buffer));
  boxRows(src, srcStep, dst, dstStep, size, radius, sums, isa);
  boxColumns(dst, dstStep, size, radius, sums, layout.entries, isa);
}

#define DAX_BOX_WORKER(T, SUM) \
  template void filterBox<T, SUM>(const T*, int32_t, SUM*, int32_t, DaxiSize, int32_t, void*, int32_t);
DAX_BOX_WORKER(uint8_t, uint32_t)
DAX_BOX_WORKER(int16_t, float)
DAX_BOX_WORKER(uint32_t, uint32_t)
DAX_BOX_WORKER(float, float)
#undef DAX_BOX_WORKER

namespace {

DaxStatus check(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, DaxiSize size, int32_t radius,
                const void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(radius >= 1 && std::min(size.width, size.height) > 2 * int64_t{radius}, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T, class Sum>
DaxStatus box(const T* src, int32_t srcStep, Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, void* buffer) {
  DAX_REQUIRE_OK(check(src, srcStep, dst, dstStep, size, radius, buffer));
  filterBox(src, srcStep, dst, dstStep, size, radius, buffer, currentIsa());
  return DAX_STS_OK;
}

DaxStatus bufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  return BoxBuffer(size).layout.store(bytes);
}

// Sums that wrap around are formed as unsigned numbers.
uint32_t* wrapping(int32_t* sums) {
  return reinterpret_cast<uint32_t*>(sums);
}
const uint32_t* wrapping(const int32_t* pixels) {
  return reinterpret_cast<const uint32_t*>(pixels);
}

}  // namespace
}  // namespace dax

#define DAX_BOX_BUFFER_SIZE(SUFFIX)                                             \
  DaxStatus DAXI_FilterBoxBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) { \
    return dax::bufferSize(size, bytes);                                        \
  }
DAX_BOX_BUFFER_SIZE(8u32s)
DAX_BOX_BUFFER_SIZE(16s32f)
DAX_BOX_BUFFER_SIZE(32s)
DAX_BOX_BUFFER_SIZE(32f)
#undef DAX_BOX_BUFFER_SIZE

DaxStatus DAXI_FilterBox_8u32s_C1R(const uint8_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t radius, void* buffer) {
  return dax::box(src, srcStep, dax::wrapping(dst), dstStep, size, radius, buffer);
}

DaxStatus DAXI_FilterBox_16s32f_C1R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    int32_t radius, void* buffer) {
  return dax::box(src, srcStep, dst, dstStep, size, radius, buffer);
}

DaxStatus DAXI_FilterBox_32s_C1R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t radius, void* buffer) {
  return dax::box(dax::wrapping(src), srcStep, dax::wrapping(dst), dstStep, size, radius, buffer);
}

DaxStatus DAXI_FilterBox_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                 int32_t radius, void* buffer) {
  return dax::box(src, srcStep, dst, dstStep, size, radius, buffer);
}

DaxStatus DAXI_FilterBox_32s_C1IR(int32_t* srcDst, int32_t step, DaxiSize size, int32_t radius, void* buffer) {
  return DAXI_FilterBox_32s_C1R(srcDst, step, srcDst, step, size, radius, buffer);
}

DaxStatus DAXI_FilterBox_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, int32_t radius, void* buffer) {
  return DAXI_FilterBox_32f_C1R(srcDst, step, srcDst, step, size, radius, buffer);
}
