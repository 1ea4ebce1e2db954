// Look-up tables.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/op2d.h"

namespace dax {

// One row.
template <class From, class To>
void lutRow(const From* src, To* dst, int32_t count, const To* table, int32_t isa);

// All rows of checked planes.
template <class From, class To>
void applyTable(Plane<const From> from, Plane<To> to, DaxiSize size, int32_t channels, const To* table) {
  const auto row = [table, isa = currentIsa()](const From* src, To* dst, int32_t count) {
    lutRow(src, dst, count, table, isa);
  };
  forEachRow(size, channels, row, from, to);
}

// The values of an unsigned type.
template <class T>
inline constexpr int32_t kLevels = int32_t{std::numeric_limits<T>::max()} + 1;

}  // namespace dax
