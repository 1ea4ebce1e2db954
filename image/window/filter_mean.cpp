#define DAX_SIMD_CONVERTS_NO_NAN
#include "image/window/filter_mean.h"

#include <type_traits>

#include "daxi/filter_mean.h"
#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/window/filter_mean_portable.h"
#include "image/window/window_sums.h"
#if DAX_HAVE_NEON
#include "image/window/filter_mean_neon.h"
#include "image/window/window_sums_neon.h"
#endif

namespace dax {
namespace {

// Rows first..end - 1 of a mean filter; columns left..right - 1 for the kernels that can, else all.
template <class T>
struct MeanBand {
  MirroredRows<T> rows;
  T* dst;
  int32_t dstStep;
  int32_t width;
  DaxiSize mask;
  int32_t first, end;
  int32_t left, right;

  WindowReach reachX() const { return WindowReach(mask.width); }
  WindowReach reachY() const { return WindowReach(mask.height); }
  T* dstRow(int32_t y) const { return rowAt(dst, dstStep, y); }
  auto reciprocal() const {
    using Real = portable::MeanReal<T>;
    return Real(1) / static_cast<Real>(int64_t{mask.width} * mask.height);
  }
};

template <class Sum, class T, class Column>
void storeMeanRow(const MeanBand<T>& band, int32_t y, const Column* columns) {
  T* const dst = band.dstRow(y);
  const auto reciprocal = band.reciprocal();
  portable::slide<Sum>(
      columns, band.reachX(), band.width, [&](int64_t i) { return columns[mirrored(i, band.width)]; },
      [&](int32_t x, Sum sum, bool) {
        dst[x] = portable::pixelFromMean<T>(static_cast<portable::MeanReal<T>>(sum) * reciprocal);
      });
}

template <class Sum, class Column, class T>
void meanPortable(const MeanBand<T>& band, void* buffer) {
  auto* const columns = static_cast<Column*>(buffer);
  forEachWindowRow(band.rows, band.reachY(), band.first, band.end, columns, band.width, portable::moveRow<Column, T>,
                   [&](int32_t y) { storeMeanRow<Sum>(band, y, columns); });
}

// 16-bit pixels: 2^16 rows and the one that enters need wider columns, and have the room for them.
template <class T>
void meanPortable(const MeanBand<T>& band, void* buffer) {
  if constexpr (std::is_floating_point_v<T>) {
    meanPortable<T, T>(band, buffer);
  } else if constexpr (sizeof(T) == 1) {
    meanPortable<uint32_t, uint16_t>(band, buffer);
  } else if (band.mask.height >= 1 << 16) {
    meanPortable<int64_t, int64_t>(band, buffer);
  } else if constexpr (std::is_signed_v<T>) {
    meanPortable<int64_t, int32_t>(band, buffer);
  } else {
    meanPortable<int64_t, uint32_t>(band, buffer);
  }
}

#if DAX_HAVE_NEON
template <class T>
struct MeanStore {
  T* dst;
  float reciprocal;

