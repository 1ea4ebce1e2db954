#define DAX_SIMD_CONVERTS_NO_NAN
#include "image/window/filter_mean_int.h"
#include "daxi/filter_mean.h"
#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "image/window/filter_mean_int_neon.h"

namespace dax {

template <class T>
void filterMeanInt(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, void* buffer,
                   int32_t isa) {
  const auto meanInt = usesNeon(isa) ? neon::meanInt<T> : portable::meanInt<T>;
  meanInt({{src, srcStep, size.height}, dst, dstStep, size, mask}, buffer);
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

DaxStatus meanIntBufferSize(DaxiSize size, uint64_t* bytes) {
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
    return dax::meanIntBufferSize(size, bytes);                                                                      \
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
