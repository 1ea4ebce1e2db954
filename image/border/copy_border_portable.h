// Runs of border pixels, any type, any instruction set. Source and destination of a run do not overlap.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace dax::portable {

template <class T>
void copyRun(T* dst, const T* src, ptrdiff_t n) {
  std::memcpy(dst, src, static_cast<size_t>(n) * sizeof(T));
}

template <class T>
void reverseRun(T* dst, const T* src, ptrdiff_t n) {
  for (ptrdiff_t i = 0; i < n; ++i) dst[i] = src[n - 1 - i];
}

template <class T>
void fillRun(T* dst, const T& value, ptrdiff_t n) {
  std::fill_n(dst, n, value);
}

}  // namespace dax::portable
