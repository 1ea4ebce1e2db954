// Checks of element-wise operations: exports over ragged sizes, padded and guarded, and rows of both twins over telling
// values. What is expected comes from a function of one element, or of two.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include "dax/status.h"
#include "tests/support/test_image.h"

namespace dax::test {

// The same bits, or NaN both times.
template <class T>
bool sameNumber(T a, T b) {
  return sameBits(a, b) || (a != a && b != b);
}

// All bytes; or numbers around powers of two and the limits of the types; floats of every kind.
template <class T>
std::vector<T> tellingValues() {
  std::vector<T> values;
  if constexpr (std::is_floating_point_v<T>) {
    for (const uint32_t bits : {0u, 1u, 0x007FFFFFu, 0x00800000u, 0x33800000u, 0x3EFFFFFFu, 0x3F000000u, 0x3F7FFFFFu,
                                0x3F800000u, 0x3F800001u, 0x40200000u, 0x42FE0000u, 0x4B7FFFFFu, 0x7F7FFFFFu,
                                0x7F800000u, 0x7F800001u, 0x7FC00000u, 0x7FFFFFFFu}) {
      values.push_back(std::bit_cast<T>(bits));
      values.push_back(std::bit_cast<T>(bits | 0x80000000u));
    }
  } else if constexpr (sizeof(T) == 1) {
    for (int i = 0; i < 256; ++i) values.push_back(static_cast<T>(i));
  } else {
    for (int i = 0; i <= 16; ++i) {
      for (int near = -1; near <= 1; ++near) {
        values.push_back(static_cast<T>((1 << i) + near));
        values.push_back(static_cast<T>(-(1 << i) + near));
      }
    }
  }
  return values;
}

// Every value with every other one, in different lanes. row(a, b, result, count, isa).
template <class T, class D, class Row, class Expected>
void checkRowOfTwo(Row row, Expected expected) {
  const std::vector<T> values = tellingValues<T>();
  const auto count = static_cast<int32_t>(values.size());
  for (int32_t turn = 0; turn < count; ++turn) {
    std::vector<T> others;
    for (int32_t i = 0; i < count; ++i) others.push_back(values[static_cast<size_t>((i + turn) % count)]);
    for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
      std::vector<D> result(values.size());
      // From an odd element on, so that a value meets both vectors and the rest of the row.
      for (const int32_t first : {0, turn % std::min(7, count)}) {
        row(values.data() + first, others.data() + first, result.data() + first, count - first, isa);
        for (int32_t i = first; i < count; ++i) {
          const T a = values[static_cast<size_t>(i)], b = others[static_cast<size_t>(i)];
          ASSERT_TRUE(sameNumber(result[static_cast<size_t>(i)], static_cast<D>(expected(a, b))))
              << +a << ", " << +b << " code " << isa;
        }
      }
    }
  }
}

// Every value. row(source, result, count, isa).
template <class T, class D, class Row, class Expected>
void checkRowOfOne(Row row, Expected expected) {
  const std::vector<T> values = tellingValues<T>();
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    std::vector<D> result(values.size());
    row(values.data(), result.data(), static_cast<int32_t>(values.size()), isa);
    for (size_t i = 0; i < values.size(); ++i) {
      ASSERT_TRUE(sameNumber(result[i], static_cast<D>(expected(values[i])))) << +values[i] << " code " << isa;
    }
  }
}

// Every value with a constant.
template <class T, class D, class Row, class Expected>
void checkRowWithConstant(Row row, Expected expected) {
  for (const T constant : tellingValues<T>()) {
    const std::vector<T> pattern(48, constant);
    checkRowOfOne<T, D>(
        [&](const T* a, D* dst, int32_t count, int32_t isa) { row(a, pattern.data(), dst, count, isa); },
        [&](T a) { return expected(a, constant); });
  }
}

// Calls body(size, gap between rows, guard).
template <class Body>
void overRaggedSizes(Body body) {
  for (int32_t width = 1; width <= 70; ++width) body(DaxiSize{width, 1 + width % 3}, width % 4, kGuards[width % 2]);
  body(DaxiSize{331, 5}, 0, kGuards[0]);
}

template <class D, class Expected>
testing::AssertionResult isEverywhere(const TestImage<D>& dst, Expected expected) {
  for (int32_t y = 0; y < dst.size().height; ++y) {
    for (int32_t x = 0; x < dst.size().width; ++x) {
      if (!sameNumber(dst.at(x, y), static_cast<D>(expected(x, y)))) {
        return testing::AssertionFailure() << "at " << x << ", " << y << " of " << dst.size().width;
      }
    }
  }
  return testing::AssertionSuccess();
}

// plain(source, step, dst, step, size); inPlace(dst, step, size), or nothing.
template <class T, class D, class Plain, class InPlace, class Expected>
void checkExportOfOne(Plain plain, InPlace inPlace, Expected expected) {
  overRaggedSizes([&](DaxiSize size, int32_t gap, Guard guard) {
    TestImage<T> src(size, gap, guard);
    TestImage<D> dst(size, gap + 1, guard);
    src.randomize(static_cast<uint64_t>(size.width)), dst.remember();
    const auto result = [&](int32_t x, int32_t y) { return expected(src.at(x, y)); };
    ASSERT_EQ(plain(src.data(), src.step(), dst.data(), dst.step(), size), DAX_STS_OK);
    ASSERT_TRUE(isEverywhere(dst, result));
    ASSERT_TRUE(dst.paddingUntouched());
    if constexpr (!std::is_null_pointer_v<InPlace>) {
      ASSERT_EQ(inPlace(src.data(), src.step(), size), DAX_STS_OK);
      ASSERT_TRUE(isEverywhere(src, [&](int32_t x, int32_t y) { return dst.at(x, y); }));
    }
  });
}

// plain(first, step, second, step, dst, step, size); inPlace(second, step, dst, step, size), or nothing.
template <class T, class D, class Plain, class InPlace, class Expected>
void checkExportOfTwo(Plain plain, InPlace inPlace, Expected expected) {
  overRaggedSizes([&](DaxiSize size, int32_t gap, Guard guard) {
    TestImage<T> first(size, gap, guard), second(size, gap ? gap + 2 : 0, guard);
    TestImage<D> dst(size, gap, guard);
    first.randomize(static_cast<uint64_t>(size.width)), second.randomize(static_cast<uint64_t>(100 + size.width));
    dst.remember();
    ASSERT_EQ(plain(first.data(), first.step(), second.data(), second.step(), dst.data(), dst.step(), size),
              DAX_STS_OK);
    ASSERT_TRUE(isEverywhere(dst, [&](int32_t x, int32_t y) { return expected(first.at(x, y), second.at(x, y)); }));
    ASSERT_TRUE(dst.paddingUntouched());
    if constexpr (!std::is_null_pointer_v<InPlace>) {
      ASSERT_EQ(inPlace(second.data(), second.step(), first.data(), first.step(), size), DAX_STS_OK);
      ASSERT_TRUE(isEverywhere(first, [&](int32_t x, int32_t y) { return dst.at(x, y); }));
    }
  });
}

}  // namespace dax::test
