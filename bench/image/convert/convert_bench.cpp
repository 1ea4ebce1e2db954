#include "daxi/convert.h"

#include <functional>

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class From, class To, class Call>
bench::Task prepare(Call call) {
  const Image<From> from = bench::noise<From>();
  const Image<To> to(kSize);
  return {[=] { bench::require(call(from.data(), kSize.width, to.data(), kSize.width, kSize)); },
          [=] { return bench::digest(to); }};
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(T);

template <class From, class To>
using Convert = DaxStatus (*)(const From*, int32_t, To*, int32_t, DaxiSize, const DaxiConvertCfg*);

template <class From, class To>
std::function<bench::Task()> scaled(Convert<From, To> convert, double scale, double offset) {
  return [=] {
    return prepare<From, To>([=](auto... a) {
      const DaxiConvertCfg cfg = {scale, offset};
      return convert(a..., &cfg);
    });
  };
}

const bench::Own operations[] = {
    {"8u to 16u", kBytes<uint16_t>, scaled(DAXI_Convert_8u16u_C1R, 1, 0)},
    {"8u to 32f", kBytes<float>, scaled(DAXI_Convert_8u32f_C1R, 1, 0)},
    {"16u to 8u", kBytes<uint8_t>, scaled(DAXI_Convert_16u8u_C1R, 1, 0)},
    {"16u to 32f", kBytes<float>, scaled(DAXI_Convert_16u32f_C1R, 1, 0)},
    {"16s to 8u", kBytes<uint8_t>, scaled(DAXI_Convert_16s8u_C1R, 1, 0)},
    {"32f to 8u", kBytes<uint8_t>, scaled(DAXI_Convert_32f8u_C1R, 1, 0)},
    {"32f to 16u", kBytes<uint16_t>, scaled(DAXI_Convert_32f16u_C1R, 1, 0)},
    {"8u to 32f, scaled by 1/255", kBytes<float>, scaled(DAXI_Convert_8u32f_C1R, 1 / 255.0, 0)},
    {"8u to 16s, scaled", kBytes<int16_t>, scaled(DAXI_Convert_8u16s_C1R, 1.7, -200)},
    {"16u to 8u, scaled by 1/16", kBytes<uint8_t>, scaled(DAXI_Convert_16u8u_C1R, 1 / 16.0, 0)},
    {"16u to 8u, scaled by 0.3", kBytes<uint8_t>, scaled(DAXI_Convert_16u8u_C1R, 0.3, 0)},
    {"16u to 32f, scaled by 0.3", kBytes<float>, scaled(DAXI_Convert_16u32f_C1R, 0.3, 0)},
    {"32f to 8u, scaled by 0.3", kBytes<uint8_t>, scaled(DAXI_Convert_32f8u_C1R, 0.3, 0)},
    {"16u to 8u, full range", kBytes<uint8_t>,
     [] { return prepare<uint16_t, uint8_t>([](auto... a) { return DAXI_ConvertFullRange_16u8u_C1R(a...); }); }},
    {"8u to 16u, full range", kBytes<uint16_t>,
     [] { return prepare<uint8_t, uint16_t>([](auto... a) { return DAXI_ConvertFullRange_8u16u_C1R(a...); }); }},
    {"8u to 32f, full range", kBytes<float>,
     [] { return prepare<uint8_t, float>([](auto... a) { return DAXI_ConvertFullRange_8u32f_C1R(a...); }); }},
    {"32f to 8u, full range", kBytes<uint8_t>,
     [] { return prepare<float, uint8_t>([](auto... a) { return DAXI_ConvertFullRange_32f8u_C1R(a...); }); }},
};

}  // namespace
