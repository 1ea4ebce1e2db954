// Rows by a table, any instruction set.
#pragma once

#include <cstdint>

namespace dax::portable {

template <class From, class To>
void lutRow(const From* src, To* dst, int32_t count, const To* table) {
  for (int32_t x = 0; x < count; ++x) dst[x] = table[src[x]];
}

}  // namespace dax::portable
