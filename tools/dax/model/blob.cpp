#include "model/blob.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dax::tool {
namespace {

std::string joinedBy(char separator, std::string_view name) {
  std::string words(name);
  std::replace(words.begin(), words.end(), '_', separator);
  return words;
}

}  // namespace

std::string Feature::title() const {
  return joinedBy(' ', name);
}

std::string Feature::option() const {
  return joinedBy('-', name);
}

float valueOf(const Feature& feature, const Blob& blob, const std::optional<double>& mmPerPixel) {
  const float value = feature.value(blob);
  if (!mmPerPixel || feature.dimension == 0) return value;
  return static_cast<float>(value * std::pow(*mmPerPixel, feature.dimension));
}

float degrees(float radians) {
  return static_cast<float>(radians * 180.0 / std::numbers::pi);
}

}  // namespace dax::tool
