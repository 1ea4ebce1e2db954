#include "bench/image/transform/fourier_bench.h"

#include "bench/support/operation.h"
#include "daxi/cosine.h"
#include "daxi/fourier.h"

namespace {

using bench::Task;
using Bytes = std::vector<uint64_t>;

std::shared_ptr<Bytes> memory(DaxiSize size, DaxStatus (*query)(DaxiSize, uint64_t*), uint64_t* bytes) {
  bench::require(query(size, bytes));
  return std::make_shared<Bytes>(*bytes / 8 + 1);
}

// call(src, dst, plan, bytes of the plan, buffer), numbers of T.
template <class T, class Call>
Task prepare(DaxiSize size, DaxStatus (*planBytes)(DaxiSize, uint64_t*), DaxStatus (*makePlan)(DaxiSize, void*),
             DaxStatus (*bufferBytes)(DaxiSize, uint64_t*), Call call) {
  uint64_t bytes = 0, bufferNeed = 0;
  const auto plan = memory(size, planBytes, &bytes), buffer = memory(size, bufferBytes, &bufferNeed);
  bench::require(makePlan(size, plan->data()));
  const auto src = bench::complexNoise<T>(), dst = std::make_shared<std::vector<T>>(src->size() + 4096);
  return {[=] { bench::require(call(src->data(), dst->data(), plan->data(), bytes, buffer->data())); },
          [=] { return bench::digest(dst->data(), dst->size() * sizeof(T)); }};
}

template <class C, class T>
Task complexTransform(DaxiSize size, decltype(&DAXI_Dft_32fc_C1R) single, decltype(&DAXI_Dft_64fc_C1R) twice) {
  constexpr bool kSingle = sizeof(T) == 4;
  return prepare<T>(size, kSingle ? DAXI_DftPlanModelSize_32f : DAXI_DftPlanModelSize_64f,
                    kSingle ? DAXI_DftPlan_32f : DAXI_DftPlan_64f,
                    kSingle ? DAXI_DftBufferSize_32f : DAXI_DftBufferSize_64f,
                    [=](const T* src, T* dst, const void* plan, uint64_t bytes, void* buffer) {
                      const auto* const from = reinterpret_cast<const C*>(src);
                      auto* const to = reinterpret_cast<C*>(dst);
                      if constexpr (kSingle) {
                        return single(from, size.width, to, size.width, size, DAXI_DFT_UNSCALED, plan, bytes, buffer);
                      } else {
                        return twice(from, size.width, to, size.width, size, DAXI_DFT_UNSCALED, plan, bytes, buffer);
                      }
                    });
}

Task single(DaxiSize size) {
  return complexTransform<DaxComplex32f, float>(size, DAXI_Dft_32fc_C1R, nullptr);
}

Task real() {
  const DaxiSize size = bench::kSquare;
  return prepare<float>(size, DAXI_DftPlanModelSize_32f, DAXI_DftPlan_32f, DAXI_DftBufferSize_32f,
                        [=](const float* src, float* dst, const void* plan, uint64_t bytes, void* buffer) {
                          const int32_t half = size.width / 2 + 1;
                          return DAXI_DftReal_32f_C1R(src, size.width, reinterpret_cast<DaxComplex32f*>(dst), half,
                                                      size, DAXI_DFT_UNSCALED, plan, bytes, buffer);
                        });
}

Task cosine() {
  const DaxiSize size = bench::kSquare;
  return prepare<float>(size, DAXI_DctPlanModelSize_32f, DAXI_DctPlan_32f, DAXI_DctBufferSize_32f,
                        [=](const float* src, float* dst, const void* plan, uint64_t bytes, void* buffer) {
                          return DAXI_Dct_32f_C1R(src, size.width, dst, size.width, size, plan, bytes, buffer);
                        });
}

const bench::Own operations[] = {
    {"Fourier, 1024 x 1024 32fc", 8 << 20, [] { return single(bench::kSquare); }},
    {"Fourier, 1024 x 1024 32f", 4 << 20, real},
    {"Fourier, 1024 x 1024 64fc", 16 << 20,
     [] { return complexTransform<DaxComplex64f, double>(bench::kSquare, nullptr, DAXI_Dft_64fc_C1R); }},
    {"Fourier, a row of 2^20 32fc", 8 << 20, [] { return single(bench::kRow); }},
    {"cosine, 1024 x 1024 32f", 4 << 20, cosine},
};

}  // namespace
