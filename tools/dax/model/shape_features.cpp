#include "model/shape_features.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "base/library_call.h"

namespace dax::tool {
namespace {

constexpr double kUnbounded = std::numeric_limits<double>::infinity();
constexpr double kMaxGrey = 65535;

constexpr std::array kShapeFeatures = {
    ShapeFeature{{"euler_number", false, 0, 0, [](const Blob& b) { return static_cast<float>(b.shape.eulerNumber); }},
                 -kUnbounded,
                 1,
                 "1 - holes"},
    ShapeFeature{{"holes", true, 0, 0, [](const Blob& b) { return static_cast<float>(b.shape.holes); }},
                 0,
                 kUnbounded,
                 "regions of the background that the blob encloses"},
    ShapeFeature{{"convexity", true, 3, 0, [](const Blob& b) { return b.shape.convexity; }},
                 0,
                 1,
                 "area / area of the convex hull, 0..1"},
    ShapeFeature{{"max_feret", true, 1, 1, [](const Blob& b) { return b.shape.maxFeret; }},
                 0,
                 kUnbounded,
                 "greatest distance of two pixels, pixels"},
    ShapeFeature{{"min_feret", true, 1, 1, [](const Blob& b) { return b.shape.minFeret; }},
                 0,
                 kUnbounded,
                 "least distance of parallel lines around the blob, pixels"},
    ShapeFeature{{"feret_angle", false, 1, 0, [](const Blob& b) { return degrees(b.shape.feretAngle); }},
                 -90,
                 90,
                 "direction of --max-feret, degrees from x towards y, -90..90"},
    ShapeFeature{{"equivalent_diameter", false, 1, 1, [](const Blob& b) { return b.shape.equivalentDiameter; }},
                 0,
                 kUnbounded,
                 "of the circle of the same area, pixels"},
    ShapeFeature{{"eccentricity", true, 3, 0, [](const Blob& b) { return b.shape.eccentricity; }},
                 0,
                 1,
                 "of the ellipse of the same moments, 0 circle, 1 line"},
    ShapeFeature{{"mean_gray", true, 1, 0, [](const Blob& b) { return b.grey.mean; }},
                 0,
                 kMaxGrey,
                 "mean grey value, in the picture's own depth"},
    ShapeFeature{{"min_gray", false, 0, 0, [](const Blob& b) { return static_cast<float>(b.grey.min); }},
                 0,
                 kMaxGrey,
                 "darkest grey value"},
    ShapeFeature{{"max_gray", false, 0, 0, [](const Blob& b) { return static_cast<float>(b.grey.max); }},
                 0,
                 kMaxGrey,
                 "brightest grey value"},
};

// The library takes grey images of 8 bits only.
GreyValues greyUnder(const Grey16Image& values, const DaxiDomainList& domains, const DaxiDomain& domain) {
  uint64_t sum = 0, count = 0;
  uint16_t min = std::numeric_limits<uint16_t>::max(), max = 0;
  for (const DomainRun* run = &domain.head;; run = &domains.runs[run->next]) {
    const uint16_t* row = values.row(run->row);
    for (int x = run->start; x <= run->end; ++x) {
      sum += row[x];
      min = std::min(min, row[x]);
      max = std::max(max, row[x]);
    }
    count += run->end - run->start + 1;
    if (run->next == DAXI_RUN_END) break;
  }
  return {static_cast<float>(static_cast<double>(sum) / static_cast<double>(count)), min, max};
}

}  // namespace

std::span<const ShapeFeature> shapeFeatures() {
  return kShapeFeatures;
}

const ShapeFeature* findShapeFeature(std::string_view option) {
  const auto* found = std::find_if(kShapeFeatures.begin(), kShapeFeatures.end(),
                                   [&](const ShapeFeature& each) { return each.feature.option() == option; });
  return found == kShapeFeatures.end() ? nullptr : found;
}

bool isPossible(const ShapeFeature& feature, const OpenRange& range) {
  return range.min.value_or(feature.min) >= feature.min && range.max.value_or(feature.max) <= feature.max &&
         range.min.value_or(feature.min) <= range.max.value_or(feature.max);
}

void measureShapes(const Picture& picture, const DaxiDomainList& domains, int connectivity, std::span<Blob> blobs) {
  if (blobs.empty()) return;
  const GreyImage& image = picture.grey;
  uint64_t bytes;
  check(DAXI_BlobShapeBufferSize_8u(image.size, &bytes), "shape");
  const Memory buffer(bytes);
  std::vector<uint32_t> labels;
  for (const Blob& blob : blobs) labels.push_back(blob.label);
  std::vector<DaxiBlobShape> shapes(blobs.size());
  check(DAXI_BlobShape_8u_C1R(image.pixels.data(), image.step(), image.size, &domains, connectivity, labels.data(),
                              static_cast<int32_t>(labels.size()), shapes.data(), buffer.get()),
        "shape");
  for (size_t i = 0; i < blobs.size(); ++i) {
    const DaxiBlobShape& shape = blobs[i].shape = shapes[i];
    blobs[i].grey = picture.hasValues() ? greyUnder(picture.values, domains, domains.domains[blobs[i].label])
                                        : GreyValues{shape.meanGray, shape.minGray, shape.maxGray};
  }
}

}  // namespace dax::tool
