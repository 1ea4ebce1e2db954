// What the pixels of a TIFF file are made of. The decoder brings all of them to 16 bits without a sign, and clips or
// wraps what does not fit.
#pragma once

#include <string_view>

namespace dax::tool {

// True where the first directory tells of whole numbers without a sign, of at most 16 bits; true, too, for what is no
// TIFF, and for what is too damaged to tell.
bool hasPlainTiffSamples(std::string_view bytes);

}  // namespace dax::tool
