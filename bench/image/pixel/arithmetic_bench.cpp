#include "daxi/arithmetic.h"

#include <algorithm>

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {[=] { bench::require(call(from.data(), kSize.width, to.data(), kSize.width, kSize)); },
          [=] { return bench::digest(to); }};
}

// Of two images.
template <class T, class Call>
bench::Task prepareTwo(Call call) {
  const Image<T> first = bench::noise<T>(), second = bench::noise<T>(), to(kSize);
  std::reverse(second.data(), second.data() + bench::pixelCount(kSize));
  const int32_t step = kSize.width;
  return {[=] { bench::require(call(first.data(), step, second.data(), step, to.data(), step, kSize)); },
          [=] { return bench::digest(to); }};
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(T);

const bench::Own operations[] = {
    {"image + constant, 8u", kBytes<uint8_t>,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_AddC_8u_C1RSfs(a..., 77, 0); }); }},
    {"image * constant, 8u", kBytes<uint8_t>,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_MulC_8u_C1RSfs(a..., 3, 0); }); }},
    {"absolute difference, 16u", kBytes<uint16_t>,
     [] { return prepare<uint16_t>([](auto... a) { return DAXI_AbsDiffC_16u_C1RSfs(a..., 3000, 0); }); }},
    {"image + image, 8u", kBytes<uint8_t>,
     [] { return prepareTwo<uint8_t>([](auto... a) { return DAXI_Add_8u_C1RSfs(a..., 0); }); }},
    {"absolute difference of images, 16u", kBytes<uint16_t>,
     [] { return prepareTwo<uint16_t>([](auto... a) { return DAXI_AbsDiff_16u_C1RSfs(a..., 0); }); }},
    {"image - constant, 32f", kBytes<float>,
     [] { return prepare<float>([](auto... a) { return DAXI_SubC_32f_C1R(a..., 0.5f); }); }},
};

}  // namespace
