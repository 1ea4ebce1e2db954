// Plots of histograms.
#pragma once

#include <string>

#include "model/image_stats.h"

namespace dax::tool {

// A PNG: a bar for each bin, as high as its share of the pixels, between 0 and maxValue; lines at the mean and the median.
std::string plotHistogram(const ImageStats& stats, int maxValue);

}  // namespace dax::tool
