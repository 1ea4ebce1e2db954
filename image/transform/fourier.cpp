#include "image/transform/fourier.h"

#include "frame/check.h"
#include "image/transform/dft_work.h"

namespace dax {
namespace {

// What all transforms check; rows are those of the source and of the destination.
template <class T>
DaxStatus checkDft(const void* src, int32_t srcRow, int32_t srcStep, const void* dst, int32_t dstRow, int32_t dstStep,
                   DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes, const void* buffer) {
  DAX_REQUIRE(src && dst && model && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areDftSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(srcRow <= srcStep && dstRow <= dstStep, DAX_STS_BAD_STEP);
  DAX_REQUIRE(scale >= DAXI_DFT_UNSCALED && scale <= DAXI_DFT_UNITARY, DAX_STS_BAD_PARAM);
  DftPlan<T> plan;
  DAX_REQUIRE_OK(openPlan(DftKind::fourier, model, modelBytes, plan));
  DAX_REQUIRE(plan.size.width == size.width && plan.size.height == size.height, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class C>
DaxStatus dftBothWays(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size,
                      bool isBackward, int32_t scale, const void* model, uint64_t modelBytes, void* buffer) {
  using T = RealOf<C>;
  DAX_REQUIRE_OK(
      checkDft<T>(src, size.width, srcStep, dst, size.width, dstStep, size, scale, model, modelBytes, buffer));
  const T factor = dftScale<T>(scale, isBackward, size);
  return dftComplex<T>(on, src, srcStep, dst, dstStep, size, isBackward, factor, model, buffer);
}

template <class T>
DaxStatus makeDftPlan(DaxiSize size, void* model) {
  DAX_REQUIRE(model, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areDftSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(reinterpret_cast<uintptr_t>(model) % 8 == 0, DAX_STS_BAD_PARAM);
  return dftPlanInit<T>(size, model);
}

DaxStatus checkDftQuery(DaxiSize size, const uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areDftSides(size), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace

template <class C>
DaxStatus dft(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size, int32_t scale,
              const void* model, uint64_t modelBytes, void* buffer) {
  return dftBothWays(on, src, srcStep, dst, dstStep, size, false, scale, model, modelBytes, buffer);
}

template <class C>
DaxStatus idft(PoolThreads on, const C* src, int32_t srcStep, C* dst, int32_t dstStep, DaxiSize size, int32_t scale,
               const void* model, uint64_t modelBytes, void* buffer) {
  return dftBothWays(on, src, srcStep, dst, dstStep, size, true, scale, model, modelBytes, buffer);
}

template <class T>
DaxStatus dftReal(PoolThreads on, const T* src, int32_t srcStep, ComplexOf<T>* dst, int32_t dstStep, DaxiSize size,
                  int32_t scale, const void* model, uint64_t modelBytes, void* buffer) {
  const int32_t half = halfSpectrum(size).width;
  DAX_REQUIRE_OK(checkDft<T>(src, size.width, srcStep, dst, half, dstStep, size, scale, model, modelBytes, buffer));
  return dftRealForward<T>(on, src, srcStep, dst, dstStep, size, dftScale<T>(scale, false, size), model, buffer);
}

template <class T>
DaxStatus idftReal(PoolThreads on, const ComplexOf<T>* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                   int32_t scale, const void* model, uint64_t modelBytes, void* buffer) {
  const int32_t half = halfSpectrum(size).width;
  DAX_REQUIRE_OK(checkDft<T>(src, half, srcStep, dst, size.width, dstStep, size, scale, model, modelBytes, buffer));
  return dftRealBackward<T>(on, src, srcStep, dst, dstStep, size, dftScale<T>(scale, true, size), model, buffer);
}

#define DAX_FOURIER(T, C)                                                                                            \
  template DaxStatus dft(PoolThreads, const C*, int32_t, C*, int32_t, DaxiSize, int32_t, const void*, uint64_t,      \
                         void*);                                                                                     \
  template DaxStatus idft(PoolThreads, const C*, int32_t, C*, int32_t, DaxiSize, int32_t, const void*, uint64_t,     \
                          void*);                                                                                    \
  template DaxStatus dftReal(PoolThreads, const T*, int32_t, C*, int32_t, DaxiSize, int32_t, const void*, uint64_t,  \
                             void*);                                                                                 \
  template DaxStatus idftReal(PoolThreads, const C*, int32_t, T*, int32_t, DaxiSize, int32_t, const void*, uint64_t, \
                              void*);
DAX_FOURIER(float, DaxComplex32f)
DAX_FOURIER(double, DaxComplex64f)
#undef DAX_FOURIER

}  // namespace dax

DaxStatus DAXI_DftGoodSide(int32_t n, int32_t* side) {
  DAX_REQUIRE(side, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && n <= dax::kMaxDftSide, DAX_STS_BAD_PARAM);
  *side = dax::smoothSide(n);
  return DAX_STS_OK;
}

#define DAX_FOURIER_PLANS(SUFFIX, T)                                         \
  DaxStatus DAXI_DftPlanModelSize_##SUFFIX(DaxiSize size, uint64_t* bytes) { \
    DAX_REQUIRE_OK(dax::checkDftQuery(size, bytes));                         \
    return dax::dftPlanSize<T>(size, bytes);                                 \
  }                                                                          \
  DaxStatus DAXI_DftPlan_##SUFFIX(DaxiSize size, void* model) {              \
    return dax::makeDftPlan<T>(size, model);                                 \
  }                                                                          \
  DaxStatus DAXI_DftBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {    \
    DAX_REQUIRE_OK(dax::checkDftQuery(size, bytes));                         \
    return dax::dftBufferSize<T>(size, bytes);                               \
  }
DAX_FOURIER_PLANS(32f, float)
DAX_FOURIER_PLANS(64f, double)
#undef DAX_FOURIER_PLANS
