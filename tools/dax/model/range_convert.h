// Range images to and from 16-bit pictures and point clouds.
#pragma once

#include <optional>

#include "cloud/cloud.h"
#include "io/grey_image.h"
#include "io/range_image.h"

namespace dax::tool {

struct RangeHeader {
  DAX3D_VECTOR_32F scale = {1, 1, 1};
  DAX3D_VECTOR_32F offset = {0, 0, 0};
};

// A pixel of grey value g has the value g - bias. The mask tells valid pixels; without one all are valid that are not
// black. Throws Failure(kRefused) for sizes that a range file cannot have or that differ, and for values beyond 16
// bits.
RangeImage fromPicture(const Grey16Image& picture, const GreyImage* mask, int bias, const RangeHeader& header);

// The reverse; invalid pixels are black. Throws Failure(kRefused) if a valid value + bias is outside 0..65535.
Grey16Image toPicture(const RangeImage& image, int bias);

// 255 where pixels are valid.
GreyImage maskPicture(const RangeImage& image);

// What a projection did to the points.
struct Projection {
  bool resampled = false;  // they lie on no lattice of columns, rows and values
  size_t hidden = 0;       // by higher points of the same pixel
  size_t outside = 0;
  double offsetLoss = 0;  // by rounding of the offset, in steps
};

// Projection along z: the highest point of each pixel is kept. Without a header the image takes the lattice of the
// points, where they have one, as those of a range image do; else it covers the cloud with about one point per pixel,
// and heights use the full 16 bits. Throws Failure(kRefused) if no point falls into the image or the image is too large
// for a range file.
RangeImage fromCloud(const Cloud& cloud, const std::optional<RangeHeader>& header, Projection& projection);

}  // namespace dax::tool
