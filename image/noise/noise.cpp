#include "daxi/noise.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <type_traits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/noise/clipping.h"

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
  PoolThreads on;

  DaxStatus check(const double* sigma) const {
    DAX_REQUIRE(src && sigma, DAX_STS_NULL_POINTER);
    DAX_REQUIRE(atLeast(size, 3), DAX_STS_BAD_SIZE);
    DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
    DAX_REQUIRE(low < high, DAX_STS_BAD_PARAM);
    return DAX_STS_OK;
  }

  int32_t windowRows() const { return size.height - 2; }

  // visit(responses, counts, how many) for parts of a row, from left to right: of each window |response| and whether it
  // counts.
  template <class Visit>
  void forEachPart(int32_t row, const Visit& visit) const {
    constexpr int32_t kPart = 256;
    const Clipping<T> clipping(low, high);
    Number bends[kPart + 2]{}, responses[kPart];
    uint8_t columns[kPart + 2]{}, counts[kPart];
    for (int32_t first = 0, n; first < size.width - 2; first += n) {
      n = std::min(size.width - 2 - first, kPart);
      const T *const a = rowAt(src, srcStep, row) + first, *const b = a + srcStep, *const c = b + srcStep;
      for (int32_t x = 0; x < n + 2; ++x) {
        bends[x] = Number{a[x]} - 2 * Number{b[x]} + Number{c[x]};
        columns[x] = clipping.isInside(a[x]) & clipping.isInside(b[x]) & clipping.isInside(c[x]);
      }
      for (int32_t x = 0; x < n; ++x) {
        responses[x] = std::abs(bends[x] - 2 * bends[x + 1] + bends[x + 2]);
        counts[x] = columns[x] & columns[x + 1] & columns[x + 2];
      }
      visit(responses, counts, n);
    }
  }
};

template <class T>
double withoutRounding(double sigma) {
  return std::sqrt(std::max(sigma * sigma - kRoundingVariance<T>, 0.0));
}

// --- Immerkaer ---

// Of the windows of a row that count.
template <class T>
struct ResponseSum {
  std::conditional_t<std::is_integral_v<T>, uint64_t, double> sum = 0;
  uint64_t count = 0;

  void add(const ResponseSum& other) { sum += other.sum, count += other.count; }
};

template <class T>
ResponseSum<T> sumOfResponses(const NoisyImage<T>& image, int32_t row) {
  using Number = typename NoisyImage<T>::Number;
  ResponseSum<T> all;
  image.forEachPart(row, [&](const Number* responses, const uint8_t* counts, int32_t n) {
    Number sum = 0;
    int32_t count = 0;
    for (int32_t x = 0; x < n; ++x) {
      sum += counts[x] ? responses[x] : 0;
      count += counts[x];
    }
    all.add({static_cast<decltype(all.sum)>(sum), static_cast<uint64_t>(count)});
  });
  return all;
}

template <class T>
struct HeldResponses {
  explicit HeldResponses(int32_t height) : rows(layout.add<ResponseSum<T>>(static_cast<uint64_t>(height))) {}
  BufferLayout layout;
  BufferPiece<ResponseSum<T>> rows;
};

template <class T>
DaxStatus sumOfImage(const NoisyImage<T>& image, void* buffer, ResponseSum<T>& sum) {
  if (!buffer) {
    for (int32_t y = 0; y < image.windowRows(); ++y) sum.add(sumOfResponses(image, y));
    return DAX_STS_OK;
  }
  auto* const held = HeldResponses<T>(image.size.height).rows.in(buffer);
  DAX_REQUIRE_OK(runRows(image.on, image.windowRows(), [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) held[y] = sumOfResponses(image, y);
  }));
  for (int32_t y = 0; y < image.windowRows(); ++y) sum.add(held[y]);
  return DAX_STS_OK;
}

template <class T>
DaxStatus noiseImmerkaer(const NoisyImage<T>& image, double* sigma, void* buffer) {
  constexpr double kSqrtHalfPi = 1.2533141373155003;
  DAX_REQUIRE_OK(image.check(sigma));
  ResponseSum<T> all;
  DAX_REQUIRE_OK(sumOfImage(image, buffer, all));
  DAX_REQUIRE(all.count > 0, DAX_STS_DEGENERATE);
  const double mean = static_cast<double>(all.sum) / static_cast<double>(all.count);
  *sigma = withoutRounding<T>(kSqrtHalfPi / 6 * mean);
  return DAX_STS_OK;
}

template <class T>
DaxStatus storeImmerkaerBytes(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 3), DAX_STS_BAD_PARAM);
  return HeldResponses<T>(size.height).layout.store(bytes);
}

// --- Median absolute deviation ---

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

constexpr int kDigit = 8;

// How many responses have each value of a digit.
struct DigitCounts {
  uint64_t of[1 << kDigit];
};

// One piece for each tile.
struct HeldCounts {
  HeldCounts(DaxiSize size, uint32_t threads)
      : tiles(std::clamp<uint32_t>(threads, 1, static_cast<uint32_t>(size.height))),
        counts(layout.add<DigitCounts>(tiles)) {}
  uint32_t tiles;
  BufferLayout layout;
  BufferPiece<DigitCounts> counts;
};

