// A summary of a range image.
#pragma once

#include <string>

#include "io/range_image.h"

namespace dax::tool {

std::string rangeInfoText(const RangeImage& image);
std::string rangeInfoJson(const std::string& file, const RangeImage& image);

}  // namespace dax::tool
