// Gamma curves.
#include "daxi/gamma.h"
#include "base/text.h"
#include "convert/sample_call.h"

namespace dax::tool {
namespace {

DaxStatus gamma16(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size, double gamma) {
  uint64_t bytes = 0;
  check(DAXI_GammaBufferSize_16u(&bytes), "--gamma");
  const Memory buffer(bytes);
  return DAXI_Gamma_16u_C1R(src, srcStep, dst, dstStep, size, gamma, buffer.get());
}

constexpr SampleCall<double> kGamma = {DAXI_Gamma_8u_C1R, gamma16, nullptr};

ConvertStep parseGamma(std::string_view text) {
  const auto gamma = parseNumber(text);
  if (!gamma || *gamma < 0.01 || *gamma > 100) return {};
  return [gamma = *gamma](const Samples& samples) {
    requireAlike(samples, "--gamma");
    requireWholeRange(samples, "--gamma");
    return callOnSamples(kGamma, "--gamma", samples, gamma);
  };
}

const ConvertRegistration gammaRegistration({420, "--gamma", "G", "a number of 0.01 to 100",
                                             "white (value / white)^G: below 1 dark parts become brighter",
                                             parseGamma});

}  // namespace
}  // namespace dax::tool
