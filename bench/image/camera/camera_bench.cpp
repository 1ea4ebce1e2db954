#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/flat_field.h"
#include "daxi/packed.h"
#include "daxi/yuv.h"

namespace {

using bench::Image;
using bench::kSize;

constexpr size_t kPixels = bench::pixelCount(bench::kUsualSize);

bench::Task nv12() {
  const Image<uint8_t> from = bench::noise<uint8_t>({kSize.width, kSize.height * 3 / 2}),
                       to({3 * kSize.width, kSize.height});
  const int32_t step = kSize.width;
  return {[=] {
            const uint8_t* const chroma = from.data() + bench::pixelCount(kSize);
            bench::require(DAXI_NV12ToRGB_8u_P2C3R(from.data(), step, chroma, step, to.data(), 3 * step, kSize, 0, 0));
          },
          nullptr};
}

bench::Task yuyv() {
  const Image<uint8_t> from = bench::noise<uint8_t>({2 * kSize.width, kSize.height}),
                       to({3 * kSize.width, kSize.height});
  const int32_t step = kSize.width;
  return {[=] { bench::require(DAXI_YUYVToRGB_8u_C2C3R(from.data(), 2 * step, to.data(), 3 * step, kSize, 0, 0)); },
          nullptr};
}

bench::Task unpack(decltype(&DAXI_UnpackMono12p_8u16u_C1R) call) {
  const Image<uint8_t> from = bench::noise<uint8_t>({kSize.width * 3 / 2, kSize.height});
  const Image<uint16_t> to(kSize);
  return {[=] { bench::require(call(from.data(), from.size.width, to.data(), kSize.width, kSize)); }, nullptr};
}

bench::Task flatField() {
  const Image<uint16_t> from = bench::noise<uint16_t>(), dark = bench::noise<uint16_t>(), to(kSize);
  const Image<float> gain = bench::noise<float>();
  const int32_t step = kSize.width;
  return {[=] {
            bench::require(DAXI_FlatField_16u_C1R(from.data(), step, dark.data(), step, gain.data(), step, to.data(),
                                                  step, kSize));
          },
          nullptr};
}

const bench::Own operations[] = {
    {"NV12 to RGB", 3 * kPixels, nv12},
    {"YUYV to RGB", 3 * kPixels, yuyv},
    {"unpack Mono12p", 2 * kPixels, [] { return unpack(DAXI_UnpackMono12p_8u16u_C1R); }},
    {"unpack Mono10p", 2 * kPixels, [] { return unpack(DAXI_UnpackMono10p_8u16u_C1R); }},
    {"flat field, 16u", 2 * kPixels, flatField},
};

}  // namespace
