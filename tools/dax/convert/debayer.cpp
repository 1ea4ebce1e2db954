// Colours of the mosaic that a sensor with a Bayer pattern sees.
#include <algorithm>
#include <array>

#include "base/text.h"
#include "convert/sample_call.h"
#include "daxi/bayer.h"

namespace dax::tool {
namespace {

constexpr std::array kPatterns = {"rggb", "grbg", "gbrg", "bggr"};  // by DAXI_BAYER_...
constexpr SampleCall<int32_t> kBilinear = {DAXI_BayerBilinear_8u_C1C3R, DAXI_BayerBilinear_16u_C1C3R, nullptr};
constexpr SampleCall<int32_t> kMhc = {DAXI_BayerMHC_8u_C1C3R, DAXI_BayerMHC_16u_C1C3R, nullptr};

ConvertStep parseDebayer(std::string_view text) {
  const auto [pattern, method] = splitPair(text, ':').value_or(std::pair{text, std::string_view("mhc")});
  const auto found = std::find(kPatterns.begin(), kPatterns.end(), pattern);
  if (found == kPatterns.end() || (method != "mhc" && method != "bilinear")) return {};
  const auto phase = static_cast<int32_t>(found - kPatterns.begin());
  return [phase, &call = method == "mhc" ? kMhc : kBilinear](const Samples& samples) {
    if (samples.record.channels != 1) {
      refuseSamples("--debayer", "takes a mosaic, of 1 channel, not " + std::to_string(samples.record.channels));
    }
    return callOnPixels(call, "--debayer", samples, 3, phase);
  };
}

const ConvertRegistration debayerRegistration({100, "--debayer", "PATTERN",
                                               "rggb, grbg, gbrg or bggr, perhaps with :bilinear",
                                               "colours of a mosaic whose upper left 2 x 2 pixels are rggb,\n"
                                               "grbg, gbrg or bggr, by the method of Malvar, He and Cutler;\n"
                                               "rggb:bilinear: by means of neighbours",
                                               parseDebayer});

}  // namespace
}  // namespace dax::tool
