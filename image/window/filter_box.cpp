#include "daxi/filter_box.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "image/window/filter_box.h"
#include "image/window/filter_box_neon.h"

namespace dax {
namespace {

// One sum per pixel of the longer side: the running sums of a row, then those of as many columns as fit.
struct BoxBuffer {
  explicit BoxBuffer(DaxiSize size) : entries(std::max(size.width, size.height)), sums(layout.add<uint32_t>(entries)) {}
  uint32_t entries;
  BufferLayout layout;
  BufferPiece<uint32_t> sums;
};

}  // namespace

template <class T, class Sum>
void filterBox(const T* src, int32_t srcStep, Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, void* buffer,
               int32_t isa) {
  const BoxBuffer layout(size);
  const auto box = usesNeon(isa) ? neon::box<T, Sum> : portable::box<T, Sum>;
  box({src, srcStep, dst, dstStep, size, radius}, {reinterpret_cast<Sum*>(layout.sums.in(buffer)), layout.entries});
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

// Signed sums wrap around, so they are computed as unsigned ones.
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
