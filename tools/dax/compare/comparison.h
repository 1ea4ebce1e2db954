// What two images differ in.
#pragma once

#include <cstdint>
#include <optional>

#include "io/grey_image.h"
#include "io/image_file.h"

namespace dax::tool {

struct Comparison {
  uint64_t pixels = 0;
  uint64_t differing = 0;      // pixels that differ at all
  uint64_t overTolerance = 0;  // in a channel, by more than the tolerance
  uint64_t leftOut = 0;   // pixels that are no finite number in an image; the samples below are those of the others
  uint64_t unpaired = 0;  // of them, those of which the other image has a finite number, which differ

  // The largest difference, where it comes first, and the samples there.
  double max = 0;
  int32_t x = 0, y = 0, channel = 0;
  double first = 0, second = 0;

  double meanDifference = 0;  // second - first
  double meanMagnitude = 0, meanSquare = 0;
  double psnr = 0;             // dB; infinite where meanSquare is 0
  std::optional<double> ssim;  // mean over the channels; none of images below 11 x 11, and where pixels are left out
};

// Throws Failure(kRefused) for images of different sizes, channels or samples.
void requireComparable(const Samples& first, const Samples& second);

// white: the value that PSNR and SSIM take as the largest. Throws Failure(kRefused) where all pixels are left out.
Comparison compareSamples(const Samples& first, const Samples& second, double tolerance, double white);

// The largest difference of a channel, second - first: mid-grey where there is none, white at `extent` and beyond and
// where only one image has a finite number, black at the opposite.
GreyImage differencePicture(const Samples& first, const Samples& second, double extent);

}  // namespace dax::tool
