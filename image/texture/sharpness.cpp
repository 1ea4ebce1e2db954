#include "daxi/sharpness.h"

#include <algorithm>
#include <type_traits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"

namespace dax {
namespace {

__extension__ using WideSum = __int128;

// Differences of integers fit 32 bits. Their squares are summed up over parts of a row in as few bits as hold them: of
// bytes two of 1020^2 at each of 1024 pixels.
template <class T>
struct FocusNumbers {
  static constexpr bool kIsInteger = std::is_integral_v<T>;
  using Difference = std::conditional_t<kIsInteger, int32_t, double>;
  using Square = std::conditional_t<!kIsInteger, double, std::conditional_t<sizeof(T) == 1, int32_t, int64_t>>;
  using Sum = std::conditional_t<kIsInteger, WideSum, double>;
  static constexpr int32_t kPart = kIsInteger ? 1024 : INT32_MAX;
};

// The rows above, at and below a row of pixels.
template <class T>
struct ThreeRows {
  using Difference = typename FocusNumbers<T>::Difference;
  using Square = typename FocusNumbers<T>::Square;

  const T *a, *b, *c;

  Square squaredGradient(int32_t x) const {
    const Square gx = (at(a, x + 1) - at(a, x - 1)) + 2 * (at(b, x + 1) - at(b, x - 1)) + (at(c, x + 1) - at(c, x - 1));
    const Square gy = (at(c, x - 1) - at(a, x - 1)) + 2 * (at(c, x) - at(a, x)) + (at(c, x + 1) - at(a, x + 1));
    return gx * gx + gy * gy;
  }
  Square squaredStep(int32_t x) const {
    const Square step = at(b, x + 1) - at(b, x - 1);
    return step * step;
  }
  Difference laplacian(int32_t x) const { return (at(b, x - 1) + at(b, x + 1)) + (at(a, x) + at(c, x)) - 4 * at(b, x); }

 private:
  static Difference at(const T* row, int32_t x) { return Difference{row[x]}; }
};

template <class T>
struct FocusedImage {
  using Numbers = FocusNumbers<T>;

  const T* src;
  int32_t srcStep;
  DaxiSize size;
  PoolThreads on;
  void* buffer;

  int32_t innerRows() const { return size.height - 2; }
  double count() const { return (size.width - 2.0) * innerRows(); }

  // The sum of value(rows, x) over all pixels of a row but the outermost.
  template <class Part, class Sum, class Value>
  Sum sumOfRow(int32_t y, const Value& value) const {
    const T* const above = rowAt(src, srcStep, y);
    const ThreeRows<T> rows{above, above + srcStep, above + srcStep + srcStep};
    Sum sum = 0;
    for (int32_t first = 1, end; first + 1 < size.width; first = end) {
      end = first + std::min(size.width - 1 - first, Numbers::kPart);
      Part part = 0;
      for (int32_t x = first; x < end; ++x) part += value(rows, x);
      sum += part;
    }
    return sum;
  }

  // The sums of all rows, added from the first to the last; those of tiles are kept in the buffer.
  template <class Part, class Sum, class Value>
  DaxStatus add(Sum& sum, const Value& value) const {
    if (!buffer) {
      for (int32_t y = 0; y < innerRows(); ++y) sum += sumOfRow<Part, Sum>(y, value);
      return DAX_STS_OK;
    }
    auto* const held = static_cast<Sum*>(buffer);
    DAX_REQUIRE_OK(runRows(on, innerRows(), [&](int32_t first, int32_t end) {
      for (int32_t y = first; y < end; ++y) held[y] = sumOfRow<Part, Sum>(y, value);
    }));
    for (int32_t y = 0; y < innerRows(); ++y) sum += held[y];
    return DAX_STS_OK;
  }
};

template <class T, class Value>
DaxStatus meanOf(const FocusedImage<T>& image, double* sharpness, const Value& value) {
  typename FocusNumbers<T>::Sum sum = 0;
  DAX_REQUIRE_OK(image.template add<typename FocusNumbers<T>::Square>(sum, value));
  *sharpness = static_cast<double>(sum) / image.count();
  return DAX_STS_OK;
}

template <class T>
DaxStatus tenengrad(const FocusedImage<T>& image, double* sharpness) {
  return meanOf(image, sharpness, [](const ThreeRows<T>& rows, int32_t x) { return rows.squaredGradient(x); });
}

template <class T>
DaxStatus brenner(const FocusedImage<T>& image, double* sharpness) {
  return meanOf(image, sharpness, [](const ThreeRows<T>& rows, int32_t x) { return rows.squaredStep(x); });
}

// In two passes, since the difference of a mean of squares and a squared mean cancels.
template <class T>
DaxStatus laplacianVariance(const FocusedImage<T>& image, double* sharpness) {
  double mean = 0, squares = 0;
  DAX_REQUIRE_OK(meanOf(image, &mean, [](const ThreeRows<T>& rows, int32_t x) { return rows.laplacian(x); }));
  DAX_REQUIRE_OK(image.template add<double>(squares, [=](const ThreeRows<T>& rows, int32_t x) {
    const double off = static_cast<double>(rows.laplacian(x)) - mean;
    return off * off;
  }));
  *sharpness = squares / image.count();
  return DAX_STS_OK;
}

template <class T>
DaxStatus measureSharpness(DaxStatus (*measure)(const FocusedImage<T>&, double*), const FocusedImage<T>& image,
                           double* sharpness) {
  DAX_REQUIRE(image.src && sharpness, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(image.size, 3), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(image.size.width, image.srcStep), DAX_STS_BAD_STEP);
  return measure(image, sharpness);
}

// One sum for each row, of any type.
DaxStatus storeSharpnessBytes(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 3), DAX_STS_BAD_PARAM);
  BufferLayout layout;
  layout.add<WideSum>(static_cast<uint64_t>(size.height));
  return layout.store(bytes);
}

}  // namespace
}  // namespace dax

#define DAX_SHARPNESS_OF(NAME, MEASURE, SUFFIX, T)                                                                   \
  DaxStatus DAXI_Sharpness##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, double* sharpness) { \
    return dax::measureSharpness<T>(dax::MEASURE<T>, {src, srcStep, size, {}, nullptr}, sharpness);                  \
  }                                                                                                                  \
  DaxStatus DAXI_Sharpness##NAME##_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,    \
                                                     DaxiSize size, double* sharpness, void* buffer) {               \
    DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);                                                                       \
    return dax::measureSharpness<T>(dax::MEASURE<T>, {src, srcStep, size, {pool, threads}, buffer}, sharpness);      \
  }                                                                                                                  \
  DaxStatus DAXI_Sharpness##NAME##BufferSize_##SUFFIX##_MT(DaxiSize size, uint64_t* bytes) {                         \
    return dax::storeSharpnessBytes(size, bytes);                                                                    \
  }
#define DAX_SHARPNESS(NAME, MEASURE)             \
  DAX_SHARPNESS_OF(NAME, MEASURE, 8u, uint8_t)   \
  DAX_SHARPNESS_OF(NAME, MEASURE, 16u, uint16_t) \
  DAX_SHARPNESS_OF(NAME, MEASURE, 16s, int16_t)  \
  DAX_SHARPNESS_OF(NAME, MEASURE, 32f, float)
DAX_SHARPNESS(Tenengrad, tenengrad)
DAX_SHARPNESS(LaplacianVariance, laplacianVariance)
DAX_SHARPNESS(Brenner, brenner)
#undef DAX_SHARPNESS
#undef DAX_SHARPNESS_OF
