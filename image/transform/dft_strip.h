// Rows and columns of pictures to points and back. Where there are fewer rows than lines, the last one is repeated.
//
// The backward transform is the forward one of numbers whose parts are exchanged, so these exchange them on the way.
#pragma once

#include <algorithm>
#include <cstddef>

#include "frame/rows.h"
#include "image/transform/dft_vector.h"

namespace dax {

// Real lines lie in all lanes of a point: kDftPoint of them.
constexpr int kDftGroups = 4;

// Where the real parts of the lines of one half lie in a point, or the imaginary ones.
template <class T>
constexpr int partAt(int half, bool isImaginary) {
  return half * kDftLanes<T> + (isImaginary ? kDftLines<T> : 0);
}

// The rows of one group of lanes.
template <class P>
struct RowGroup {
  P* rows[4];
  int count;  // of them that exist
};

template <class T, class P>
RowGroup<P> rowGroup(P* image, int32_t step, int32_t rows, int group) {
  RowGroup<P> r;
  const int32_t first = group * kDftLanes<T>;
  for (int32_t l = 0; l < kDftLanes<T>; ++l) r.rows[l] = rowAt(image, step, std::min(first + l, rows - 1));
  r.count = std::clamp(rows - first, 0, kDftLanes<T>);
  return r;
}

template <class T>
void loadRows(const ComplexOf<T>* src, int32_t step, int32_t rows, int32_t width, bool exchanged, T* points) {
  constexpr int kLanes = kDftLanes<T>, kAtOnce = kLanes / 2;
  for (int half = 0; half < 2; ++half) {
    const auto group = rowGroup<T>(src, step, rows, half);
    T* re = points + partAt<T>(half, exchanged);
    T* im = points + partAt<T>(half, !exchanged);
    int32_t x = 0;
    for (; x + kAtOnce <= width; x += kAtOnce) {
      DftVector<T> v[kLanes];
      for (int l = 0; l < kLanes; ++l) v[l] = loadVector(&group.rows[l][x].re);
      transpose(v);
      for (int i = 0; i < kAtOnce; ++i, re += kDftPoint<T>, im += kDftPoint<T>) {
        storeVector(re, v[2 * i]), storeVector(im, v[2 * i + 1]);
      }
    }
    for (; x < width; ++x, re += kDftPoint<T>, im += kDftPoint<T>) {
      for (int l = 0; l < kLanes; ++l) re[l] = group.rows[l][x].re, im[l] = group.rows[l][x].im;
    }
  }
}

template <class T>
void storeRows(const T* points, bool exchanged, T scale, ComplexOf<T>* dst, int32_t step, int32_t rows, int32_t width) {
  constexpr int kLanes = kDftLanes<T>, kAtOnce = kLanes / 2;
  for (int half = 0; half < 2; ++half) {
    const auto group = rowGroup<T>(dst, step, rows, half);
    const T* re = points + partAt<T>(half, exchanged);
    const T* im = points + partAt<T>(half, !exchanged);
    int32_t x = 0;
    for (; x + kAtOnce <= width; x += kAtOnce) {
      DftVector<T> v[kLanes];
      for (int i = 0; i < kAtOnce; ++i, re += kDftPoint<T>, im += kDftPoint<T>) {
        v[2 * i] = loadVector(re) * scale, v[2 * i + 1] = loadVector(im) * scale;
      }
      transpose(v);
      for (int l = 0; l < group.count; ++l) storeVector(&group.rows[l][x].re, v[l]);
    }
    for (; x < width; ++x, re += kDftPoint<T>, im += kDftPoint<T>) {
      for (int l = 0; l < group.count; ++l) group.rows[l][x] = {re[l] * scale, im[l] * scale};
    }
  }
}

template <class T>
void loadColumns(const ComplexOf<T>* src, int32_t step, int32_t columns, int32_t height, bool exchanged, T* points) {
  constexpr int kLanes = kDftLanes<T>;
  for (int32_t y = 0; y < height; ++y, points += kDftPoint<T>) {
    const ComplexOf<T>* const row = rowAt(src, step, y);
    if (columns == kDftLines<T>) {
      for (int half = 0; half < 2; ++half) {
        const T* const from = &row[half * kLanes].re;
        DftVector<T> re = loadVector(from), im = loadVector(from + kLanes);
        separate(re, im);
        storeVector(points + partAt<T>(half, exchanged), re), storeVector(points + partAt<T>(half, !exchanged), im);
      }
    } else {
      T *const re = points + partAt<T>(0, exchanged), *const im = points + partAt<T>(0, !exchanged);
      for (int l = 0; l < kDftLines<T>; ++l) re[l] = l < columns ? row[l].re : 0, im[l] = l < columns ? row[l].im : 0;
    }
  }
}

template <class T>
void storeColumns(const T* points, bool exchanged, T scale, ComplexOf<T>* dst, int32_t step, int32_t columns,
                  int32_t height) {
  constexpr int kLanes = kDftLanes<T>;
  for (int32_t y = 0; y < height; ++y, points += kDftPoint<T>) {
    ComplexOf<T>* const row = rowAt(dst, step, y);
    if (columns == kDftLines<T>) {
      for (int half = 0; half < 2; ++half) {
        T* const to = &row[half * kLanes].re;
        DftVector<T> re = loadVector(points + partAt<T>(half, exchanged)) * scale;
        DftVector<T> im = loadVector(points + partAt<T>(half, !exchanged)) * scale;
        interleave(re, im);
        storeVector(to, re), storeVector(to + kLanes, im);
      }
    } else {
      const T *const re = points + partAt<T>(0, exchanged), *const im = points + partAt<T>(0, !exchanged);
      for (int l = 0; l < columns; ++l) row[l] = {re[l] * scale, im[l] * scale};
    }
  }
}

// Real rows, element x to point place(x).
template <class T, class Place>
void loadRealRows(const T* src, int32_t step, int32_t rows, int32_t width, const Place& place, T* points) {
  constexpr int kLanes = kDftLanes<T>;
  const auto at = [&](int32_t x, int g) { return points + ptrdiff_t{place(x)} * kDftPoint<T> + g * kLanes; };
  for (int g = 0; g < kDftGroups; ++g) {
    const auto group = rowGroup<T>(src, step, rows, g);
    int32_t x = 0;
    for (; x + kLanes <= width; x += kLanes) {
      DftVector<T> v[kLanes];
      for (int l = 0; l < kLanes; ++l) v[l] = loadVector(group.rows[l] + x);
      transpose(v);
      for (int i = 0; i < kLanes; ++i) storeVector(at(x + i, g), v[i]);
    }
    for (; x < width; ++x) {
      for (int l = 0; l < kLanes; ++l) at(x, g)[l] = group.rows[l][x];
    }
  }
}

template <class T, class Place>
void storeRealRows(const T* points, bool exchanged, T scale, const Place& place, T* dst, int32_t step, int32_t rows,
                   int32_t width) {
  constexpr int kLanes = kDftLanes<T>;
  for (int g = 0; g < kDftGroups; ++g) {
    const auto group = rowGroup<T>(dst, step, rows, g);
    const int from = (exchanged ? g ^ 2 : g) * kLanes;
    const auto at = [&](int32_t x) { return points + ptrdiff_t{place(x)} * kDftPoint<T> + from; };
    int32_t x = 0;
    for (; x + kLanes <= width; x += kLanes) {
      DftVector<T> v[kLanes];
      for (int i = 0; i < kLanes; ++i) v[i] = loadVector(at(x + i)) * scale;
      transpose(v);
      for (int l = 0; l < group.count; ++l) storeVector(group.rows[l] + x, v[l]);
    }
    for (; x < width; ++x) {
      for (int l = 0; l < group.count; ++l) group.rows[l][x] = at(x)[l] * scale;
    }
  }
}

// Real columns, row y to point place(y).
template <class T, class Place>
void loadRealColumns(const T* src, int32_t step, int32_t columns, int32_t height, const Place& place, T* points) {
  for (int32_t y = 0; y < height; ++y) {
    T* const to = points + ptrdiff_t{place(y)} * kDftPoint<T>;
    std::fill(std::copy_n(rowAt(src, step, y), columns, to), to + kDftPoint<T>, T{0});
  }
}

template <class T, class Place>
void storeRealColumns(const T* points, bool exchanged, const Place& place, T* dst, int32_t step, int32_t columns,
                      int32_t height) {
  for (int32_t y = 0; y < height; ++y) {
    const T* const from = points + ptrdiff_t{place(y)} * kDftPoint<T>;
    T* const row = rowAt(dst, step, y);
    for (int32_t l = 0; l < columns; ++l) row[l] = from[exchanged ? (l + kDftLines<T>) % kDftPoint<T> : l];
  }
}

}  // namespace dax
