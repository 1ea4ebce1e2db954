// Pictures side by side, each with a title.
#pragma once

#include <string>
#include <vector>

#include "io/grey_image.h"

namespace dax::tool {

struct TitledImage {
  std::string title;
  GreyImage image;
};

// A PNG. The pictures have one size; large ones are drawn smaller.
std::string drawSheet(const std::vector<TitledImage>& images);

}  // namespace dax::tool
