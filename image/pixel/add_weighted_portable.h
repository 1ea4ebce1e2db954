// Rows of weighted sums, any instruction set.
#pragma once

#include <type_traits>

#include "frame/numeric/round.h"
#include "image/pixel/add_weighted.h"
#include "image/pixel/element_rows_portable.h"

namespace dax::portable {

template <class T>
void addWeightedRow(const T* a, const T* b, T* dst, int32_t count, const DaxiAddWeightedCfg& cfg) {
  forEachBlock<Operand::row>(a, b, dst, count, [w1 = cfg.a, w2 = cfg.b, offset = cfg.c](T first, T second) {
    const double sum = (w1 * static_cast<double>(first) + w2 * static_cast<double>(second)) + offset;
    if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(sum);
    } else {
      return roundTo<T>(sum);
    }
  });
}

}  // namespace dax::portable
