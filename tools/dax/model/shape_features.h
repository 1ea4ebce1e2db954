// Shape and grey values of blobs: each is a column, a range that filters and a sort key by one name.
#pragma once

#include <span>
#include <string_view>

#include "base/text.h"
#include "io/picture.h"
#include "model/blob.h"

namespace dax::tool {

struct ShapeFeature {
  Feature feature;
  double min;  // that a value can have
  double max;
  const char* help;
};

std::span<const ShapeFeature> shapeFeatures();
// By the name of the option, "max-feret"; null: none.
const ShapeFeature* findShapeFeature(std::string_view option);

// Whether a range lies within the values that the feature can have.
bool isPossible(const ShapeFeature& feature, const OpenRange& range);

// Measures shape and grey values. The blobs are of one labelling of the picture.
void measureShapes(const Picture& picture, const DaxiDomainList& domains, int connectivity, std::span<Blob> blobs);

}  // namespace dax::tool
