// Tasks of element-wise operations of one image or two.
#pragma once

#include <algorithm>
#include <type_traits>

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace bench {

// Noise; floats in 0..16.
template <class T>
Image<T> elements() {
  Image<T> image = noise<T>();
  if constexpr (std::is_floating_point_v<T>) {
    for (T& value : *image.pixels) value /= 16;
  }
  return image;
}

// call(source, destination). `same`: peers get the same result.
template <class T, class D, class Call>
Task prepareOne(Call call, bool same = true) {
  const Image<T> from = elements<T>();
  const Image<D> to(kSize);
  Task task = {[=] { call(from, to); }};
  if (same) task.result = [=] { return digest(to); };
  return task;
}

// call(first, second, destination). The second image has no zeros.
template <class T, class D, class Call>
Task prepareTwo(Call call, bool same = true) {
  const Image<T> first = elements<T>(), second = elements<T>();
  const Image<D> to(kSize);
  std::reverse(second.data(), second.data() + pixelCount(kSize));
  for (T& value : *second.pixels) value = std::max<T>(value, 1);
  Task task = {[=] { call(first, second, to); }};
  if (same) task.result = [=] { return digest(to); };
  return task;
}

// Calls of the library: function(source, step, ..., destination, step, size, rest...).
template <class T, class D, class Call>
Task ownOfOne(Call call) {
  return prepareOne<T, D>([=](const Image<T>& from, const Image<D>& to) {
    require(call(from.data(), kSize.width, to.data(), kSize.width, kSize));
  });
}

template <class T, class D, class Call>
Task ownOfTwo(Call call) {
  return prepareTwo<T, D>([=](const Image<T>& first, const Image<T>& second, const Image<D>& to) {
    require(call(first.data(), kSize.width, second.data(), kSize.width, to.data(), kSize.width, kSize));
  });
}

template <class T>
constexpr size_t kImageBytes = pixelCount(kUsualSize) * sizeof(T);

}  // namespace bench
