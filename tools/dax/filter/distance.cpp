#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "daxi/blob_find.h"
#include "daxi/distance_transform.h"
#include "daxi/reconstruct.h"
#include "daxi/watershed.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

constexpr const char* kDistanceStep = "distances";
constexpr const char* kSplitStep = "splitting";
constexpr int32_t kSplitNeighbours = 8;
using FloatImage = PixelImage<float>;
using LabelImage = PixelImage<int32_t>;

FloatImage distances(const GreyImage& mask) {
  uint64_t bytes;
  check(DAXI_DistanceTransformBufferSize_8u32f(mask.size, DAXI_DISTANCE_L2, &bytes), kDistanceStep);
  const Memory buffer(bytes);
  auto result = makeImage<float>(mask.size);
  check(DAXI_DistanceTransform_8u32f_C1R(mask.pixels.data(), mask.step(), result.pixels.data(), result.step(),
                                         mask.size, DAXI_DISTANCE_L2, buffer.get()),
        kDistanceStep);
  return result;
}

GreyImage distancePicture(const GreyImage& mask) {
  const FloatImage exact = distances(mask);
  GreyImage result = makeGreyImage(mask.size);
  std::transform(exact.pixels.begin(), exact.pixels.end(), result.pixels.begin(),
                 [](float d) { return static_cast<uint8_t>(std::min(std::nearbyint(d), 255.0F)); });
  return result;
}

// --- Parts of objects that touch ---

// Peaks that rise by more than `height` above the pass to a higher one.
GreyImage peaksOf(const FloatImage& image, float height) {
  uint64_t bytes;
  check(DAXI_HMaximaBufferSize_32f(image.size, kSplitNeighbours, &bytes), kSplitStep);
  const Memory buffer(bytes);
  auto lowered = makeImage<float>(image.size);
  check(DAXI_HMaxima_32f_C1R(image.pixels.data(), image.step(), lowered.pixels.data(), lowered.step(), image.size,
                             height, kSplitNeighbours, buffer.get()),
        kSplitStep);
  check(DAXI_RegionalMaximaBufferSize_32f(image.size, kSplitNeighbours, &bytes), kSplitStep);
  const Memory again(bytes);
  GreyImage peaks = makeGreyImage(image.size);
  check(DAXI_RegionalMaxima_32f_C1R(lowered.pixels.data(), lowered.step(), peaks.pixels.data(), peaks.step(),
                                    image.size, kSplitNeighbours, again.get()),
        kSplitStep);
  return peaks;
}

// 1, 2, ... in the domains of `peaks`, 0 elsewhere in the mask, -1 outside it.
LabelImage markersOf(const GreyImage& mask, const GreyImage& peaks) {
  uint64_t modelBytes, bytes;
  check(DAXI_BlobFindModelSize_8u(mask.size, kSplitNeighbours, &modelBytes), kSplitStep);
  check(DAXI_BlobFindBufferSize_8u(mask.size, kSplitNeighbours, &bytes), kSplitStep);
  const Memory model(modelBytes), buffer(bytes);
  const DaxiDomainList* domains;
  check(DAXI_BlobFind_8u_C1R(peaks.pixels.data(), peaks.step(), peaks.size, kSplitNeighbours, model.get(), &domains,
                             buffer.get()),
        kSplitStep);
  auto markers = makeImage<int32_t>(mask.size);
  for (uint32_t i = 0; i < domains->runCount; ++i) {
    const DomainRun& run = domains->runs[i];
    std::fill(markers.row(run.row) + run.start, markers.row(run.row) + run.end + 1,
              static_cast<int32_t>(run.label) + 1);
  }
  std::transform(mask.pixels.begin(), mask.pixels.end(), markers.pixels.begin(), markers.pixels.begin(),
                 [](uint8_t set, int32_t marker) { return set ? marker : -1; });
  return markers;
}

// Clears pixels with a later neighbour of another label.
void cutBetween(const LabelImage& labels, GreyImage& mask) {
  const auto [width, height] = mask.size;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const int32_t own = labels.row(y)[x];
      const auto differs = [&labels, own, w = width, h = height](int32_t u, int32_t v) {
        return u >= 0 && u < w && v < h && labels.row(v)[u] > 0 && labels.row(v)[u] != own;
      };
      if (own <= 0) continue;
      if (differs(x + 1, y) || differs(x - 1, y + 1) || differs(x, y + 1) || differs(x + 1, y + 1)) mask.row(y)[x] = 0;
    }
  }
}

ImageFilter parseSplit(std::string_view text) {
  const auto height = parseNumber(text);
  if (!height || !(*height >= 0 && *height <= 32768)) return {};
  return {[height = static_cast<float>(*height)](const GreyImage& mask) {
    GreyImage result = makeGreyImage(mask.size);
    std::transform(mask.pixels.begin(), mask.pixels.end(), result.pixels.begin(),
                   [](uint8_t set) { return static_cast<uint8_t>(set ? 255 : 0); });
    const bool hasGround = std::find(mask.pixels.begin(), mask.pixels.end(), 0) != mask.pixels.end();
    if (!hasGround) return result;
    FloatImage depth = distances(mask);
    LabelImage labels = markersOf(mask, peaksOf(depth, height));
    for (float& d : depth.pixels) d = -d;
    uint64_t bytes;
    check(DAXI_WatershedBufferSize_32f32s(mask.size, kSplitNeighbours, &bytes), kSplitStep);
    const Memory buffer(bytes);
    check(DAXI_Watershed_32f32s_C1R(depth.pixels.data(), depth.step(), labels.pixels.data(), labels.step(), mask.size,
                                    kSplitNeighbours, buffer.get()),
          kSplitStep);
    cutBetween(labels, result);
    return result;
  }};
}

const FilterRegistration distance({"--distance", nullptr, nullptr,
                                   "of set pixels to the nearest clear one, in whole pixels; 255 is\n255 and more",
                                   kMeasures, [](std::string_view) { return ImageFilter{distancePicture}; }});
const FilterRegistration split({"--split", "H", "H of 0..32768",
                                "objects that touch are cut where they are H pixels less deep\n"
                                "than on both sides: watershed of the distance",
                                kMasks, parseSplit});

}  // namespace
}  // namespace dax::tool
