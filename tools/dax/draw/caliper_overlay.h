// Calipers and their edges, drawn over the image.
#pragma once

#include "draw/annotated_picture.h"
#include "model/calipers.h"

namespace dax::tool {

// Outlines with an arrow in the search direction, edges as lines across, the best pair with its width.
void drawCalipers(AnnotatedPicture& picture, const std::vector<Caliper>& calipers, bool alongHeight);

}  // namespace dax::tool
