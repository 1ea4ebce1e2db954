// Calls of the library's functions on samples of any type.
#pragma once

#include <string>
#include <type_traits>

#include "base/library_call.h"
#include "convert/convert_step.h"
#include "daxi/min_max.h"

namespace dax::tool {

// One function of the library for each type of samples; null where it has none.
template <class... Arguments>
struct SampleCall {
  DaxStatus (*on8)(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, Arguments...);
  DaxStatus (*on16)(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size, Arguments...);
  DaxStatus (*on32)(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size, Arguments...);
};

inline int32_t rowOf(const Samples& samples) {
  return samples.record.width * samples.record.channels;
}

template <class Pixel, class... Arguments>
void callTyped(DaxStatus (*function)(const Pixel*, int32_t, Pixel*, int32_t, DaxiSize, Arguments...),
               const std::string& step, const Samples& from, Samples& to, DaxiSize size, Arguments... arguments) {
  if (!function) refuseSamples(step, "does not take " + typeName(from) + ": --read-as 16 makes others of them");
  check(function(reinterpret_cast<const Pixel*>(from.bytes.data()), rowOf(from),
                 reinterpret_cast<Pixel*>(to.bytes.data()), rowOf(to), size, arguments...),
        step.c_str());
}

// `channels`: of the result. `width`: of the image that the function sees.
template <class... Arguments>
Samples callSized(const SampleCall<Arguments...>& call, const std::string& step, const Samples& from, int32_t channels,
                  int32_t width, Arguments... arguments) {
  Samples to = makeSamples(from.record, from.record.type, channels);
  const DaxiSize size = {width, from.record.height};
  if (from.record.type == DAXI_SAMPLE_8U) callTyped(call.on8, step, from, to, size, arguments...);
  if (from.record.type == DAXI_SAMPLE_32F) callTyped(call.on32, step, from, to, size, arguments...);
  if (from.record.type == DAXI_SAMPLE_16U) {
    callTyped(call.on16, step, from, to, size, arguments...);
    // Of 9 to 15 bits the library does not know the largest value.
    to.record.maxValue = from.record.maxValue;
    check(
        DAXI_MinC_16u_C1IR(to.words(), rowOf(to), {rowOf(to), size.height}, static_cast<uint16_t>(to.record.maxValue)),
        step.c_str());
  }
  return to;
}

// A function of pixels, from `from.record.channels` channels to `channels`.
template <class... Arguments>
Samples callOnPixels(const SampleCall<Arguments...>& call, const std::string& step, const Samples& from,
                     int32_t channels, std::type_identity_t<Arguments>... arguments) {
  return callSized(call, step, from, channels, from.record.width, arguments...);
}

// A function of one channel that treats all channels alike, and after which they are no longer those of a colour space.
template <class... Arguments>
Samples callOnSamples(const SampleCall<Arguments...>& call, const std::string& step, const Samples& from,
                      std::type_identity_t<Arguments>... arguments) {
  return callSized(call, step, from, from.record.channels, rowOf(from), arguments...);
}

}  // namespace dax::tool
