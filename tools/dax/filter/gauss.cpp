#include "daxi/gauss.h"
#include "base/text.h"
#include "daxi/unsharp.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class Pixel, class Cfg, class Query, class Filter>
auto gaussFilter(const char* step, Query query, Filter filter, const Cfg& cfg) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, &cfg, &bytes), step);
    const Memory buffer(bytes);
    return plainFilter<Pixel>(step, filter, &cfg, buffer.get())(image);
  };
}

bool isSigma(double sigma) {
  return sigma >= 0.3 && sigma <= 100;
}

ImageFilter parseGauss(std::string_view text) {
  const auto sigma = parseNumber(text);
  if (!sigma || !isSigma(*sigma)) return {};
  DaxiGaussCfg cfg;
  check(DAXI_GaussDefaultCfg(&cfg), "Gaussian");
  cfg.sigma = *sigma;
  return {gaussFilter<uint8_t>("Gaussian", DAXI_FilterGaussBufferSize_8u, DAXI_FilterGauss_8u_C1R, cfg),
          gaussFilter<uint16_t>("Gaussian", DAXI_FilterGaussBufferSize_16u, DAXI_FilterGauss_16u_C1R, cfg)};
}

ImageFilter parseUnsharp(std::string_view text) {
  const auto numbers = parseNumbers(text, 2);
  if (!numbers || !isSigma(numbers->at(0)) || !(numbers->at(1) >= -1 && numbers->at(1) <= 100)) return {};
  DaxiUnsharpCfg cfg;
  check(DAXI_UnsharpDefaultCfg(&cfg), "unsharp mask");
  cfg.sigma = numbers->at(0), cfg.amount = numbers->at(1);
  return {gaussFilter<uint8_t>("unsharp mask", DAXI_UnsharpBufferSize_8u, DAXI_Unsharp_8u_C1R, cfg),
          gaussFilter<uint16_t>("unsharp mask", DAXI_UnsharpBufferSize_16u, DAXI_Unsharp_16u_C1R, cfg)};
}

const FilterRegistration gauss({"--gauss", "SIGMA", "SIGMA of 0.3..100", "Gaussian smoothing, SIGMA pixels wide", true,
                                parseGauss});
const FilterRegistration unsharp({"--unsharp", "SIGMA,AMOUNT", "SIGMA,AMOUNT, SIGMA of 0.3..100, AMOUNT of -1..100",
                                  "what --gauss SIGMA takes away is added AMOUNT times", true, parseUnsharp});

}  // namespace
}  // namespace dax::tool
