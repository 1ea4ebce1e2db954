// The exports of the transforms by type, and plans for tests.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "daxi/cosine.h"
#include "daxi/fourier.h"

namespace dax::test {

template <class T>
struct Dft;
#define DAX_DFT_EXPORTS(T, C, REAL, COMPLEX)                               \
  template <>                                                              \
  struct Dft<T> {                                                          \
    using Complex = C;                                                     \
    static constexpr auto kPlanBytes = DAXI_DftPlanModelSize_##REAL;       \
    static constexpr auto kPlan = DAXI_DftPlan_##REAL;                     \
    static constexpr auto kBufferBytes = DAXI_DftBufferSize_##REAL;        \
    static constexpr auto kForward = DAXI_Dft_##COMPLEX##_C1R_MT;          \
    static constexpr auto kBackward = DAXI_Idft_##COMPLEX##_C1R_MT;        \
    static constexpr auto kReal = DAXI_DftReal_##REAL##_C1R_MT;            \
    static constexpr auto kRealBackward = DAXI_IdftReal_##REAL##_C1R_MT;   \
    static constexpr auto kCosinePlanBytes = DAXI_DctPlanModelSize_##REAL; \
    static constexpr auto kCosinePlan = DAXI_DctPlan_##REAL;               \
    static constexpr auto kCosineBufferBytes = DAXI_DctBufferSize_##REAL;  \
    static constexpr auto kCosine = DAXI_Dct_##REAL##_C1R_MT;              \
    static constexpr auto kCosineBackward = DAXI_Idct_##REAL##_C1R_MT;     \
    static constexpr double kError = sizeof(T) == 4 ? 3e-7 : 6e-16;        \
  };
DAX_DFT_EXPORTS(float, DaxComplex32f, 32f, 32fc)
DAX_DFT_EXPORTS(double, DaxComplex64f, 64f, 64fc)
#undef DAX_DFT_EXPORTS

inline bool isSmooth(int32_t n) {
  for (const int32_t prime : {2, 3, 5, 7}) {
    while (n % prime == 0) n /= prime;
  }
  return n == 1;
}

// What the contract promises.
template <class T>
double maxError(DaxiSize size) {
  return Dft<T>::kError * (isSmooth(size.width) && isSmooth(size.height) ? 1 : 2);
}

// The memory of a plan, at an odd multiple of 8.
class PlanMemory {
 public:
  template <class Query, class Make>
  PlanMemory(DaxiSize size, Query query, Make make) {
    EXPECT_EQ(query(size, &bytes_), DAX_STS_OK);
    words_.resize(bytes_ / 8 + 2);
    EXPECT_EQ(make(size, data()), DAX_STS_OK);
  }
  void* data() { return words_.data() + (reinterpret_cast<uintptr_t>(words_.data()) % 16 == 0); }
  uint64_t bytes() const { return bytes_; }

 private:
  uint64_t bytes_ = 0;
  std::vector<uint64_t> words_;
};

// sqrt(sum |a - b|^2 / sum |b|^2)
class RelativeError {
 public:
  void add(double value, double right) {
    error_ += (value - right) * (value - right);
    norm_ += right * right;
  }
  double value() const { return norm_ > 0 ? std::sqrt(error_ / norm_) : std::sqrt(error_); }

 private:
  double error_ = 0, norm_ = 0;
};

}  // namespace dax::test
