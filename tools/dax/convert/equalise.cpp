// Equalised histograms, of the whole image or by tiles with limited contrast.
#include "base/text.h"
#include "convert/sample_call.h"
#include "daxi/clip_equalize.h"
#include "daxi/equalize_hist.h"

namespace dax::tool {
namespace {

constexpr const char* kStep = "--equalise";

DaxStatus equalise16(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  uint64_t bytes = 0;
  check(DAXI_EqualizeHistBufferSize_16u(&bytes), kStep);
  const Memory buffer(bytes);
  return DAXI_EqualizeHist_16u_C1R(src, srcStep, dst, dstStep, size, buffer.get());
}

template <class Pixel, auto query, auto equalize>
DaxStatus equaliseTiles(const Pixel* src, int32_t srcStep, Pixel* dst, int32_t dstStep, DaxiSize size,
                        const DaxiClipEqualizeCfg* cfg) {
  uint64_t bytes = 0;
  check(query(size, cfg, &bytes), kStep);
  const Memory buffer(bytes);
  return equalize(src, srcStep, dst, dstStep, size, cfg, buffer.get());
}

constexpr SampleCall<> kWhole = {DAXI_EqualizeHist_8u_C1R, equalise16, nullptr};
constexpr SampleCall<const DaxiClipEqualizeCfg*> kTiles = {
    equaliseTiles<uint8_t, DAXI_ClipEqualizeBufferSize_8u, DAXI_ClipEqualize_8u_C1R>,
    equaliseTiles<uint16_t, DAXI_ClipEqualizeBufferSize_16u, DAXI_ClipEqualize_16u_C1R>, nullptr};

void requireGrey(const Samples& samples) {
  requireChannels(samples, kStep, 1);
  requireWholeRange(samples, kStep);
}

Samples byTiles(const Samples& samples, const DaxiClipEqualizeCfg& cfg) {
  requireGrey(samples);
  if (cfg.tilesX > samples.record.width || cfg.tilesY > samples.record.height) {
    refuseSamples(kStep, "takes no more tiles than pixels a side");
  }
  return callOnSamples(kTiles, kStep, samples, &cfg);
}

// clahe[:TILESxTILES[:CLIP]]
ConvertStep parseTiles(const std::vector<std::string_view>& parts) {
  DaxiClipEqualizeCfg cfg;
  check(DAXI_ClipEqualizeDefaultCfg(&cfg), kStep);
  if (parts.size() > 1) {
    const auto tiles = parseIntegerPair(parts[1], 'x', 1, 64);
    if (!tiles) return {};
    cfg.tilesX = tiles->first, cfg.tilesY = tiles->second;
  }
  if (parts.size() > 2) {
    const auto clip = parseNumber(parts[2]);
    if (!clip || *clip < 1 || parts.size() > 3) return {};
    cfg.clip = *clip;
  }
  return [cfg](const Samples& samples) { return byTiles(samples, cfg); };
}

ConvertStep parseEqualise(std::string_view text) {
  const std::vector<std::string_view> parts = split(text, ':');
  if (parts.front() == "clahe") return parseTiles(parts);
  if (text != "global") return {};
  return [](const Samples& samples) {
    requireGrey(samples);
    return callOnSamples(kWhole, kStep, samples);
  };
}

const ConvertRegistration equaliseRegistration({410, kStep, "HOW",
                                                "global or clahe[:XxY[:CLIP]] with 1..64 tiles, a clip of at least 1",
                                                "all levels about equally frequent: global, or by tiles with\n"
                                                "limited contrast, clahe:8x8:2 (tiles, and the limit as a\n"
                                                "multiple of the mean; those are what clahe alone means)",
                                                parseEqualise});

}  // namespace
}  // namespace dax::tool
