// Channels of an image: others in another order, and images that are put together from single ones.
#pragma once

#include <vector>

#include "io/image_file.h"

namespace dax::tool {

// Channel i of the result is channel order[i] of `from`, or white where that is -1. Throws Failure(kRefused) for a
// channel that there is not.
Samples arranged(const Samples& from, const std::vector<int>& order);

// An image with as many channels as there are images of one channel. Throws Failure(kRefused) if one differs from the
// first.
Samples merged(const std::vector<Samples>& planes);

}  // namespace dax::tool
