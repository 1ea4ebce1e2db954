// Images turned and mirrored.
#include <array>
#include <cmath>
#include <numbers>
#include <type_traits>

#include "base/text.h"
#include "daxi/rotate.h"
#include "daxi/warp.h"
#include "warp/geometry_call.h"

namespace dax::tool {
namespace {

constexpr GeometryCall<DaxiRotateCfg> kRotate = {{DAXI_Rotate_8u_C1R, DAXI_Rotate_8u_C3R},
                                                 {DAXI_Rotate_16u_C1R, DAXI_Rotate_16u_C3R},
                                                 {DAXI_Rotate_32f_C1R, DAXI_Rotate_32f_C3R}};

template <class Pixel, class... Arguments>
using CopyFunction = DaxStatus (*)(const Pixel* src, int32_t srcStep, Pixel* dst, int32_t dstStep, DaxiSize size,
                                   Arguments...);

// Functions that copy pixels, of one channel and of three.
template <class... Arguments>
struct CopyCall {
  CopyFunction<uint8_t, Arguments...> on8[2];
  CopyFunction<uint16_t, Arguments...> on16[2];
  CopyFunction<float, Arguments...> on32[2];
};

template <class... Arguments>
Samples copied(const CopyCall<Arguments...>& call, const char* step, const Samples& from, DaxiSize size,
               std::type_identity_t<Arguments>... arguments) {
  requireSampled(from, step);
  Samples to = makeResult(from, size, step);
  const size_t i = from.record.channels == 3;
  const auto with = [&](const auto& function) {
    return [&](auto* src, int32_t srcStep, DaxiSize srcSize, auto* dst, int32_t dstStep, DaxiSize) {
      return function(src, srcStep, dst, dstStep, srcSize, arguments...);
    };
  };
  if (from.record.type == DAXI_SAMPLE_8U) callOnPixelsOf<uint8_t>(from, to, step, with(call.on8[i]));
  if (from.record.type == DAXI_SAMPLE_16U) callOnPixelsOf<uint16_t>(from, to, step, with(call.on16[i]));
  if (from.record.type == DAXI_SAMPLE_32F) callOnPixelsOf<float>(from, to, step, with(call.on32[i]));
  return to;
}

DaxiSize exchanged(DaxiSize size) {
  return {size.height, size.width};
}

Samples turnedByQuarters(const Samples& samples, int32_t quarters) {
  constexpr CopyCall<int32_t> kQuarters = {{DAXI_Rotate90_8u_C1R, DAXI_Rotate90_8u_C3R},
                                           {DAXI_Rotate90_16u_C1R, DAXI_Rotate90_16u_C3R},
                                           {DAXI_Rotate90_32f_C1R, DAXI_Rotate90_32f_C3R}};
  const DaxiSize size = sizeOf(samples);
  return copied(kQuarters, "--rotate", samples, quarters % 2 ? exchanged(size) : size, quarters);
}

Samples turnedBy(const Samples& samples, const DaxiRotateCfg& cfg, bool keeps) {
  DaxiSize size = sizeOf(samples);
  if (!keeps) check(DAXI_RotateSize(size, cfg.angle, &size), "--rotate");
  return sampled(kRotate, "--rotate", samples, size, cfg);
}

// DEGREES[:keep]
ConvertStep parseRotate(std::string_view text, const Sampling& sampling) {
  const auto pair = splitPair(text, ':');
  const auto degrees = parseNumber(pair ? pair->first : text);
  if (!degrees || std::fabs(*degrees) > 1e6 || (pair && pair->second != "keep")) return {};
  const double turns = std::remainder(*degrees, 360);
  if (std::fmod(turns, 90) == 0 && !pair) {
    const int32_t quarters = (static_cast<int32_t>(turns / 90) + 4) % 4;
    return [quarters](const Samples& samples) { return turnedByQuarters(samples, quarters); };
  }
  DaxiRotateCfg cfg;
  check(DAXI_RotateDefaultCfg(&cfg), "--rotate");
  sampling.setIn(cfg);
  cfg.angle = turns * std::numbers::pi / 180;
  return [cfg, keeps = pair.has_value()](const Samples& samples) { return turnedBy(samples, cfg, keeps); };
}

Samples mirroredAlong(const Samples& samples, int32_t axis) {
  constexpr CopyCall<int32_t> kMirror = {{DAXI_Mirror_8u_C1R, DAXI_Mirror_8u_C3R},
                                         {DAXI_Mirror_16u_C1R, DAXI_Mirror_16u_C3R},
                                         {DAXI_Mirror_32f_C1R, DAXI_Mirror_32f_C3R}};
  return copied(kMirror, "--mirror", samples, sizeOf(samples), axis);
}

Samples transposed(const Samples& samples) {
  constexpr CopyCall<> kTranspose = {{DAXI_Transpose_8u_C1R, DAXI_Transpose_8u_C3R},
                                     {DAXI_Transpose_16u_C1R, DAXI_Transpose_16u_C3R},
                                     {DAXI_Transpose_32f_C1R, DAXI_Transpose_32f_C3R}};
  return copied(kTranspose, "--mirror", samples, exchanged(sizeOf(samples)));
}

ConvertStep parseMirror(std::string_view text, const Sampling&) {
  constexpr std::array<std::string_view, 3> kAxes = {"columns", "rows", "both"};
  if (text == "diagonal") return transposed;
  for (size_t axis = 0; axis < kAxes.size(); ++axis) {
    if (text != kAxes[axis]) continue;
    return [axis](const Samples& samples) { return mirroredAlong(samples, static_cast<int32_t>(axis)); };
  }
  return {};
}

const WarpRegistration rotateRegistration({30, "--rotate", "DEGREES", "DEGREES or DEGREES:keep, at most 1e6 either way",
                                           "turn clockwise, about the centre; the result holds all of the\n"
                                           "image, or with :keep has its size. Quarter turns copy the pixels",
                                           parseRotate});
const WarpRegistration mirrorRegistration({35, "--mirror", "HOW", "columns, rows, both or diagonal",
                                           "columns: left becomes right; rows: top becomes bottom; both; or\n"
                                           "diagonal: rows become columns. Copies the pixels",
                                           parseMirror});

}  // namespace
}  // namespace dax::tool
