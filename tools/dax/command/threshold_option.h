// The threshold as text: "otsu", "128", "80..160", "soft:low=60,high=140", ...
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "daxi/threshold.h"
#include "model/threshold_method.h"

namespace dax::tool {

// Grey levels are those of the picture, whatever its depth.
struct Threshold {
  DaxiThresholdBinCfg cfg;
  bool invert;                            // the objects are what the threshold leaves: 255 - mask
  std::optional<ThresholdMethod> method;  // in place of `cfg`
  bool dark = false;                      // of the method

  const char* name() const;
};

inline constexpr const char* kThresholdHelp =
    "Thresholds, of grey values as the picture has them (of 16 bits 0..65535):\n"
    "  otsu              the level that parts dark and bright best, found in each image;\n"
    "                    objects have grey > level (with --dark: <= level)\n"
    "  N                 objects have grey >= N (with --dark: < N)\n"
    "  N..M              objects have N <= grey <= M; either end may be left out\n"
    "  mask              the image is a mask: every grey above 0 is object\n"
    "  soft:low=N,high=M[,steps=S]\n"
    "                    ramp from N to M of S grey levels; objects weigh more than 0\n"
    "  relative[:dark=R,bright=R,low=Q,high=Q,steps=S]\n"
    "                    ramp between levels of the histogram: dark is where a share R of\n"
    "                    the pixels is darker, bright where R is brighter, low and high are\n"
    "                    positions between them, 0..1 (R 0.01, Q 0.5, S 0 unless given)";

// With the methods.
std::string thresholdHelp();

// Throws std::invalid_argument with a message for the user.
Threshold parseThreshold(std::string_view text, bool darkObjects);

}  // namespace dax::tool
