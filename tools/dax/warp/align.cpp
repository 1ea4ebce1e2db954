// Images laid upon another one, by phase correlation.
#include <algorithm>
#include <memory>
#include <numbers>
#include <optional>

#include "base/text.h"
#include "daxi/phase_shift.h"
#include "warp/geometry_call.h"
#include "warp/matrix.h"

namespace dax::tool {
namespace {

// Grey values with the weights of ITU-R BT.601; without the opacity.
std::vector<float> greysOf(const Samples& samples) {
  const auto channels = static_cast<size_t>(samples.record.channels);
  std::vector<float> greys(static_cast<size_t>(samples.record.width) * static_cast<size_t>(samples.record.height));
  for (size_t i = 0; i < greys.size(); ++i) {
    const auto value = [&](size_t channel) { return samples.value(channels * i + channel); };
    greys[i] = static_cast<float>(channels < 3 ? value(0) : 0.299 * value(0) + 0.587 * value(1) + 0.114 * value(2));
  }
  return greys;
}

void requireAligned(const Samples& samples, const Samples& reference, const std::string& step) {
  const DaxiSize size = sizeOf(samples), other = sizeOf(reference);
  if (size.width != other.width || size.height != other.height) {
    refuseSamples(step, "takes images of one size, not of " + std::to_string(size.width) + " x " +
                            std::to_string(size.height) + " and " + std::to_string(other.width) + " x " +
                            std::to_string(other.height) + ": --resize before it");
  }
  if (size.width < 16 || size.height < 16 || size.width > 8192 || size.height > 8192) {
    refuseSamples(step, "takes sides of 16 to 8192 pixels: --resize before it");
  }
}

template <class Found, class Query, class Find>
Found compared(const Samples& reference, const Samples& samples, const std::string& step, Query query, Find find) {
  requireSampled(samples, step);
  requireAligned(samples, reference, step);
  const std::vector<float> a = greysOf(reference), b = greysOf(samples);
  const DaxiSize size = sizeOf(samples);
  uint64_t bytes = 0;
  check(query(size, &bytes), step.c_str());
  const Memory buffer(bytes);
  Found found;
  const DaxStatus status = find(a.data(), size.width, b.data(), size.width, size, &found, buffer.get());
  if (status == DAX_STS_DEGENERATE) refuseSamples(step, "finds nothing: the images are flat, or show too little alike");
  check(status, step.c_str());
  return found;
}

// How far the image was from where it is now.
template <class Found>
std::string aboutMatch(const Found& found) {
  std::string text = fixed(found.dx, 3) + ", " + fixed(found.dy, 3) + " pixels (peak " + fixed(found.peak, 2) +
                     ", the next " + fixed(found.second, 2) + ")";
  if (!(found.peak > 1.5 * found.second)) text += "; no clear match";
  return text;
}

Samples aligned(const Samples& samples, const std::string& step, DaxiWarpCfg cfg, const double (&fromReference)[9],
                const std::string& note) {
  std::copy_n(fromReference, 9, cfg.m);
  cfg.inverse = 1;
  Samples result = warpedAffine(samples, step, sizeOf(samples), cfg);
  result.note = note;
  return result;
}

Samples alignedByShift(const Samples& samples, const Samples& reference, const DaxiWarpCfg& cfg) {
  const auto found =
      compared<DaxiPhaseShift>(reference, samples, "--align", DAXI_PhaseShiftBufferSize, DAXI_PhaseShift_32f_C1R);
  const double m[9] = {1, 0, found.dx, 0, 1, found.dy, 0, 0, 1};
  return aligned(samples, "--align", cfg, m, "aligned, was off by " + aboutMatch(found));
}

Samples alignedByMotion(const Samples& samples, const Samples& reference, const DaxiWarpCfg& cfg) {
  const auto found = compared<DaxiPhaseMotion>(reference, samples, "--align-turned", DAXI_PhaseRotationScaleBufferSize,
                                               DAXI_PhaseRotationScale_32f_C1R);
  const std::string turned = "aligned, was turned by " + fixed(found.angle * 180 / std::numbers::pi, 2) +
                             " degrees, scaled by " + fixed(found.scale, 4) + ", off by ";
  return aligned(samples, "--align-turned", cfg, found.m, turned + aboutMatch(found));
}

using Align = Samples (*)(const Samples& samples, const Samples& reference, const DaxiWarpCfg& cfg);

// The other image is read when the first one is aligned, and then kept.
template <Align align>
ConvertStep parseAlign(std::string_view name, const Sampling& sampling) {
  const auto reference = std::make_shared<std::optional<Samples>>();
  return [reference, path = std::string(name), cfg = warpCfg(sampling)](const Samples& samples) {
    if (!*reference) *reference = readSamples(path, false);
    return align(samples, **reference, cfg);
  };
}

const WarpRegistration alignRegistration({70, "--align", "PICTURE", "the name of an image",
                                          "move the image until it lies upon this one, which shows about\n"
                                          "the same and has its size, by phase correlation: to 1/50 pixel\n"
                                          "and less; how far it was off is told",
                                          parseAlign<alignedByShift>});
const WarpRegistration turnedRegistration({75, "--align-turned", "PICTURE", "the name of an image",
                                           "the same for images that are also turned, by any angle, and\n"
                                           "scaled, by 1/2 to 2",
                                           parseAlign<alignedByMotion>});

}  // namespace
}  // namespace dax::tool
