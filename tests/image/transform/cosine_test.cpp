#include "daxi/cosine.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/image/transform/fourier_exports.h"
#include "tests/image/transform/fourier_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
class Cosine : public testing::Test {
 protected:
  using F = Dft<T>;

  template <class Transform>
  void run(const Transform& transform, const TestImage<T>& src, TestImage<T>& dst) {
    const DaxiSize size = src.size();
    PlanMemory plan(size, F::kCosinePlanBytes, F::kCosinePlan);
    uint64_t bytes = 0;
    ASSERT_EQ(F::kCosineBufferBytes(size, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer((bytes + 15) / 16 * 16);
    ASSERT_EQ(transform(&pool_, 3, src.data(), src.step(), dst.data(), dst.step(), size, plan.data(), plan.bytes(),
                        buffer.data()),
              DAX_STS_OK);
  }

  static TestImage<double> defined(const TestImage<T>& src, bool isBackward) {
    TestImage<double> picture(src.size());
    picture.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
    const auto along = [&](int32_t lines, int32_t count, auto at) {
      for (int32_t line = 0; line < lines; ++line) {
        std::vector<double> x;
        for (int32_t i = 0; i < count; ++i) x.push_back(at(line, i));
        x = oracle::dct(x, isBackward);
        for (int32_t i = 0; i < count; ++i) at(line, i) = x[size_t(i)];
      }
    };
    const DaxiSize size = src.size();
    along(size.height, size.width, [&](int32_t line, int32_t i) -> double& { return picture.at(i, line); });
    along(size.width, size.height, [&](int32_t line, int32_t i) -> double& { return picture.at(line, i); });
    return picture;
  }

  void expectDefinition(DaxiSize size) {
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height);
    TestImage<T> src(size, 2), dst(size, 1);
    Random random(5);
    src.fill([&](int32_t, int32_t) { return random.below(2001) / 1000.0 - 1; });
    dst.remember();
    for (const bool isBackward : {false, true}) {
      ASSERT_NO_FATAL_FAILURE(run(isBackward ? F::kCosineBackward : F::kCosine, src, dst));
      const TestImage<double> right = defined(src, isBackward);
      RelativeError error;
      for (int32_t y = 0; y < size.height; ++y) {
        for (int32_t x = 0; x < size.width; ++x) error.add(dst.at(x, y), right.at(x, y));
      }
      EXPECT_LT(error.value(), maxError<T>(size));
      EXPECT_TRUE(dst.paddingUntouched());
    }
    TestImage<T> inPlace(size);
    inPlace.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
    ASSERT_NO_FATAL_FAILURE(run(F::kCosineBackward, inPlace, inPlace));
    EXPECT_TRUE(samePixels(inPlace, dst));
  }

  MockPool pool_;
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(Cosine, Types);

TYPED_TEST(Cosine, Definition) {
  for (int32_t n = 1; n <= 40; ++n) ASSERT_NO_FATAL_FAILURE(this->expectDefinition({n, 1}));
  for (const DaxiSize size : {DaxiSize{8, 8}, DaxiSize{1, 19}, DaxiSize{17, 40}, DaxiSize{33, 12}, DaxiSize{101, 35}}) {
    ASSERT_NO_FATAL_FAILURE(this->expectDefinition(size));
  }
}

}  // namespace
}  // namespace dax::test
