// Element-wise operations of an image and a second operand: the constant of each channel, or another image.
#pragma once

#include <cstdint>

#include "frame/op2d.h"

namespace dax {

inline constexpr int32_t kNoScaleFactor = 0;  // of floats

// The second operand of a row: constants that repeat after kPatternLength elements, or another row.
enum class Operand { pattern, row };

// A multiple of three and of every vector.
constexpr int32_t kPatternLength = 48;

// The constants of the channels, one behind the other.
template <class T, int kChannels>
struct Pattern {
  explicit Pattern(const T* value) {
    for (int32_t i = 0; i < kPatternLength; ++i) elements[i] = value[i % kChannels];
  }
  T elements[kPatternLength];
};

// Of images with one channel: row(a, b, result, count) where b is the pattern of a constant, or a row.
template <class T, class D, class Row>
DaxStatus rowsWithConstant(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, T value, Row row) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  const Pattern<T, 1> pattern(&value);
  const auto one = [&](const T* a, D* result, int32_t count) { row(a, pattern.elements, result, count); };
  forEachRow(size, 1, one, from, to);
  return DAX_STS_OK;
}

template <class T, class D, class Row>
DaxStatus rowsWithImage(const T* src1, int32_t step1, const T* src2, int32_t step2, D* dst, int32_t dstStep,
                        DaxiSize size, Row row) {
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, first, second, to));
  forEachRow(size, 1, row, first, second, to);
  return DAX_STS_OK;
}

}  // namespace dax