  void block(int32_t x, const uint32x4x4_t& sums) const {
    uint32x4x4_t pixels;
    for (int k = 0; k < 4; ++k) {
      pixels.val[k] = neon::roundedMean<T>(vmulq_n_f32(neon::floatFromSum<T>(sums.val[k]), reciprocal));
    }
    neon::storePixels(dst + x, pixels);
  }
  void pixel(int32_t x, uint32_t sum) const {
    dst[x] = portable::pixelFromMean<T>(portable::floatFromSum<T>(sum) * reciprocal);
  }
};

// Whether window sums fit 32 bits, and extended columns of them the buffer: those of bytes do in any.
template <class T>
bool meanFitsNeon(DaxiSize size, DaxiSize mask) {
  if constexpr (sizeof(T) == 1) return true;
  return size.height >= 2 && int64_t{mask.width} * mask.height <= 1 << 16;
}

template <class T>
void meanNeon(const MeanBand<T>& band, void* buffer) {
  using Column = typename neon::WindowLanes<T>::Column;
  const WindowReach reach = band.reachX();
  const neon::ExtendedColumns<Column> extended{static_cast<Column*>(buffer), band.right - band.left, reach};
  const bool atLeft = band.left == 0, atRight = band.right == band.width;
  const int32_t from = atLeft ? 0 : band.left - reach.before - 1, to = atRight ? band.width : band.right + reach.after;
  extended.first[0] = 0;
  const MirroredRows<T> rows{band.rows.src + from, band.rows.step, band.rows.height};
  forEachWindowRow(rows, band.reachY(), band.first, band.end, atLeft ? extended.columns() : extended.first, to - from,
                   neon::moveRow<T>, [&](int32_t y) {
                     if (atLeft) extended.mirrorLeft();
                     if (atRight) extended.mirrorRight();
                     extended.slide(MeanStore<T>{band.dstRow(y) + band.left, band.reciprocal()});
                   });
}

// Five rows of sums: of the columns of a row, and of four rows turned.
template <>
bool meanFitsNeon<float>(DaxiSize size, DaxiSize) {
  return size.height >= 5;
}

template <>
void meanNeon(const MeanBand<float>& band, void* buffer) {
  auto* const columns = static_cast<float*>(buffer);
  float* const turned = columns + band.width;
  const WindowReach reach = band.reachY();
  const auto enter = [&](int32_t y) { return band.rows(int64_t{y} + 1 + reach.after); };
  const auto leave = [&](int32_t y) { return band.rows(int64_t{y} - reach.before); };
  startColumns(band.rows, reach, 0, columns, band.width);
  int32_t y = 0;
  for (; y <= band.end - 4; y += 4) {
    neon::turnColumns(columns, {enter(y), enter(y + 1), enter(y + 2), enter(y + 3)},
                      {leave(y), leave(y + 1), leave(y + 2), leave(y + 3)}, turned, band.width);
    neon::meanOfTurned(turned, {band.dstRow(y), band.dstRow(y + 1), band.dstRow(y + 2), band.dstRow(y + 3)}, band.width,
                       band.reachX(), band.reciprocal());
  }
  for (; y < band.end; ++y) {
    storeMeanRow<float>(band, y, columns);
    advanceColumns(band.rows, reach, y, columns, band.width, portable::moveRow<float, float>);
  }
}
#endif

}  // namespace

template <class T>
void filterMean(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, int32_t first,
                int32_t end, void* buffer, [[maybe_unused]] int32_t isa) {
  const MeanBand<T> band{{src, srcStep, size.height}, dst, dstStep, size.width, mask, first, end, 0, size.width};
#if DAX_HAVE_NEON
  if constexpr (!std::is_same_v<T, double>) {
    if (usesNeon(isa) && meanFitsNeon<T>(size, mask)) return meanNeon(band, buffer);
  }
#endif
  meanPortable(band, buffer);
}

#define DAX_MEAN_WORKER(T) \
  template void filterMean<T>(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, int32_t, int32_t, void*, int32_t);
DAX_MEAN_WORKER(uint8_t)
DAX_MEAN_WORKER(uint16_t)
DAX_MEAN_WORKER(int16_t)
DAX_MEAN_WORKER(float)
DAX_MEAN_WORKER(double)
#undef DAX_MEAN_WORKER

namespace {

constexpr int32_t kMostByteMask = 255;

bool byteMaskFits(DaxiSize mask, DaxiSize size) {
  return maskFits(mask, size) && atMost(mask, kMostByteMask);
}

DaxStatus check(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, DaxiSize size, const void* buffer) {
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  return checkImagePair(src, srcStep, dst, dstStep, size);
}

template <class T>
DaxStatus mean(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, void* buffer) {
  DAX_REQUIRE_OK(check(src, srcStep, dst, dstStep, size, buffer));
  DAX_REQUIRE(maskFits(mask, size), DAX_STS_BAD_PARAM);
  filterMean(src, srcStep, dst, dstStep, size, mask, 0, size.height, buffer, currentIsa());
  return DAX_STS_OK;
}

// `Entry` a pixel.
template <class Entry>
DaxStatus bufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  BufferLayout layout;
  layout.add<Entry>(pixelsOf(size));
  return layout.store(bytes);
}

// The narrowest image that is cut into bands.
constexpr int32_t kLeastBandWidth = 9;

// 16-bit entries of one thread; for bands at least an extended row of column sums, w + W.
uint64_t byteEntries(DaxiSize size, DaxiSize mask) {
  const auto width = static_cast<uint64_t>(size.width), maskWidth = static_cast<uint64_t>(mask.width);
  if (size.width < kLeastBandWidth) return pixelsOf(size);
  return width + maskWidth / 2 + (maskWidth / 16 + 1) * 8;
}

// One worker's band, with the worker's slice of the buffer. Workers that write to one line of the cache slow each other
// down by a tenth, and slices lie next to each other: so sums start at a line, which leaves room for half a row at least.
void meanOfBand(MeanBand<uint8_t> band, uint16_t* slice) {
#if DAX_HAVE_NEON
  constexpr int32_t kLeastWidth = 128;
  constexpr uintptr_t kLine = 64;
  if (usesNeon(currentIsa()) && band.width >= std::max(kLeastWidth, 2 * band.mask.width)) {
    auto* const aligned = reinterpret_cast<uint16_t*>((reinterpret_cast<uintptr_t>(slice) + kLine - 1) / kLine * kLine);
    band.right = band.width / 2;
    meanNeon(band, aligned);
    band.left = band.right, band.right = band.width;
    return meanNeon(band, aligned);
  }
#endif
  filterMean(band.rows.src, band.rows.step, band.dst, band.dstStep, {band.width, band.rows.height}, band.mask,
             band.first, band.end, slice, currentIsa());
}

}  // namespace
}  // namespace dax

