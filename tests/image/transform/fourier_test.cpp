#include "daxi/fourier.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "tests/image/transform/fourier_exports.h"
#include "tests/image/transform/fourier_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
class Fourier : public testing::Test {
 protected:
  using F = Dft<T>;
  using C = typename F::Complex;

  static PlanMemory planOf(DaxiSize size) { return PlanMemory(size, F::kPlanBytes, F::kPlan); }
  static double number(Random& random) { return random.below(2001) / 1000.0 - 1; }
  static TestImage<C> noise(DaxiSize size, int32_t padding = 0) {
    TestImage<C> image(size, padding);
    Random random(static_cast<uint64_t>(size.width));
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        image.at(x, y).re = static_cast<T>(number(random)), image.at(x, y).im = static_cast<T>(number(random));
      }
    }
    return image;
  }
  static TestImage<T> reals(DaxiSize size, int32_t padding = 0) {
    TestImage<T> image(size, padding);
    Random random(static_cast<uint64_t>(size.height));
    return std::move(image.fill([&](int32_t, int32_t) { return number(random); }));
  }

  template <class Transform, class From, class To>
  DaxStatus run(const Transform& transform, const From& src, To& dst, DaxiSize size, int32_t scale,
                const void* model = nullptr) {
    PlanMemory own = planOf(size);
    uint64_t bytes = 0;
    EXPECT_EQ(F::kBufferBytes(size, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer((bytes + 15) / 16 * 16);
    return transform(&pool_, threads_, src.data(), src.step(), dst.data(), dst.step(), size, scale,
                     model ? model : own.data(), own.bytes(), buffer.data());
  }

  static double errorOf(const TestImage<C>& image, const std::vector<oracle::Number>& right, DaxiSize size,
                        double scale = 1) {
    RelativeError error;
    for (int32_t y = 0; y < image.size().height; ++y) {
      for (int32_t x = 0; x < image.size().width; ++x) {
        const oracle::Number should = right[size_t(y * size.width + x)];
        error.add(image.at(x, y).re, scale * static_cast<double>(should.real()));
        error.add(image.at(x, y).im, scale * static_cast<double>(should.imag()));
      }
    }
    return error.value();
  }
  static std::vector<oracle::Number> numbers(const TestImage<C>& image) {
    std::vector<oracle::Number> all;
    for (int32_t y = 0; y < image.size().height; ++y) {
      for (int32_t x = 0; x < image.size().width; ++x) all.emplace_back(image.at(x, y).re, image.at(x, y).im);
    }
    return all;
  }

  // Both directions by definition, the real forms, and what in place, plans elsewhere and a pool must not change.
  void expectDefinition(DaxiSize size) {
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height);
    const double most = maxError<T>(size);
    const TestImage<C> src = noise(size, 3);
    TestImage<C> forward(size, 1), backward(size), inPlace = noise(size, 2);
    forward.remember();
    ASSERT_EQ(run(F::kForward, src, forward, size, DAXI_DFT_BACKWARD), DAX_STS_OK);
    EXPECT_TRUE(forward.paddingUntouched());
    EXPECT_LT(errorOf(forward, oracle::dft(numbers(src), size, false), size), most);
    ASSERT_EQ(run(F::kBackward, src, backward, size, DAXI_DFT_BACKWARD), DAX_STS_OK);
    EXPECT_LT(errorOf(backward, oracle::dft(numbers(src), size, true), size, 1.0 / (size.width * size.height)), most);
    ASSERT_EQ(run(F::kForward, inPlace, inPlace, size, DAXI_DFT_UNSCALED), DAX_STS_OK);
    EXPECT_TRUE(samePixels(inPlace, forward));
    expectReal(size, most);
  }
  void expectReal(DaxiSize size, double most) {
    const DaxiSize half = {size.width / 2 + 1, size.height};
    const TestImage<T> picture = reals(size, 1);
    TestImage<C> whole(size), spectrum(half, 2), kept(half, 2);
    whole.fill([&](int32_t x, int32_t y) { return C{picture.at(x, y), 0}; });
    ASSERT_EQ(run(F::kReal, picture, spectrum, size, DAXI_DFT_UNITARY), DAX_STS_OK);
    const double scale = 1 / std::sqrt(size.width * size.height);
    EXPECT_LT(errorOf(spectrum, oracle::dft(numbers(whole), size, false), size, scale), most);
    TestImage<T> back(size, 3);
    back.remember();
    spectrum.remember();
    ASSERT_EQ(run(F::kRealBackward, spectrum, back, size, DAXI_DFT_UNITARY), DAX_STS_OK);
    EXPECT_TRUE(back.paddingUntouched() && spectrum.untouched());
    RelativeError error;
    for (int32_t i = 0; i < size.width * size.height; ++i) {
      error.add(back.at(i % size.width, i / size.width), picture.at(i % size.width, i / size.width));
    }
    EXPECT_LT(error.value(), 2 * most);
  }

  MockPool pool_;
  uint32_t threads_ = 3;
};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(Fourier, Types);

TYPED_TEST(Fourier, RowsOfEveryLength) {
  for (int32_t n = 1; n <= 130; ++n) ASSERT_NO_FATAL_FAILURE(this->expectDefinition({n, 1}));
  for (const int32_t n : {256, 375, 686, 1009}) ASSERT_NO_FATAL_FAILURE(this->expectDefinition({n, 1}));
}

TYPED_TEST(Fourier, Pictures) {
  for (const int32_t width : {1, 2, 3, 5, 8, 11, 37}) {
    for (const int32_t height : {2, 7, 16, 17, 35}) {
      ASSERT_NO_FATAL_FAILURE(this->expectDefinition({width, height}));
    }
  }
}

