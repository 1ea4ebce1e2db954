#define DAX_SIMD_CONVERTS_NO_NAN
#include <type_traits>

#include "daxi/filter_mean.h"
#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/window/filter_mean.h"
#include "image/window/filter_mean_portable.h"
#include "image/window/window_sums.h"
#if DAX_HAVE_NEON
#include "image/window/filter_mean_neon.h"
#include "image/window/window_sums_neon.h"
#endif

namespace dax {
namespace {

// How many of the pixels around i lie in 0..n - 1.
int32_t countInside(int64_t i, WindowReach reach, int32_t n) {
  const int64_t first = std::max<int64_t>(i - reach.before, 0), last = std::min<int64_t>(i + reach.after, n - 1);
  return static_cast<int32_t>(last - first + 1);
}

template <class T>
struct ClippedMean {
  ClippedRows<T> rows;
  T* dst;
  int32_t dstStep;
  DaxiSize size, mask;

  WindowReach reachX() const { return WindowReach(mask.width); }
  WindowReach reachY() const { return WindowReach(mask.height); }
  T* dstRow(int32_t y) const { return rowAt(dst, dstStep, y); }
  int32_t rowsInside(int32_t y) const { return countInside(y, reachY(), size.height); }
};

// 64-bit sums hold every window of an image that the query accepts, and a row of them fits its buffer. Means of floats
// are divided in double precision.
template <class T>
using WideSum = std::conditional_t<std::is_floating_point_v<T>, double, int64_t>;
template <class T>
using Quotient = std::conditional_t<std::is_floating_point_v<T>, double, float>;

template <class T>
void storeMeanIntRow(const ClippedMean<T>& mean, int32_t y, const WideSum<T>* columns) {
  using Sum = WideSum<T>;
  using Real = Quotient<T>;
  T* const dst = mean.dstRow(y);
  const int32_t width = mean.size.width;
  const WindowReach reach = mean.reachX();
  const int64_t rowsInside = mean.rowsInside(y);
  const auto whole = static_cast<Real>(rowsInside * mean.mask.width);
  portable::slide<Sum>(
      columns, reach, width, [&](int64_t i) { return i >= 0 && i < width ? columns[i] : Sum{}; },
      [&](int32_t x, Sum sum, bool inside) {
        const Real count = inside ? whole : static_cast<Real>(rowsInside * countInside(x, reach, width));
        dst[x] = portable::pixelFromMean<T>(static_cast<Real>(sum) / count);
      });
}

template <class T>
void meanIntPortable(const ClippedMean<T>& mean, void* buffer) {
  auto* const columns = static_cast<WideSum<T>*>(buffer);
  forEachWindowRow(mean.rows, mean.reachY(), 0, mean.size.height, columns, mean.size.width,
                   portable::moveRow<WideSum<T>, T>, [&](int32_t y) { storeMeanIntRow(mean, y, columns); });
}

#if DAX_HAVE_NEON
template <class T>
struct MeanIntStore {
  T* dst;
  const float* columnsInside;
  float rowsInside;

