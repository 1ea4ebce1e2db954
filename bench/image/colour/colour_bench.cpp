#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/colour_matrix.h"
#include "daxi/hsv.h"
#include "daxi/lab.h"
#include "daxi/ycbcr.h"

namespace {

using bench::Image;
using bench::kSize;

const int32_t kStep = 3 * kSize.width;

// call(source, step, destination, step, size)
template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>({kStep, kSize.height});
  const Image<T> to({kStep, kSize.height});
  return {[=] { bench::require(call(from.data(), kStep, to.data(), kStep, kSize)); }, nullptr};
}

constexpr size_t kBytes = 3 * bench::pixelCount(bench::kUsualSize);
constexpr double kSwap[12] = {0.25, 0.5, 0.25, 1, 0.5, 0.25, 0.25, 2, 0.25, 0.25, 0.5, 3};

const bench::Own operations[] = {
    {"RGB to YCbCr, 8u", kBytes,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_RGBToYCbCr_8u_C3R(a..., 0, 1); }); }},
    {"YCbCr to RGB, 8u", kBytes,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_YCbCrToRGB_8u_C3R(a..., 0, 1); }); }},
    {"RGB to HSV, 8u", kBytes,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_RGBToHSV_8u_C3R(a..., 0); }); }},
    {"HSV to RGB, 8u", kBytes,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_HSVToRGB_8u_C3R(a..., 0); }); }},
    {"RGB to HLS, 8u", kBytes,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_RGBToHLS_8u_C3R(a..., 0); }); }},
    {"RGB to Lab, 8u", kBytes, [] { return prepare<uint8_t>(DAXI_RGBToLab_8u_C3R); }},
    {"RGB to Lab, 32f", 4 * kBytes, [] { return prepare<float>(DAXI_RGBToLab_32f_C3R); }},
    {"Lab to RGB, 8u", kBytes, [] { return prepare<uint8_t>(DAXI_LabToRGB_8u_C3R); }},
    {"RGB to XYZ, 32f", 4 * kBytes, [] { return prepare<float>(DAXI_RGBToXYZ_32f_C3R); }},
    {"colour matrix, 8u", kBytes,
     [] { return prepare<uint8_t>([](auto... a) { return DAXI_ColourMatrix_8u_C3R(a..., kSwap); }); }},
};

}  // namespace
