#include "daxi/flat_field.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/op2d.h"

namespace dax {
namespace {

// Compilers turn this into vectors. The product is held to the range of T first; a NaN becomes 0.
template <class T>
void flatFieldRow(const T* src, const T* dark, const float* gain, T* dst, int32_t count) {
  constexpr float kMax = std::numeric_limits<T>::max();
  for (ptrdiff_t x = 0; x < count; ++x) {
    const int32_t above = std::max(int32_t{src[x]} - int32_t{dark[x]}, 0);
    const float corrected = static_cast<float>(above) * gain[x];
    const float within = corrected > 0 ? std::min(corrected, kMax) : 0;
    dst[x] = static_cast<T>(static_cast<int32_t>(std::nearbyint(within)));
  }
}

template <class T>
DaxStatus flatField(PoolThreads on, const T* src, int32_t srcStep, const T* dark, int32_t darkStep, const float* gain,
                    int32_t gainStep, T* dst, int32_t dstStep, DaxiSize size) {
  const Plane from{src, srcStep}, darkness{dark, darkStep};
  const Plane factors{gain, gainStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, darkness, factors, to));
  return forEachRow(on, size, 1, flatFieldRow<T>, from, darkness, factors, to);
}

}  // namespace
}  // namespace dax

#define DAX_FLAT_FIELD(SUFFIX, T)                                                                                  \
  DaxStatus DAXI_FlatField_##SUFFIX##_C1R(const T* src, int32_t srcStep, const T* dark, int32_t darkStep,          \
                                          const float* gain, int32_t gainStep, T* dst, int32_t dstStep,            \
                                          DaxiSize size) {                                                         \
    return dax::flatField({}, src, srcStep, dark, darkStep, gain, gainStep, dst, dstStep, size);                   \
  }                                                                                                                \
  DaxStatus DAXI_FlatField_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,          \
                                             const T* dark, int32_t darkStep, const float* gain, int32_t gainStep, \
                                             T* dst, int32_t dstStep, DaxiSize size) {                             \
    return dax::flatField({pool, threads}, src, srcStep, dark, darkStep, gain, gainStep, dst, dstStep, size);      \
  }                                                                                                                \
  DaxStatus DAXI_FlatField_##SUFFIX##_C1IR(const T* dark, int32_t darkStep, const float* gain, int32_t gainStep,   \
                                           T* srcDst, int32_t step, DaxiSize size) {                               \
    return dax::flatField<T>({}, srcDst, step, dark, darkStep, gain, gainStep, srcDst, step, size);                \
  }
DAX_FLAT_FIELD(8u, uint8_t)
DAX_FLAT_FIELD(16u, uint16_t)
#undef DAX_FLAT_FIELD
