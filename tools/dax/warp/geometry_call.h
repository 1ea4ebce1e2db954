// Calls of the library's geometric functions on samples of any type.
#pragma once

#include <string>

#include "base/library_call.h"
#include "dax/types.h"
#include "warp/warp_step.h"

namespace dax::tool {

template <class Pixel, class Cfg>
using GeometryFunction = DaxStatus (*)(const Pixel* src, int32_t srcStep, DaxiSize srcSize, Pixel* dst, int32_t dstStep,
                                       DaxiSize dstSize, DaxiRect dstRect, const Cfg* cfg);

// For each type of samples the function of one channel and that of three.
template <class Cfg>
struct GeometryCall {
  GeometryFunction<uint8_t, Cfg> on8[2];
  GeometryFunction<uint16_t, Cfg> on16[2];
  GeometryFunction<float, Cfg> on32[2];
};

template <class Pixel, class Call>
void callOnPixelsOf(const Samples& from, Samples& to, const std::string& step, const Call& call) {
  check(call(reinterpret_cast<const Pixel*>(from.bytes.data()), from.record.width * from.record.channels, sizeOf(from),
             reinterpret_cast<Pixel*>(to.bytes.data()), to.record.width * to.record.channels, sizeOf(to)),
        step.c_str());
}

// An image of this size.
template <class Cfg>
Samples sampled(const GeometryCall<Cfg>& call, const std::string& step, const Samples& from, DaxiSize size,
                const Cfg& cfg) {
  requireSampled(from, step);
  if (cfg.interpolation == DAXI_INTERPOLATION_AREA)
    refuseSamples(step, "does not take --interpolation area, --resize does");
  Samples to = makeResult(from, size, step);
  const size_t i = from.record.channels == 3;
  const auto with = [&](const auto& function) {
    return [&](auto* src, int32_t srcStep, DaxiSize srcSize, auto* dst, int32_t dstStep, DaxiSize dstSize) {
      return function(src, srcStep, srcSize, dst, dstStep, dstSize, {0, 0, dstSize.width, dstSize.height}, &cfg);
    };
  };
  if (from.record.type == DAXI_SAMPLE_8U) callOnPixelsOf<uint8_t>(from, to, step, with(call.on8[i]));
  if (from.record.type == DAXI_SAMPLE_16U) callOnPixelsOf<uint16_t>(from, to, step, with(call.on16[i]));
  if (from.record.type == DAXI_SAMPLE_32F) callOnPixelsOf<float>(from, to, step, with(call.on32[i]));
  keepRange(to, step);
  return to;
}

}  // namespace dax::tool
