// Values stretched between two percentiles.
#include "daxi/normalise.h"
#include "base/text.h"
#include "convert/sample_call.h"

namespace dax::tool {
namespace {

constexpr SampleCall<const DaxiNormaliseCfg*> kNormalise = {DAXI_Normalise_8u_C1R, DAXI_Normalise_16u_C1R,
                                                            DAXI_Normalise_32f_C1R};

Samples normalised(const Samples& samples, double low, double high) {
  requireAlike(samples, "--normalise");
  const double white = samples.record.type == DAXI_SAMPLE_32F ? 1 : samples.record.maxValue;
  const DaxiNormaliseCfg cfg = {low / 100, high / 100, 0, white};
  return callOnSamples(kNormalise, "--normalise", samples, &cfg);
}

ConvertStep parseNormalise(std::string_view text) {
  const auto shares = parseRange(text);
  if (!shares || !shares->min || !shares->max || *shares->min < 0 || *shares->max > 100) return {};
  return [low = *shares->min, high = *shares->max](const Samples& samples) { return normalised(samples, low, high); };
}

const ConvertRegistration normaliseRegistration({400, "--normalise", "LOW..HIGH", "LOW..HIGH, percent",
                                                 "the values at these percentiles become black and white: 0..100\n"
                                                 "the least and the greatest value, 1..99 without outliers;\n"
                                                 "channels of colour alike",
                                                 parseNormalise});

}  // namespace
}  // namespace dax::tool
