#include "bench/support/element.h"
#include "daxi/accumulate.h"
#include "daxi/add_weighted.h"
#include "daxi/arithmetic.h"
#include "daxi/divide.h"
#include "daxi/exp_ln.h"
#include "daxi/magnitude.h"
#include "daxi/min_max.h"

namespace {

using bench::kImageBytes, bench::ownOfOne, bench::ownOfTwo;

constexpr DaxiAddWeightedCfg kWeights = {0.3, 0.7, 1};

const bench::Own operations[] = {
    {"image * image / 128, 8u", kImageBytes<uint8_t>,
     [] { return ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_Mul_8u_C1RSfs(a..., 7); }); }},
    {"image * image / 128, 16u", kImageBytes<uint16_t>,
     [] { return ownOfTwo<uint16_t, uint16_t>([](auto... a) { return DAXI_Mul_16u_C1RSfs(a..., 7); }); }},
    {"(image + image) / 2, 8u", kImageBytes<uint8_t>,
     [] { return ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_Add_8u_C1RSfs(a..., 1); }); }},
    {"image / image, 8u", kImageBytes<uint8_t>,
     [] { return ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_Div_8u_C1RSfs(a..., 0); }); }},
    {"image / image, 16u", kImageBytes<uint16_t>,
     [] { return ownOfTwo<uint16_t, uint16_t>([](auto... a) { return DAXI_Div_16u_C1RSfs(a..., 0); }); }},
    {"image / image, 32f", kImageBytes<float>,
     [] { return ownOfTwo<float, float>([](auto... a) { return DAXI_Div_32f_C1R(a...); }); }},
    {"image / constant, 8u", kImageBytes<uint8_t>,
     [] { return ownOfOne<uint8_t, uint8_t>([](auto... a) { return DAXI_DivC_8u_C1RSfs(a..., 7, 0); }); }},
    {"weighted sum, 8u", kImageBytes<uint8_t>,
     [] { return ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_AddWeighted_8u_C1R(a..., &kWeights); }); }},
    {"weighted sum, 16u", kImageBytes<uint16_t>,
     [] { return ownOfTwo<uint16_t, uint16_t>([](auto... a) { return DAXI_AddWeighted_16u_C1R(a..., &kWeights); }); }},
    {"weighted sum, 32f", kImageBytes<float>,
     [] { return ownOfTwo<float, float>([](auto... a) { return DAXI_AddWeighted_32f_C1R(a..., &kWeights); }); }},
    {"min(image, image), 8u", kImageBytes<uint8_t>,
     [] { return ownOfTwo<uint8_t, uint8_t>([](auto... a) { return DAXI_Min_8u_C1R(a...); }); }},
    {"min(image, image), 32f", kImageBytes<float>,
     [] { return ownOfTwo<float, float>([](auto... a) { return DAXI_Min_32f_C1R(a...); }); }},
    {"max(image, constant), 16u", kImageBytes<uint16_t>,
     [] { return ownOfOne<uint16_t, uint16_t>([](auto... a) { return DAXI_MaxC_16u_C1R(a..., 100); }); }},
    {"square root, 32f", kImageBytes<float>,
     [] { return ownOfOne<float, float>([](auto... a) { return DAXI_Sqrt_32f_C1R(a...); }); }},
    {"square root, 8u", kImageBytes<uint8_t>,
     [] { return ownOfOne<uint8_t, uint8_t>([](auto... a) { return DAXI_Sqrt_8u_C1R(a...); }); }},
    {"exponential, 32f", kImageBytes<float>,
     [] { return ownOfOne<float, float>([](auto... a) { return DAXI_Exp_32f_C1R(a...); }); }},
    {"logarithm, 32f", kImageBytes<float>,
     [] { return ownOfOne<float, float>([](auto... a) { return DAXI_Ln_32f_C1R(a...); }); }},
    {"sum, 8u32f", kImageBytes<float>,
     [] { return ownOfOne<uint8_t, float>([](auto... a) { return DAXI_Accumulate_8u32f_C1IR(a...); }); }},
    {"running average, 16u32f", kImageBytes<float>,
     [] {
       return ownOfOne<uint16_t, float>([](auto... a) { return DAXI_AccumulateWeighted_16u32f_C1IR(a..., 0.1f); });
     }},
};

}  // namespace
