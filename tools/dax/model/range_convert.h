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

// A pixel of grey value g has the value g - bias. Valid is what the mask says, without one what is not black.
// Throws Failure(kRefused) for sizes that a range file cannot have or that differ, and for values beyond 16 bits.
RangeImage fromPicture(const Grey16Image& picture, const GreyImage* mask, int bias, const RangeHeader& header);

// The reverse; invalid pixels are black. Throws Failure(kRefused) where a valid value + bias is outside 0..65535.
Grey16Image toPicture(const RangeImage& image, int bias);

// 255 where pixels are valid.
GreyImage maskPicture(const RangeImage& image);

// Seen from above, along z: of points at one pixel the highest stays. Without a header the image covers the cloud, with
// about one point a pixel and heights over all of 16 bits. Throws Failure(kRefused) where no point falls into the image,
// or its size is more than a range file can have.
RangeImage fromCloud(const Cloud& cloud, const std::optional<RangeHeader>& header);

}  // namespace dax::tool
