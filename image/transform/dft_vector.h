// Lines of complex numbers that are transformed together, one in each lane. A point, element i of all those lines, is
// [re re im im]: two vectors of real parts and two of imaginary ones. One text serves every instruction set.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/vector4.h"
#include "image/transform/dft_types.h"

namespace dax {

using Double2 = double __attribute__((vector_size(16)));

template <class T>
using DftVector = std::conditional_t<std::is_same_v<T, float>, Float4, Double2>;

// Lanes of a vector, lines of a point, numbers of a point.
template <class T>
constexpr int kDftLanes = 16 / sizeof(T);
template <class T>
constexpr int kDftLines = 2 * kDftLanes<T>;
template <class T>
constexpr int kDftPoint = 4 * kDftLanes<T>;

template <class T>
inline DftVector<T> loadVector(const T* from) {
  DftVector<T> v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

template <class T>
inline void storeVector(T* to, DftVector<T> v) {
  std::memcpy(to, &v, sizeof v);
}

// Complex numbers of some lines.
template <class T>
struct Cx {
  DftVector<T> re, im;
};

template <class T>
inline Cx<T> operator+(Cx<T> a, Cx<T> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class T>
inline Cx<T> operator-(Cx<T> a, Cx<T> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class T>
inline Cx<T> operator*(Cx<T> a, T factor) {
  return {a.re * factor, a.im * factor};
}
template <class T>
inline Cx<T> product(Cx<T> a, T re, T im) {
  return {a.re * re - a.im * im, a.re * im + a.im * re};
}
// -i a
template <class T>
inline Cx<T> quarterBack(Cx<T> a) {
  return {a.im, -a.re};
}

// The lines of one half of a point.
template <class T>
inline Cx<T> loadHalf(const T* point, int half) {
  return {loadVector(point + half * kDftLanes<T>), loadVector(point + kDftLines<T> + half * kDftLanes<T>)};
}
template <class T>
inline void storeHalf(T* point, int half, Cx<T> a) {
  storeVector(point + half * kDftLanes<T>, a.re);
  storeVector(point + kDftLines<T> + half * kDftLanes<T>, a.im);
}

// Element k of vector i becomes element i of vector k.
inline void transpose(Float4 (&v)[4]) {
  const Float4 a = __builtin_shufflevector(v[0], v[1], 0, 4, 1, 5), b = __builtin_shufflevector(v[2], v[3], 0, 4, 1, 5);
  const Float4 c = __builtin_shufflevector(v[0], v[1], 2, 6, 3, 7), d = __builtin_shufflevector(v[2], v[3], 2, 6, 3, 7);
  v[0] = __builtin_shufflevector(a, b, 0, 1, 4, 5), v[1] = __builtin_shufflevector(a, b, 2, 3, 6, 7);
  v[2] = __builtin_shufflevector(c, d, 0, 1, 4, 5), v[3] = __builtin_shufflevector(c, d, 2, 3, 6, 7);
}
inline void transpose(Double2 (&v)[2]) {
  const Double2 a = __builtin_shufflevector(v[0], v[1], 0, 2);
  v[1] = __builtin_shufflevector(v[0], v[1], 1, 3), v[0] = a;
}

// Consecutive complex numbers to their real and imaginary parts, and back.
inline void separate(Float4& a, Float4& b) {
  const Float4 re = __builtin_shufflevector(a, b, 0, 2, 4, 6);
  b = __builtin_shufflevector(a, b, 1, 3, 5, 7), a = re;
}
inline void separate(Double2& a, Double2& b) {
  const Double2 re = __builtin_shufflevector(a, b, 0, 2);
  b = __builtin_shufflevector(a, b, 1, 3), a = re;
}
inline void interleave(Float4& re, Float4& im) {
  const Float4 a = __builtin_shufflevector(re, im, 0, 4, 1, 5);
  im = __builtin_shufflevector(re, im, 2, 6, 3, 7), re = a;
}
inline void interleave(Double2& re, Double2& im) {
  separate(re, im);
}

}  // namespace dax
