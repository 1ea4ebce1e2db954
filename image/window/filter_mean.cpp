#define DAX_SIMD_CONVERTS_NO_NAN
#include "image/window/filter_mean.h"

#include <algorithm>

#include "daxi/filter_mean.h"
#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/tiles.h"
#include "image/window/filter_mean_neon.h"

namespace dax {

template <class T>
void filterMean(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, int32_t first,
                int32_t end, void* buffer, int32_t isa) {
  const auto mean = usesNeon(isa) ? neon::mean<T> : portable::mean<T>;
  mean({{src, srcStep, size.height}, dst, dstStep, size.width, mask, first, end}, buffer);
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

constexpr int32_t kMaxByteMask = 255;

bool byteMaskFits(DaxiSize mask, DaxiSize size) {
  return maskFits(mask, size) && atMost(mask, kMaxByteMask);
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

// One `Entry` per pixel.
template <class Entry>
DaxStatus bufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  BufferLayout layout;
  layout.add<Entry>(pixelsOf(size));
  return layout.store(bytes);
}

// Narrower images are not split into bands.
constexpr int32_t kMinBandWidth = 9;

// Number of 16-bit entries of one thread: for bands at least an extended row of column sums, w + W.
uint64_t byteEntries(DaxiSize size, DaxiSize mask) {
  const auto width = static_cast<uint64_t>(size.width), maskWidth = static_cast<uint64_t>(mask.width);
  if (size.width < kMinBandWidth) return pixelsOf(size);
  return width + maskWidth / 2 + (maskWidth / 16 + 1) * 8;
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
  const bool bands = size.width >= dax::kMinBandWidth && int64_t{threads} * mask.height <= size.height;
  if (!bands || !dax::hasPool(pool, threads)) {
    dax::filterMean(src, srcStep, dst, dstStep, size, mask, 0, size.height, buffer, dax::currentIsa());
    return DAX_STS_OK;
  }
  const auto mean = dax::usesNeon(dax::currentIsa()) ? dax::neon::meanOfSlice : dax::portable::meanOfSlice;
  const auto run = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
    uint16_t* const own = static_cast<uint16_t*>(buffer) + slice * dax::byteEntries(size, mask);
    mean({{src, srcStep, size.height}, dst, dstStep, size.width, mask, first, end}, own);
    return DAX_STS_OK;
  };
  return dax::runTiles(pool, threads, size.height, 1, run);
}
