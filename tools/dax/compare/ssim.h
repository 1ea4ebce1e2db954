// Structural similarity of two images.
#pragma once

#include <optional>

#include "dax/types.h"

namespace dax::tool {

// Mean structural similarity. Wang, Bovik, Sheikh, Simoncelli, Image quality assessment: from error visibility to
// structural similarity, IEEE Transactions on Image Processing 13, 2004: windows of 11 x 11 pixels with Gaussian
// weights of sigma 1.5, all that lie in the image; K1 = 0.01, K2 = 0.03. Rows have no gaps; `white` is the largest
// value. None where a side is below 11.
std::optional<double> structuralSimilarity(const float* first, const float* second, DaxiSize size, double white);

}  // namespace dax::tool
