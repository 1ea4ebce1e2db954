#include "model/blob_features.h"

#include <array>
#include <numbers>

namespace dax::tool {
namespace {

constexpr Feature kClass{"class", "class", 0, [](const BlobInfo& b) { return static_cast<float>(b.cls); }};
constexpr Feature kOutside{"outside_pixels", "outside", 0,
                           [](const BlobInfo& b) { return static_cast<float>(b.borderPixels); }};
constexpr std::array kFeatures = {
    Feature{"x", "x", 1, [](const BlobInfo& b) { return b.centroidX; }},
    Feature{"y", "y", 1, [](const BlobInfo& b) { return b.centroidY; }},
    Feature{"area", "area", 0, [](const BlobInfo& b) { return b.area; }},
    Feature{"perimeter", "perimeter", 1, [](const BlobInfo& b) { return b.perimeter; }},
    Feature{"box_x", "", 1, [](const BlobInfo& b) { return b.boxX; }},
    Feature{"box_y", "", 1, [](const BlobInfo& b) { return b.boxY; }},
    Feature{"box_width", "length", 1, [](const BlobInfo& b) { return b.boxWidth; }},
    Feature{"box_height", "width", 1, [](const BlobInfo& b) { return b.boxHeight; }},
    Feature{"box_angle", "angle", 1, [](const BlobInfo& b) { return degrees(b.boxAngle); }},
    Feature{"principal_angle", "", 1, [](const BlobInfo& b) { return degrees(b.principalAngle); }},
    Feature{"axis_ratio", "ratio", 3, [](const BlobInfo& b) { return b.axisRatio; }},
    Feature{"circularity", "circularity", 3, [](const BlobInfo& b) { return b.circularity; }},
    Feature{"rectangularity", "rectangularity", 3, [](const BlobInfo& b) { return b.rectangularity; }},
    Feature{"central_bias", "bias", 2, [](const BlobInfo& b) { return b.centralBias; }},
    Feature{"rect_x", "", 0, [](const BlobInfo& b) { return static_cast<float>(b.rectX); }},
    Feature{"rect_y", "", 0, [](const BlobInfo& b) { return static_cast<float>(b.rectY); }},
    Feature{"rect_width", "", 0, [](const BlobInfo& b) { return static_cast<float>(b.rectWidth); }},
    Feature{"rect_height", "", 0, [](const BlobInfo& b) { return static_cast<float>(b.rectHeight); }},
};

}  // namespace

std::vector<Feature> features(const InspectionSettings& settings) {
  std::vector<Feature> result;
  if (settings.byClass) result.push_back(kClass);
  result.insert(result.end(), kFeatures.begin(), kFeatures.end());
  if (settings.select.common.flags & DAXI_BLOB_BY_OUTSIDE_PIXELS) result.push_back(kOutside);
  return result;
}

float degrees(float radians) {
  return static_cast<float>(radians * 180.0 / std::numbers::pi);
}

}  // namespace dax::tool
