// Grey from red, green, blue.
#include "base/text.h"
#include "convert/sample_call.h"
#include "daxi/gray.h"

namespace dax::tool {
namespace {

constexpr SampleCall<int32_t> kByStandard = {DAXI_RGBToGray_8u_C3C1R, DAXI_RGBToGray_16u_C3C1R,
                                             DAXI_RGBToGray_32f_C3C1R};
constexpr SampleCall<const double*> kByWeights = {DAXI_ColourToGray_8u_C3C1R, DAXI_ColourToGray_16u_C3C1R,
                                                  DAXI_ColourToGray_32f_C3C1R};

ConvertStep parseGrey(std::string_view text) {
  if (text == "601" || text == "709") {
    return [standard = text == "601" ? DAXI_COLOUR_BT601 : DAXI_COLOUR_BT709](const Samples& samples) {
      requireChannels(samples, "--grey", 3);
      return callOnPixels(kByStandard, "--grey", samples, 1, standard);
    };
  }
  const auto weights = parseNumbers(text, 3);
  if (!weights) return {};
  return [weights = *weights](const Samples& samples) {
    requireChannels(samples, "--grey", 3);
    return callOnPixels(kByWeights, "--grey", samples, 1, weights.data());
  };
}

const ConvertRegistration greyRegistration({220, "--grey", "WEIGHTS", "601, 709 or three weights with commas",
                                            "grey of red, green, blue by the weights of BT.601 or BT.709,\n"
                                            "601 or 709, or by others, as 0.25,0.5,0.25",
                                            parseGrey});

}  // namespace
}  // namespace dax::tool
