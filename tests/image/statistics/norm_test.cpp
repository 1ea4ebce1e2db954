// Norms against their definitions.
#include "daxi/norm.h"

#include <gtest/gtest.h>

#include "tests/image/statistics/statistics_oracle.h"

namespace dax::test {
namespace {

template <class T>
struct NormForms;
#define NORM_FORMS(SUFFIX, T)                                                                                \
  template <>                                                                                                \
  struct NormForms<T> {                                                                                      \
    static constexpr decltype(&DAXI_NormL1_##SUFFIX##_C1R) plain[] = {                                       \
        DAXI_NormL1_##SUFFIX##_C1R, DAXI_NormL2_##SUFFIX##_C1R, DAXI_NormInf_##SUFFIX##_C1R};                \
    static constexpr decltype(&DAXI_NormL1_##SUFFIX##_C1MR) masked[] = {                                     \
        DAXI_NormL1_##SUFFIX##_C1MR, DAXI_NormL2_##SUFFIX##_C1MR, DAXI_NormInf_##SUFFIX##_C1MR};             \
    static constexpr decltype(&DAXI_NormDiffL1_##SUFFIX##_C1R) difference[] = {                              \
        DAXI_NormDiffL1_##SUFFIX##_C1R, DAXI_NormDiffL2_##SUFFIX##_C1R, DAXI_NormDiffInf_##SUFFIX##_C1R};    \
    static constexpr decltype(&DAXI_NormDiffL1_##SUFFIX##_C1MR) differenceMasked[] = {                       \
        DAXI_NormDiffL1_##SUFFIX##_C1MR, DAXI_NormDiffL2_##SUFFIX##_C1MR, DAXI_NormDiffInf_##SUFFIX##_C1MR}; \
  };
NORM_FORMS(8u, uint8_t)
NORM_FORMS(16u, uint16_t)
NORM_FORMS(16s, int16_t)
NORM_FORMS(32f, float)
#undef NORM_FORMS

template <class W>
double normOf(int kind, const std::vector<W>& values) {
  const auto magnitude = [](auto x) { return x < 0 ? -x : x; };
  if (kind == 0) return oracle::sumOf(values, magnitude);
  if (kind == 1) return std::sqrt(oracle::sumOf(values, [](auto x) { return x * x; }));
  double largest = 0;
  for (const W value : values) largest = std::max(largest, static_cast<double>(magnitude(value)));
  return largest;
}

template <class T>
class Norms : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Norms, PixelTypes);

TYPED_TEST(Norms, OfAnImageAndOfADifference) {
  using T = TypeParam;
  using W = std::conditional_t<std::is_integral_v<T>, int32_t, double>;
  using Forms = NormForms<T>;
  for (const DaxiSize size : {DaxiSize{1, 1}, {7, 3}, {33, 9}, {515, 4}, {40001, 1}}) {
    TestImage<T> first(size, 3), second(size, 1);
    TestImage<uint8_t> mask(size);
    Random random(static_cast<uint64_t>(size.width));
    const auto number = [&](int32_t, int32_t) {
      return std::is_integral_v<T> ? static_cast<T>(random.next()) : static_cast<T>((random.below(2000) - 1000) / 7.0);
    };
    first.fill(number), second.fill(number);
    mask.fill([&](int32_t, int32_t) { return random.below(2) * 255; });
    // The ends of the type, as far apart as can be.
    first.at(0, 0) = std::numeric_limits<T>::lowest(), second.at(0, 0) = std::numeric_limits<T>::max();
    if (size.width == 7) mask.fill([](int32_t, int32_t) { return 0; });
    for (const TestImage<uint8_t>* const chosen : {static_cast<TestImage<uint8_t>*>(nullptr), &mask}) {
      const auto a = oracle::chosenPixels(first, chosen), b = oracle::chosenPixels(second, chosen);
      std::vector<W> values(a.begin(), a.end()), differences;
      for (size_t i = 0; i < a.size(); ++i) differences.push_back(W{a[i]} - W{b[i]});
      for (int kind = 0; kind < 3; ++kind) {
        double one = -1, two = -1;
        const DaxStatus status =
            chosen ? Forms::masked[kind](first.data(), first.step(), mask.data(), mask.step(), size, &one)
                   : Forms::plain[kind](first.data(), first.step(), size, &one);
        const DaxStatus statusOfTwo =
            chosen ? Forms::differenceMasked[kind](first.data(), first.step(), second.data(), second.step(),
                                                   mask.data(), mask.step(), size, &two)
                   : Forms::difference[kind](first.data(), first.step(), second.data(), second.step(), size, &two);
        ASSERT_EQ(status, DAX_STS_OK);
        ASSERT_EQ(statusOfTwo, DAX_STS_OK);
        ASSERT_EQ(one, normOf(kind, values)) << kind << " width " << size.width;
        ASSERT_EQ(two, normOf(kind, differences)) << kind << " width " << size.width;
      }
    }
  }
}

TEST(NormOfFloats, NanInAnyPlaceGivesNan) {
  TestImage<float> image({21, 1});
  for (int32_t at = 0; at < 21; ++at) {
    image.fill([&](int32_t x, int32_t) { return x == at ? NAN : static_cast<float>(x); });
    for (const auto norm : NormForms<float>::plain) {
      double value = 0;
      ASSERT_EQ(norm(image.data(), 21, {21, 1}, &value), DAX_STS_OK);
      EXPECT_TRUE(std::isnan(value) && !std::signbit(value)) << at;
    }
  }
}

}  // namespace
}  // namespace dax::test
