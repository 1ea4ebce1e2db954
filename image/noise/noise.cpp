#include "daxi/noise.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <type_traits>

#include "frame/check.h"
#include "frame/rows.h"

namespace dax {
namespace {

template <class T>
struct NoisyImage {
  // Differences of integers are exact in 32 bits.
  using Number = std::conditional_t<std::is_integral_v<T>, int32_t, double>;

  const T* src;
  int32_t srcStep;
  DaxiSize size;
  double low, high;

  DaxStatus check(const double* sigma) const {
    DAX_REQUIRE(src && sigma, DAX_STS_NULL_POINTER);
    DAX_REQUIRE(atLeast(size, 3), DAX_STS_BAD_SIZE);
    DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
    DAX_REQUIRE(low < high, DAX_STS_BAD_PARAM);
    return DAX_STS_OK;
  }

  // visit(|response|) of all windows that count, in raster order.
  template <class Visit>
  void forEachResponse(Visit visit) const {
    const Number above = limitOf(low, std::floor(low)), below = limitOf(high, std::ceil(high));
    const auto isInside = [=](T v) { return v > above && v < below; };
    for (int32_t y = 1; y + 1 < size.height; ++y) {
      const T *const a = rowAt(src, srcStep, y - 1), *const b = a + srcStep, *const c = b + srcStep;
      const auto columnAt = [=](int32_t x) {
        const Number bend = Number{a[x]} - 2 * Number{b[x]} + Number{c[x]};
        return Column{bend, isInside(a[x]) && isInside(b[x]) && isInside(c[x])};
      };
      Column left = columnAt(0), own = columnAt(1);
      for (int32_t x = 2; x < size.width; ++x) {
        const Column right = columnAt(x);
        if (left.counts && own.counts && right.counts) visit(std::abs(left.bend - 2 * own.bend + right.bend));
        left = own, own = right;
      }
    }
  }

 private:
  struct Column {
    Number bend;
    bool counts;
  };

  // Integers lie above a limit if they lie above its floor, and below it if below its ceiling.
  static Number limitOf(double limit, double rounded) {
    if constexpr (std::is_integral_v<T>) {
      return static_cast<int32_t>(std::clamp(rounded, -1.0, 65536.0));
    } else {
      return limit;
    }
  }
};

// Rounding to integers adds a variance of 1/12.
template <class T>
double withoutRounding(double sigma) {
  if constexpr (std::is_integral_v<T>) {
    return std::sqrt(std::max(sigma * sigma - 1.0 / 12, 0.0));
  } else {
    return sigma;
  }
}

template <class T>
DaxStatus noiseImmerkaer(const NoisyImage<T>& image, double* sigma) {
  constexpr double kSqrtHalfPi = 1.2533141373155003;
  DAX_REQUIRE_OK(image.check(sigma));
  std::conditional_t<std::is_integral_v<T>, uint64_t, double> sum = 0;
  uint64_t count = 0;
  image.forEachResponse([&](auto response) {
    sum += static_cast<decltype(sum)>(response);
    ++count;
  });
  DAX_REQUIRE(count > 0, DAX_STS_DEGENERATE);
  *sigma = withoutRounding<T>(kSqrtHalfPi / 6 * (static_cast<double>(sum) / static_cast<double>(count)));
  return DAX_STS_OK;
}

// Keys in the order of the responses: of integers themselves, of floats the bits of the single-precision number.
uint32_t keyOf(int32_t response) {
  return static_cast<uint32_t>(response);
}
uint32_t keyOf(double response) {
  return std::bit_cast<uint32_t>(static_cast<float>(response));
}

// The lower median of all keys: how many there are, how many are less, and how many are equal to it.
struct MedianKey {
  uint32_t key = 0;
  uint64_t count = 0, less = 0, equal = 0;
};

// One pass for every eight bits of a key, from the highest ones: those chosen before tell which responses to count.
template <class T>
MedianKey medianResponse(const NoisyImage<T>& image) {
  constexpr int kKeyBits = std::is_integral_v<T> ? 8 * sizeof(T) + 3 : 32;  // a response is up to 8 times a pixel
  constexpr int kDigit = 8;
  MedianKey median;
  uint64_t rank = 0;  // among the responses with the bits chosen so far
  for (int shift = (kKeyBits - 1) / kDigit * kDigit; shift >= 0; shift -= kDigit) {
    uint64_t counts[1 << kDigit] = {};
    image.forEachResponse([&](auto response) {
      const uint32_t digits = keyOf(response) >> shift;
      if (digits >> kDigit == median.key) ++counts[digits % (1 << kDigit)];
    });
    if (median.count == 0) {
      for (const uint64_t count : counts) median.count += count;
      rank = (median.count + 1) / 2;
    }
    uint32_t digit = 0;
    for (; digit < (1 << kDigit) - 1 && rank > counts[digit]; ++digit) {
      rank -= counts[digit];
      median.less += counts[digit];
    }
    median.key = median.key << kDigit | digit;
    median.equal = counts[digit];
  }
  return median;
}

template <class T>
double medianOf(const MedianKey& median) {
  if constexpr (std::is_integral_v<T>) {
    const double share =
        (static_cast<double>(median.count) / 2 - static_cast<double>(median.less)) / static_cast<double>(median.equal);
    return median.key == 0 ? share / 2 : median.key - 0.5 + share;
  } else {
    return std::bit_cast<float>(median.key);
  }
}

template <class T>
DaxStatus noiseMad(const NoisyImage<T>& image, double* sigma) {
  constexpr double kMedianOfNormal = 0.6744897501960817;  // of |x|, x of deviation 1
  DAX_REQUIRE_OK(image.check(sigma));
  const MedianKey median = medianResponse(image);
  DAX_REQUIRE(median.count > 0, DAX_STS_DEGENERATE);
  *sigma = withoutRounding<T>(medianOf<T>(median) / (6 * kMedianOfNormal));
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_NOISE(NAME, WORKER, SUFFIX, T)                                                                      \
  DaxStatus DAXI_##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, double low, double high, \
                                         double* sigma) {                                                       \
    return dax::WORKER(dax::NoisyImage<T>{src, srcStep, size, low, high}, sigma);                               \
  }
DAX_NOISE(NoiseImmerkaer, noiseImmerkaer, 8u, uint8_t)
DAX_NOISE(NoiseImmerkaer, noiseImmerkaer, 16u, uint16_t)
DAX_NOISE(NoiseImmerkaer, noiseImmerkaer, 32f, float)
DAX_NOISE(NoiseMad, noiseMad, 8u, uint8_t)
DAX_NOISE(NoiseMad, noiseMad, 16u, uint16_t)
DAX_NOISE(NoiseMad, noiseMad, 32f, float)
#undef DAX_NOISE