#define DAX_MEAN_BUFFER_SIZE(SUFFIX, ENTRY)                                      \
  DaxStatus DAXI_FilterMeanBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) { \
    return dax::bufferSize<ENTRY>(size, bytes);                                  \
  }
DAX_MEAN_BUFFER_SIZE(8u, uint32_t)
DAX_MEAN_BUFFER_SIZE(16u, uint32_t)
DAX_MEAN_BUFFER_SIZE(16s, uint32_t)
DAX_MEAN_BUFFER_SIZE(32f, float)
DAX_MEAN_BUFFER_SIZE(64f, double)
#undef DAX_MEAN_BUFFER_SIZE

DaxStatus DAXI_FilterMeanBufferSize_8u_V2(DaxiSize size, DaxiSize mask, uint64_t* bytes) {
  return DAXI_FilterMeanBufferSize_8u_MT(size, mask, 1, bytes);
}

DaxStatus DAXI_FilterMeanBufferSize_8u_MT(DaxiSize size, DaxiSize mask, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::byteMaskFits(mask, size), DAX_STS_BAD_PARAM);
  dax::BufferLayout layout;
  layout.addSlices(dax::byteEntries(size, mask) * sizeof(uint16_t), std::max(threads, 1u));
  return layout.store(bytes);
}

#define DAX_MEAN(SUFFIX, T)                                                                                       \
  DaxStatus DAXI_FilterMean_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                                           DaxiSize mask, void* buffer) {                                         \
    return dax::mean(src, srcStep, dst, dstStep, size, mask, buffer);                                             \
  }
DAX_MEAN(16u, uint16_t)
DAX_MEAN(16s, int16_t)
DAX_MEAN(32f, float)
DAX_MEAN(64f, double)
#undef DAX_MEAN

DaxStatus DAXI_FilterMean_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 DaxiSize mask, void* buffer) {
  return DAXI_FilterMean_8u_C1R_IS(src, srcStep, dst, dstStep, size, mask, buffer, dax::currentIsa());
}

DaxStatus DAXI_FilterMean_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    DaxiSize mask, void* buffer, int32_t isa) {
  DAX_REQUIRE_OK(dax::check(src, srcStep, dst, dstStep, size, buffer));
  DAX_REQUIRE(dax::byteMaskFits(mask, size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isa >= 0, DAX_STS_BAD_ISA);
  dax::filterMean(src, srcStep, dst, dstStep, size, mask, 0, size.height, buffer, isa);
  return DAX_STS_OK;
}

DaxStatus DAXI_FilterMean_8u_C1R_MT(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    DaxiSize mask, void* buffer, uint32_t threads, void* pool) {
  DAX_REQUIRE_OK(dax::check(src, srcStep, dst, dstStep, size, buffer));
  DAX_REQUIRE(dax::byteMaskFits(mask, size), DAX_STS_BAD_PARAM);
  const bool bands = size.width >= dax::kLeastBandWidth && int64_t{threads} * mask.height <= size.height;
  if (!bands || !dax::hasPool(pool, threads)) {
    dax::filterMean(src, srcStep, dst, dstStep, size, mask, 0, size.height, buffer, dax::currentIsa());
    return DAX_STS_OK;
  }
  const int32_t tileRows = dax::tilePerThread(size.height, threads);
  const auto run = [&](int32_t first, int32_t end, uint32_t worker) -> DaxStatus {
    uint16_t* const slice = static_cast<uint16_t*>(buffer) + worker * dax::byteEntries(size, mask);
    const dax::MirroredRows<uint8_t> rows{src, srcStep, size.height};
    dax::meanOfBand({rows, dst, dstStep, size.width, mask, first, end, 0, size.width}, slice);
    return DAX_STS_OK;
  };
  return dax::runTiles(pool, threads, size.height, tileRows, run);
}
