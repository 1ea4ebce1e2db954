// Thresholds that the library finds itself: a level of the histogram for the whole picture, or one for each pixel from the
// window around it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "io/picture.h"

namespace dax::tool {

struct ThresholdMethod {
  std::string name;
  int local = -1;                // DAXI_LOCAL_...; -1: by the histogram
  DaxiSize window = {31, 31};    // of local ones
  std::optional<double> number;  // its own: percentile, k, offset or least contrast, in greys of 8 bits
};

struct MethodMask {
  GreyImage mask;
  std::vector<int> levels;  // of local ones: none
  std::string note;         // why a level is not what the method looks for
};

inline constexpr const char* kMethodHelp =
    "  kapur, yen, li, kittler, isodata, intermodes, triangle, percentile:P\n"
    "                    a level of the histogram by another criterion than otsu's, of the\n"
    "                    picture's own values\n"
    "  METHOD[:W[,N]]    each pixel against the W x W pixels around it (31 unless given):\n"
    "                    mean and gauss (by N greys of 8 bits, 5; gauss weighs the middle more),\n"
    "                    mean-variance, niblack, sauvola, wolf (N is their factor k), bernsen\n"
    "                    (N is the least contrast, 15)";

// None where the text is no method's; throws std::invalid_argument where one has other numbers than it takes.
std::optional<ThresholdMethod> parseThresholdMethod(std::string_view text);

// All, with their usual numbers; the ones of the histogram first.
std::vector<ThresholdMethod> allThresholdMethods();

// 255 where a pixel is bright, or dark: of pictures of more than 8 bits by their own values, of which those beyond the
// levels count at the levels, and the lower level is black. Throws Failure(kRefused).
MethodMask applyThresholdMethod(const ThresholdMethod& method, const Picture& picture, bool dark);

}  // namespace dax::tool
