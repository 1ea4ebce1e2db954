// Calipers and what they have found, drawn over the image.
#pragma once

#include "draw/annotated_picture.h"
#include "model/calipers.h"

namespace dax::tool {

// Outlines with an arrow in the search direction, edges as lines across, of pairs the best with its width.
void drawCalipers(AnnotatedPicture& picture, const std::vector<Caliper>& calipers, bool alongHeight);

}  // namespace dax::tool