// Counts the digits at `shift` of the keys that begin with `prefix`.
template <class T>
DaxStatus countDigits(const NoisyImage<T>& image, uint32_t prefix, int shift, void* buffer, DigitCounts& all) {
  const auto countRows = [=](DigitCounts& counts, int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      image.forEachPart(y, [&](const auto* responses, const uint8_t* isCounted, int32_t n) {
        for (int32_t x = 0; x < n; ++x) {
          const uint32_t digits = keyOf(responses[x]) >> shift;
          if (isCounted[x] && digits >> kDigit == prefix) ++counts.of[digits % (1 << kDigit)];
        }
      });
    }
  };
  all = {};
  if (!buffer || !hasPool(image.on.pool, image.on.threads)) {
    countRows(all, 0, image.windowRows());
    return DAX_STS_OK;
  }
  const HeldCounts held(image.size, image.on.threads);
  DigitCounts* const counts = held.counts.in(buffer);
  std::fill_n(counts, held.tiles, DigitCounts{});
  DAX_REQUIRE_OK(runTiles(image.on.pool, held.tiles, image.windowRows(), 1,
                          [&](int32_t first, int32_t end, uint32_t tile) -> DaxStatus {
                            countRows(counts[tile], first, end);
                            return DAX_STS_OK;
                          }));
  for (uint32_t i = 0; i < held.tiles; ++i) {
    for (int32_t digit = 0; digit < 1 << kDigit; ++digit) all.of[digit] += counts[i].of[digit];
  }
  return DAX_STS_OK;
}

// One pass for every eight bits of a key, from the highest ones: those chosen before tell which responses to count.
template <class T>
DaxStatus findMedian(const NoisyImage<T>& image, void* buffer, MedianKey& median) {
  constexpr int kKeyBits = std::is_integral_v<T> ? 8 * sizeof(T) + 3 : 32;  // a response is up to 8 times a pixel
  uint64_t rank = 0;  // among the responses with the bits chosen so far
  for (int shift = (kKeyBits - 1) / kDigit * kDigit; shift >= 0; shift -= kDigit) {
    DigitCounts counts;
    DAX_REQUIRE_OK(countDigits(image, median.key, shift, buffer, counts));
    if (median.count == 0) {
      for (const uint64_t count : counts.of) median.count += count;
      rank = (median.count + 1) / 2;
    }
    uint32_t digit = 0;
    for (; digit < (1 << kDigit) - 1 && rank > counts.of[digit]; ++digit) {
      rank -= counts.of[digit];
      median.less += counts.of[digit];
    }
    median.key = median.key << kDigit | digit;
    median.equal = counts.of[digit];
  }
  return DAX_STS_OK;
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
DaxStatus noiseMad(const NoisyImage<T>& image, double* sigma, void* buffer) {
  constexpr double kMedianOfNormal = 0.6744897501960817;  // of |x|, x of deviation 1
  DAX_REQUIRE_OK(image.check(sigma));
  MedianKey median;
  DAX_REQUIRE_OK(findMedian(image, buffer, median));
  DAX_REQUIRE(median.count > 0, DAX_STS_DEGENERATE);
  *sigma = withoutRounding<T>(medianOf<T>(median) / (6 * kMedianOfNormal));
  return DAX_STS_OK;
}

DaxStatus storeMadBytes(DaxiSize size, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 3), DAX_STS_BAD_PARAM);
  return HeldCounts(size, threads).layout.store(bytes);
}

}  // namespace
}  // namespace dax

#define DAX_NOISE_FORM(NAME, WORKER, SUFFIX, T)                                                                    \
  DaxStatus DAXI_##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, double low, double high,    \
                                         double* sigma) {                                                          \
    return dax::WORKER(dax::NoisyImage<T>{src, srcStep, size, low, high, {}}, sigma, nullptr);                     \
  }                                                                                                                \
  DaxStatus DAXI_##NAME##_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,           \
                                            DaxiSize size, double low, double high, double* sigma, void* buffer) { \
    DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);                                                                     \
    return dax::WORKER(dax::NoisyImage<T>{src, srcStep, size, low, high, {pool, threads}}, sigma, buffer);         \
  }
#define DAX_NOISE(SUFFIX, T)                                                                          \
  DAX_NOISE_FORM(NoiseImmerkaer, noiseImmerkaer, SUFFIX, T)                                           \
  DAX_NOISE_FORM(NoiseMad, noiseMad, SUFFIX, T)                                                       \
  DaxStatus DAXI_NoiseImmerkaerBufferSize_##SUFFIX##_MT(DaxiSize size, uint64_t* bytes) {             \
    return dax::storeImmerkaerBytes<T>(size, bytes);                                                  \
  }                                                                                                   \
  DaxStatus DAXI_NoiseMadBufferSize_##SUFFIX##_MT(DaxiSize size, uint32_t threads, uint64_t* bytes) { \
    return dax::storeMadBytes(size, threads, bytes);                                                  \
  }
DAX_NOISE(8u, uint8_t)
DAX_NOISE(16u, uint16_t)
DAX_NOISE(16s, int16_t)
DAX_NOISE(32f, float)
#undef DAX_NOISE
#undef DAX_NOISE_FORM
