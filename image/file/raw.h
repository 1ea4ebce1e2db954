// Rows of samples as they are, which PFM has too.
#pragma once

#include "image/file/image_file.h"

namespace dax {

// Turns the bytes of `count` samples around where the file's order is not this machine's.
void swapSamples(uint8_t* samples, uint64_t count, int32_t type);

// A row for a file, piece by piece.
void writeSamples(ByteSink& sink, const uint8_t* samples, uint64_t count, int32_t type, bool swap);

}  // namespace dax