// Of an impulse the spectrum is known, however long the row; where angles or k^2 lose digits, it shows.
TYPED_TEST(Fourier, LongRowsOfImpulses) {
  using Pixel = typename Dft<TypeParam>::Complex;
  for (const int32_t n : {1009, 46349, 65536, 65537, 78125}) {
    const DaxiSize size = {n, 1};
    TestImage<Pixel> src(size), dst(size);
    for (const int32_t at : {1, n / 3, n - 1}) {
      src.fill([&](int32_t x, int32_t) { return Pixel{x == at ? TypeParam{1} : TypeParam{0}, 0}; });
      ASSERT_EQ(this->run(Dft<TypeParam>::kForward, src, dst, size, DAXI_DFT_UNSCALED), DAX_STS_OK);
      RelativeError error;
      for (int64_t u = 0; u < n; ++u) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(u * at % n) / n;
        error.add(dst.at(static_cast<int32_t>(u), 0).re, std::cos(angle));
        error.add(dst.at(static_cast<int32_t>(u), 0).im, -std::sin(angle));
      }
      EXPECT_LT(error.value(), maxError<TypeParam>(size)) << n << " at " << at;
    }
  }
}

// Rows of impulses through every lane: no row of a strip may leak into another.
TYPED_TEST(Fourier, LinesOfAStripAreTheirOwn) {
  using Pixel = typename Dft<TypeParam>::Complex;
  const DaxiSize size = {1, 40};
  TestImage<Pixel> src(size), dst(size);
  for (int32_t at = 0; at < size.height; ++at) {
    src.fill([&](int32_t, int32_t y) { return Pixel{TypeParam(y == at), 0}; });
    ASSERT_EQ(this->run(Dft<TypeParam>::kForward, src, dst, size, DAXI_DFT_UNSCALED), DAX_STS_OK);
    ASSERT_LT(this->errorOf(dst, oracle::dft(this->numbers(src), size, false), size), maxError<TypeParam>(size));
  }
}

TYPED_TEST(Fourier, SameBitsWhereverThePlanAndThePictureLie) {
  using Pixel = typename Dft<TypeParam>::Complex;
  for (const DaxiSize size : {DaxiSize{1024, 1}, DaxiSize{33, 30}}) {
    PlanMemory plan = this->planOf(size);
    std::vector<uint64_t> moved(plan.bytes() / 8 + 4);
    std::memcpy(moved.data() + 2, plan.data(), plan.bytes());
    const TestImage<Pixel> src = this->noise(size);
    TestImage<Pixel> dst(size), again(size);
    ASSERT_EQ(this->run(Dft<TypeParam>::kForward, src, dst, size, DAXI_DFT_UNSCALED, plan.data()), DAX_STS_OK);
    // As far from a vector's address as its numbers may lie.
    const size_t pixels = size_t(size.width) * size_t(size.height);
    std::vector<TypeParam> numbers(2 * pixels + 1);
    std::memcpy(numbers.data() + 1, src.data(), pixels * sizeof(Pixel));
    const TestImage<Pixel>& there = again;
    struct {
      Pixel* address;
      int32_t width;
      const Pixel* data() const { return address; }
      int32_t step() const { return width; }
    } const odd = {reinterpret_cast<Pixel*>(numbers.data() + 1), size.width};
    this->threads_ = 1;
    ASSERT_EQ(this->run(Dft<TypeParam>::kForward, odd, again, size, DAXI_DFT_UNSCALED, moved.data() + 2), DAX_STS_OK);
    EXPECT_TRUE(samePixels(dst, there));
  }
}

// Parts that no real picture has.
TYPED_TEST(Fourier, ImaginaryPartsOfRealFrequenciesDoNotCount) {
  using Pixel = typename Dft<TypeParam>::Complex;
  for (const DaxiSize size : {DaxiSize{8, 1}, DaxiSize{512, 1}, DaxiSize{7, 1}}) {
    TestImage<Pixel> spectrum = this->noise({size.width / 2 + 1, 1});
    TestImage<TypeParam> one(size), other(size);
    ASSERT_EQ(this->run(Dft<TypeParam>::kRealBackward, spectrum, one, size, DAXI_DFT_BACKWARD), DAX_STS_OK);
    spectrum.at(0, 0).im = 77;
    if (size.width % 2 == 0) spectrum.at(size.width / 2, 0).im = -5;
    ASSERT_EQ(this->run(Dft<TypeParam>::kRealBackward, spectrum, other, size, DAXI_DFT_BACKWARD), DAX_STS_OK);
    EXPECT_TRUE(samePixels(one, other));
  }
}

TYPED_TEST(Fourier, PlansOfAnotherSizeAreRefused) {
  using Exports = Dft<TypeParam>;
  using Pixel = typename Exports::Complex;
  const DaxiSize size = {6, 4};
  PlanMemory other = this->planOf({4, 6}), cosine(size, Exports::kCosinePlanBytes, Exports::kCosinePlan);
  TestImage<Pixel> src = this->noise(size), dst(size);
  EXPECT_EQ(this->run(Exports::kForward, src, dst, size, DAXI_DFT_UNSCALED, other.data()), DAX_STS_BAD_PARAM);
  EXPECT_EQ(this->run(Exports::kForward, src, dst, size, DAXI_DFT_UNSCALED, cosine.data()), DAX_STS_BAD_PARAM);
}

TEST(GoodSide, NextWithoutLargePrimes) {
  for (const auto& [n, side] : {std::pair{1, 1}, {11, 12}, {47, 48}, {121, 125}, {1009, 1024}, {67108864, 67108864}}) {
    int32_t good = 0;
    ASSERT_EQ(DAXI_DftGoodSide(n, &good), DAX_STS_OK);
    EXPECT_EQ(good, side) << n;
  }
}

}  // namespace
}  // namespace dax::test
