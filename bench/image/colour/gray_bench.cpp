#include "daxi/gray.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>({3 * kSize.width, kSize.height});
  const Image<T> to(kSize);
  return {[=] { bench::require(call(from.data(), 3 * kSize.width, to.data(), kSize.width, kSize, 0)); }, nullptr};
}

constexpr size_t kPixels = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"grey of RGB, 8u", kPixels, [] { return prepare<uint8_t>(DAXI_RGBToGray_8u_C3C1R); }},
    {"grey of RGB, 16u", 2 * kPixels, [] { return prepare<uint16_t>(DAXI_RGBToGray_16u_C3C1R); }},
    {"grey of RGB, 32f", 4 * kPixels, [] { return prepare<float>(DAXI_RGBToGray_32f_C3C1R); }},
};

}  // namespace
