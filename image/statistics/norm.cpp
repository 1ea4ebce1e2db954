#include "image/statistics/norm.h"

#include "image/statistics/sum.h"

namespace dax {
namespace {

template <class T>
struct Largest {
  int32_t value = 0;
  template <class... Row>
  void add(int32_t count, const Row*... rows) {
    value = std::max(value, portable::largestOfRun<Magnitude>(count, rows...));
  }
  double total() const { return value; }
};

template <>
struct Largest<float> {
  static constexpr int32_t kLanes = 8;
  double lanes[kLanes] = {};
  bool hasNan = false;

  void addOne(int32_t lane, double value) {
    lanes[lane] = std::max(lanes[lane], value);  // which passes over a NaN
    hasNan |= std::isnan(value);
  }
  template <class... Row>
  void add(int32_t count, const Row*... rows) {
    for (int32_t x = 0; x < count; ++x) addOne(x % kLanes, Magnitude::of(rows[x]...));
  }
  double total() const {
    return hasNan ? std::numeric_limits<double>::quiet_NaN() : *std::max_element(lanes, lanes + kLanes);
  }
};

template <Norm kNorm, bool kMasked, class... T>
DaxStatus computeNorm(DaxiSize size, MaskPlane mask, double* norm, Plane<const T>... sources) {
  using First = std::common_type_t<T...>;
  DAX_REQUIRE(norm, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, 1, mask, sources...));
  if constexpr (kNorm == Norm::inf) {
    Largest<First> largest;
    const auto add = [&](const T*... rows, int32_t count) { largest.add(count, rows...); };
    forEachRun<1>(size, 0, add, mask, sources...);
    *norm = largest.total();
  } else {
    Sums<Magnitude, First> sums;
    const auto add = [&](const T*... rows, int32_t count) {
      kNorm == Norm::l1 ? sums.addValues(count, rows...) : sums.addSquares(count, rows...);
    };
    forEachRun<1>(size, 0, add, mask, sources...);
    *norm = kNorm == Norm::l1 ? sums.total() : std::sqrt(sums.totalOfSquares());
  }
  return DAX_STS_OK;
}

}  // namespace

template <Norm kNorm, class T, bool kMasked>
DaxStatus normOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return computeNorm<kNorm, kMasked>(size, MaskPlane{mask, maskStep}, norm, Plane{src, srcStep});
}

template <Norm kNorm, class T, bool kMasked>
DaxStatus normOfDifference(const T* src1, int32_t step1, const T* src2, int32_t step2, const uint8_t* mask,
                           int32_t maskStep, DaxiSize size, double* norm) {
  return computeNorm<kNorm, kMasked>(size, MaskPlane{mask, maskStep}, norm, Plane{src1, step1}, Plane{src2, step2});
}

#define DAX_NORM_FORM(NORM, T, MASKED)                                                                                \
  template DaxStatus normOf<NORM, T, MASKED>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, double*);          \
  template DaxStatus normOfDifference<NORM, T, MASKED>(const T*, int32_t, const T*, int32_t, const uint8_t*, int32_t, \
                                                       DaxiSize, double*);
#define DAX_NORM_TYPE(T)             \
  DAX_NORM_FORM(Norm::l1, T, false)  \
  DAX_NORM_FORM(Norm::l1, T, true)   \
  DAX_NORM_FORM(Norm::l2, T, false)  \
  DAX_NORM_FORM(Norm::l2, T, true)   \
  DAX_NORM_FORM(Norm::inf, T, false) \
  DAX_NORM_FORM(Norm::inf, T, true)
DAX_NORM_TYPE(uint8_t)
DAX_NORM_TYPE(uint16_t)
DAX_NORM_TYPE(int16_t)
DAX_NORM_TYPE(float)
#undef DAX_NORM_TYPE
#undef DAX_NORM_FORM

}  // namespace dax