  void block(int32_t x, const uint32x4x4_t& sums) const {
    const float32x4x4_t columns = vld4q_f32(columnsInside + x);
    uint32x4x4_t pixels;
    for (int k = 0; k < 4; ++k) {
      const float32x4_t count = vmulq_n_f32(columns.val[k], rowsInside);
      pixels.val[k] = neon::roundedMean<T>(vdivq_f32(neon::floatFromSum<T>(sums.val[k]), count));
    }
    neon::storePixels(dst + x, pixels);
  }
  void pixel(int32_t x, uint32_t sum) const {
    const float count = columnsInside[x] * rowsInside;
    dst[x] = portable::pixelFromMean<T>(portable::floatFromSum<T>(sum) / count);
  }
};

// Whether the sums fit 32 bits (31 for bytes) and those of columns their type, and whether extended columns and a row
// of counts fit the buffer.
template <class T>
bool meanIntFitsNeon(DaxiSize size, DaxiSize mask) {
  const int64_t area = int64_t{mask.width} * mask.height;
  if constexpr (sizeof(T) == 1) return mask.height <= 257 && area <= 1 << 23;
  return size.height >= 2 && area <= 1 << 16;
}

template <class T>
void meanIntNeon(const ClippedMean<T>& mean, void* buffer) {
  using Column = typename neon::WindowLanes<T>::Column;
  const int32_t width = mean.size.width;
  const WindowReach reach = mean.reachX();
  auto* const columnsInside = static_cast<float*>(buffer);
  for (int32_t x = 0; x < width; ++x) columnsInside[x] = static_cast<float>(countInside(x, reach, width));
  const neon::ExtendedColumns<Column> extended{reinterpret_cast<Column*>(columnsInside + width), width, reach};
  extended.clear();
  forEachWindowRow(mean.rows, mean.reachY(), 0, mean.size.height, extended.columns(), width, neon::moveRow<T>,
                   [&](int32_t y) {
                     const auto rowsInside = static_cast<float>(mean.rowsInside(y));
                     extended.slide(MeanIntStore<T>{mean.dstRow(y), columnsInside, rowsInside});
                   });
}
#endif

}  // namespace

template <class T>
void filterMeanInt(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, void* buffer,
                   [[maybe_unused]] int32_t isa) {
  const ClippedMean<T> mean{{src, srcStep, size.height}, dst, dstStep, size, mask};
#if DAX_HAVE_NEON
  if constexpr (std::is_integral_v<T>) {
    if (usesNeon(isa) && meanIntFitsNeon<T>(size, mask)) return meanIntNeon(mean, buffer);
  }
#endif
  meanIntPortable(mean, buffer);
}

#define DAX_MEAN_INT_WORKER(T) \
  template void filterMeanInt<T>(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, void*, int32_t);
DAX_MEAN_INT_WORKER(uint8_t)
DAX_MEAN_INT_WORKER(uint16_t)
DAX_MEAN_INT_WORKER(int16_t)
DAX_MEAN_INT_WORKER(float)
DAX_MEAN_INT_WORKER(double)
#undef DAX_MEAN_INT_WORKER

namespace {

// The size of an integral image of floats, which hosts provide; far less of it is used.
DaxStatus integralSize(DaxiSize size, uint64_t* bytes) {
  BufferLayout layout;
  layout.add<float>((static_cast<uint64_t>(size.width) + 1) * (static_cast<uint64_t>(size.height) + 1));
  uint64_t need;
  DAX_REQUIRE_OK(layout.store(&need));
  DAX_REQUIRE(need <= INT32_MAX, DAX_STS_BUFFER_OVERFLOW);
  *bytes = need;
  return DAX_STS_OK;
}

DaxStatus bufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  return integralSize(size, bytes);
}

template <class T>
DaxStatus meanInt(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, void* buffer) {
  DAX_REQUIRE_OK(checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(maskFits(mask, size), DAX_STS_BAD_PARAM);
  uint64_t bytes;
  DAX_REQUIRE_OK(integralSize(size, &bytes));
  filterMeanInt(src, srcStep, dst, dstStep, size, mask, buffer, currentIsa());
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_MEAN_INT(SUFFIX, T)                                                                                      \
  DaxStatus DAXI_FilterMeanIntBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {                                  \
    return dax::bufferSize(size, bytes);                                                                             \
  }                                                                                                                  \
  DaxStatus DAXI_FilterMeanInt_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                                              DaxiSize mask, void* buffer) {                                         \
    return dax::meanInt(src, srcStep, dst, dstStep, size, mask, buffer);                                             \
  }
DAX_MEAN_INT(8u, uint8_t)
DAX_MEAN_INT(16u, uint16_t)
DAX_MEAN_INT(16s, int16_t)
DAX_MEAN_INT(32f, float)
DAX_MEAN_INT(64f, double)
#undef DAX_MEAN_INT
