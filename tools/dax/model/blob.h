// A blob with everything that is measured of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "daxi/blob_select.h"
#include "daxi/blob_shape.h"

namespace dax::tool {

// Grey values of the pixels of a blob, in the picture's own depth.
struct GreyValues {
  float mean = 0;
  int min = 0;
  int max = 0;
};

struct Blob : BlobInfo {
  explicit Blob(const BlobInfo& info) : BlobInfo(info) {}

  DaxiBlobShape shape{};  // measured on demand, as `grey`
  GreyValues grey;
};

struct Feature {
  std::string_view name;  // "long_axis" in JSON and CSV; the table says "long axis", options --long-axis
  bool isInTable;
  int decimals;   // in the table
  int dimension;  // 1: a length, 2: an area, 0: neither
  float (*value)(const Blob& blob);

  std::string title() const;   // "long axis"
  std::string option() const;  // "long-axis"
};

// The value in pixels or, with a scale, in millimetres.
float valueOf(const Feature& feature, const Blob& blob, const std::optional<double>& mmPerPixel);

// Degrees from the library's radians.
float degrees(float radians);

}  // namespace dax::tool
