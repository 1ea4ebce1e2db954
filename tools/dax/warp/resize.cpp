// Images of another size.
#include "daxi/resize.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/text.h"
#include "warp/geometry_call.h"

namespace dax::tool {
namespace {

constexpr const char* kResize = "--resize";

// What the size of the result is told by: sides of which one may be 0, or else a factor.
struct NewSize {
  int32_t width = 0, height = 0;
  double factor = 0;
};

int32_t roundedSide(double side) {
  return static_cast<int32_t>(std::clamp(std::nearbyint(side), 1.0, 2.0 * kMaxWarpedSide));
}

DaxiSize sizeOfResult(const NewSize& wanted, DaxiSize size) {
  const double width = size.width, height = size.height;
  if (wanted.factor > 0) return {roundedSide(width * wanted.factor), roundedSide(height * wanted.factor)};
  if (wanted.width == 0) return {roundedSide(width * wanted.height / height), wanted.height};
  if (wanted.height == 0) return {wanted.width, roundedSide(height * wanted.width / width)};
  return {wanted.width, wanted.height};
}

void requireFactor(DaxiSize from, DaxiSize to) {
  const auto fits = [](int64_t a, int64_t b) { return a <= 256 * b && b <= 256 * a; };
  if (fits(from.width, to.width) && fits(from.height, to.height)) return;
  refuseSamples(kResize, "takes factors of 1/256 to 256 a side: what is further apart takes two of it");
}

template <class Pixel, auto query1, auto resize1, auto query3, auto resize3>
void resizeTyped(const Samples& from, Samples& to, const DaxiResizeCfg& cfg) {
  const bool isColour = from.record.channels == 3;
  const DaxiRect all = {0, 0, to.record.width, to.record.height};
  uint64_t bytes = 0;
  check((isColour ? query3 : query1)(sizeOf(from), sizeOf(to), all, &cfg, &bytes), kResize);
  const Memory buffer(bytes);
  callOnPixelsOf<Pixel>(
      from, to, kResize,
      [&](const Pixel* src, int32_t srcStep, DaxiSize srcSize, Pixel* dst, int32_t dstStep, DaxiSize dstSize) {
        return (isColour ? resize3 : resize1)(src, srcStep, srcSize, dst, dstStep, dstSize, all, &cfg, buffer.get());
      });
}

Samples resized(const Samples& from, const NewSize& wanted, const DaxiResizeCfg& cfg) {
  requireSampled(from, kResize);
  const DaxiSize size = sizeOfResult(wanted, sizeOf(from));
  requireFactor(sizeOf(from), size);
  Samples to = makeResult(from, size, kResize);
  if (from.record.type == DAXI_SAMPLE_8U) {
    resizeTyped<uint8_t, DAXI_ResizeBufferSize_8u_C1R, DAXI_Resize_8u_C1R, DAXI_ResizeBufferSize_8u_C3R,
                DAXI_Resize_8u_C3R>(from, to, cfg);
  } else if (from.record.type == DAXI_SAMPLE_16U) {
    resizeTyped<uint16_t, DAXI_ResizeBufferSize_16u_C1R, DAXI_Resize_16u_C1R, DAXI_ResizeBufferSize_16u_C3R,
                DAXI_Resize_16u_C3R>(from, to, cfg);
  } else {
    resizeTyped<float, DAXI_ResizeBufferSize_32f_C1R, DAXI_Resize_32f_C1R, DAXI_ResizeBufferSize_32f_C3R,
                DAXI_Resize_32f_C3R>(from, to, cfg);
  }
  keepRange(to, kResize);
  return to;
}

// "640x480", "640x", "x480" or a factor.
std::optional<NewSize> parseNewSize(std::string_view text) {
  NewSize size;
  const auto sides = splitPair(text, 'x');
  if (!sides) {
    const auto factor = parseNumber(text);
    if (!factor || !(*factor >= 1.0 / 256 && *factor <= 256)) return std::nullopt;
    size.factor = *factor;
    return size;
  }
  const auto& [width, height] = *sides;
  const auto side = [](std::string_view digits) {
    return digits.empty() ? 0 : parseInteger(digits, 1, kMaxWarpedSide);
  };
  const auto w = side(width), h = side(height);
  if (!w || !h || *w + *h == 0) return std::nullopt;
  size.width = *w, size.height = *h;
  return size;
}

ConvertStep parseResize(std::string_view text, const Sampling& sampling) {
  const auto size = parseNewSize(text);
  if (!size || sampling.border == DAXI_BORDER_LEAVE) return {};
  DaxiResizeCfg cfg;
  check(DAXI_ResizeDefaultCfg(&cfg), kResize);
  sampling.setIn(cfg, DAXI_BORDER_REPLICATE);
  cfg.antialias = sampling.antialias;
  cfg.factorX = cfg.factorY = size->factor;
  return [size = *size, cfg](const Samples& samples) { return resized(samples, size, cfg); };
}

const WarpRegistration resizeRegistration({10, kResize, "SIZE", "WxH, Wx, xH, or a factor of 1/256..256",
                                           "to WIDTHxHEIGHT; Wx or xH: to one side, and the other one keeps\n"
                                           "the shape; or by a factor: 0.5",
                                           parseResize});

}  // namespace
}  // namespace dax::tool
