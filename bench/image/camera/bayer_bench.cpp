#include "daxi/bayer.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class Call>
bench::Task prepare(Call call, int32_t channels = 3) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to({channels * kSize.width, kSize.height});
  const int32_t toStep = channels * kSize.width;
  return {[=] { bench::require(call(from.data(), kSize.width, to.data(), toStep, kSize, DAXI_BAYER_RGGB)); }, nullptr};
}

constexpr size_t kPixels = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"Bayer to colour, bilinear, 8u", 3 * kPixels, [] { return prepare<uint8_t>(DAXI_BayerBilinear_8u_C1C3R); }},
    {"Bayer to colour, bilinear, 16u", 6 * kPixels, [] { return prepare<uint16_t>(DAXI_BayerBilinear_16u_C1C3R); }},
    {"Bayer to colour, edge-aware, 8u", 3 * kPixels, [] { return prepare<uint8_t>(DAXI_BayerMHC_8u_C1C3R); }},
    {"Bayer to colour, edge-aware, 16u", 6 * kPixels, [] { return prepare<uint16_t>(DAXI_BayerMHC_16u_C1C3R); }},
    {"Bayer to grey, bilinear, 8u", kPixels, [] { return prepare<uint8_t>(DAXI_BayerBilinearToGray_8u_C1R, 1); }},
};

}  // namespace
