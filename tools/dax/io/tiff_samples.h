// Sample format of TIFF files. The decoder converts all samples to unsigned 16 bits and clips or wraps those that do
// not fit.
#pragma once

#include <cstddef>
#include <string_view>

namespace dax::tool {

// Whether the first directory describes unsigned integers of at most 16 bits. True also for files that are not TIFF or
// too damaged to tell.
bool hasPlainTiffSamples(std::string_view bytes);

// The number of directories, each of which is a picture; 1 for other files.
size_t countTiffPages(std::string_view bytes);

}  // namespace dax::tool
