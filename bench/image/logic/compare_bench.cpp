#include "daxi/compare.h"

#include "bench/support/element.h"
#include "daxi/in_range.h"
#include "daxi/logic.h"

namespace {

using bench::kImageBytes;

// Three channels of a third of the width.
bench::Task inRangeOfColour() {
  const bench::Image<uint8_t> from = bench::noise<uint8_t>();
  const DaxiSize size = {bench::kSize.width / 3, bench::kSize.height};
  const bench::Image<uint8_t> to(size);
  return {
      [=] {
        const uint8_t low[] = {20, 30, 40}, high[] = {200, 210, 220};
        bench::require(DAXI_InRange_8u_C3C1R(from.data(), bench::kSize.width, to.data(), size.width, size, low, high));
      },
      [=] { return bench::digest(to); }};
}

const bench::Own operations[] = {
    {"image > image, 8u", kImageBytes<uint8_t>,
     [] {
       return bench::ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_Compare_8u_C1R(a..., DAXI_COMPARE_GT); });
     }},
    {"image > image, 16u", kImageBytes<uint8_t>,
     [] {
       return bench::ownOfTwo<uint16_t, uint8_t>([](auto... a) { return DAXI_Compare_16u_C1R(a..., DAXI_COMPARE_GT); });
     }},
    {"image <= image, 32f", kImageBytes<uint8_t>,
     [] {
       return bench::ownOfTwo<float, uint8_t>([](auto... a) { return DAXI_Compare_32f_C1R(a..., DAXI_COMPARE_LE); });
     }},
    {"image != constant, 8u", kImageBytes<uint8_t>,
     [] {
       return bench::ownOfOne<uint8_t, uint8_t>(
           [](auto... a) { return DAXI_CompareC_8u_C1R(a..., 77, DAXI_COMPARE_NE); });
     }},
    {"image within a tolerance of a constant, 32f", kImageBytes<uint8_t>,
     [] {
       return bench::ownOfOne<float, uint8_t>([](auto... a) { return DAXI_CompareEqualEpsC_32f_C1R(a..., 8, 2); });
     }},
    {"in range, 8u", kImageBytes<uint8_t>,
     [] { return bench::ownOfOne<uint8_t, uint8_t>([](auto... a) { return DAXI_InRange_8u_C1R(a..., 50, 150); }); }},
    {"in range, 16u", kImageBytes<uint8_t>,
     [] { return bench::ownOfOne<uint16_t, uint8_t>([](auto... a) { return DAXI_InRange_16u_C1R(a..., 50, 150); }); }},
    {"in range, three channels, 8u", kImageBytes<uint8_t> / 3, inRangeOfColour},
    {"image & image, 8u", kImageBytes<uint8_t>,
     [] { return bench::ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_And_8u_C1R(a...); }); }},
    {"image ^ constant, 16u", kImageBytes<uint16_t>,
     [] { return bench::ownOfOne<uint16_t, uint16_t>([](auto... a) { return DAXI_XorC_16u_C1R(a..., 77); }); }},
    {"~image, 8u", kImageBytes<uint8_t>,
     [] { return bench::ownOfOne<uint8_t, uint8_t>([](auto... a) { return DAXI_Not_8u_C1R(a...); }); }},
    {"image >> constant, 8u", kImageBytes<uint8_t>,
     [] { return bench::ownOfOne<uint8_t, uint8_t>([](auto... a) { return DAXI_RShiftC_8u_C1R(a..., 3); }); }},
};

}  // namespace
