#include "daxi/rotate.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

// call(src, srcStep, dst, dstStep) into an image of the size.
template <class T, class Call>
bench::Task prepare(DaxiSize to, int32_t channels, Call call) {
  const Image<T> from = bench::noise<T>({kSize.width * channels, kSize.height});
  const Image<T> result({to.width * channels, to.height});
  return {[=] { bench::require(call(from.data(), from.size.width, result.data(), result.size.width)); },
          [=] { return bench::digest(result); }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);
const DaxiSize turned = {kSize.height, kSize.width};

const bench::Own operations[] = {
    {"rotate by 90 degrees, 8u", kBytes,
     [] {
       return prepare<uint8_t>(turned, 1, [](auto... image) { return DAXI_Rotate90_8u_C1R(image..., kSize, 1); });
     }},
    {"rotate by 90 degrees, 8u, three channels", 3 * kBytes,
     [] {
       return prepare<uint8_t>(turned, 3, [](auto... image) { return DAXI_Rotate90_8u_C3R(image..., kSize, 1); });
     }},
    {"transpose, 8u", kBytes,
     [] { return prepare<uint8_t>(turned, 1, [](auto... image) { return DAXI_Transpose_8u_C1R(image..., kSize); }); }},
    {"transpose, 32f", 4 * kBytes,
     [] { return prepare<float>(turned, 1, [](auto... image) { return DAXI_Transpose_32f_C1R(image..., kSize); }); }},
    {"mirror columns, 8u", kBytes,
     [] { return prepare<uint8_t>(kSize, 1, [](auto... image) { return DAXI_Mirror_8u_C1R(image..., kSize, 0); }); }},
    {"mirror columns, 8u, three channels", 3 * kBytes,
     [] { return prepare<uint8_t>(kSize, 3, [](auto... image) { return DAXI_Mirror_8u_C3R(image..., kSize, 0); }); }},
};

}  // namespace
