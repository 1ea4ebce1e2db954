// Annotated pictures.
#pragma once

#include <string>

#include "io/grey_image.h"
#include "model/inspection.h"

namespace dax::tool {

// A PNG: the image with the contour, rotated box, number and score of each blob. `scale` 0 enlarges small images to a
// legible size. Throws Failure(kRefused) for pictures that cannot be drawn.
std::string drawOverlay(const GreyImage& image, const Inspection& inspection, double scale);

}  // namespace dax::tool
