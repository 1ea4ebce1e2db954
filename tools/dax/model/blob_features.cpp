#include "model/blob_features.h"

#include <array>

namespace dax::tool {
namespace {

constexpr Feature kClass{"class", true, 0, 0, [](const Blob& b) { return static_cast<float>(b.cls); }};
constexpr Feature kOutside{"outside_pixels", true, 0, 0,
                           [](const Blob& b) { return static_cast<float>(b.borderPixels); }};
constexpr std::array kFeatures = {
    Feature{"x", true, 1, 1, [](const Blob& b) { return b.centroidX; }},
    Feature{"y", true, 1, 1, [](const Blob& b) { return b.centroidY; }},
    Feature{"area", true, 0, 2, [](const Blob& b) { return b.area; }},
    Feature{"perimeter", true, 1, 1, [](const Blob& b) { return b.perimeter; }},
    Feature{"box_x", false, 1, 1, [](const Blob& b) { return b.boxX; }},
    Feature{"box_y", false, 1, 1, [](const Blob& b) { return b.boxY; }},
    Feature{"long_axis", true, 1, 1, [](const Blob& b) { return b.boxWidth; }},
    Feature{"short_axis", true, 1, 1, [](const Blob& b) { return b.boxHeight; }},
    Feature{"box_angle", true, 1, 0, [](const Blob& b) { return degrees(b.boxAngle); }},
    Feature{"principal_angle", false, 1, 0, [](const Blob& b) { return degrees(b.principalAngle); }},
    Feature{"axis_ratio", true, 3, 0, [](const Blob& b) { return b.axisRatio; }},
    Feature{"circularity", true, 3, 0, [](const Blob& b) { return b.circularity; }},
    Feature{"rectangularity", true, 3, 0, [](const Blob& b) { return b.rectangularity; }},
    Feature{"central_bias", true, 2, 1, [](const Blob& b) { return b.centralBias; }},
    Feature{"rect_x", false, 0, 1, [](const Blob& b) { return static_cast<float>(b.rectX); }},
    Feature{"rect_y", false, 0, 1, [](const Blob& b) { return static_cast<float>(b.rectY); }},
    Feature{"rect_width", false, 0, 1, [](const Blob& b) { return static_cast<float>(b.rectWidth); }},
    Feature{"rect_height", false, 0, 1, [](const Blob& b) { return static_cast<float>(b.rectHeight); }},
};

}  // namespace

std::vector<Feature> features(const InspectionSettings& settings) {
  std::vector<Feature> result;
  if (settings.byClass) result.push_back(kClass);
  result.insert(result.end(), kFeatures.begin(), kFeatures.end());
  if (settings.select.common.flags & DAXI_BLOB_BY_OUTSIDE_PIXELS) result.push_back(kOutside);
  if (settings.shape) {
    for (const ShapeFeature& each : shapeFeatures()) result.push_back(each.feature);
  }
  return result;
}

}  // namespace dax::tool
