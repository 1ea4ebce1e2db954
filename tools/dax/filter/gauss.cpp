#include "daxi/gauss.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "daxi/gauss_recursive.h"
#include "daxi/log_filter.h"
#include "daxi/unsharp.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

bool isSigma(double sigma) {
  return sigma >= 0.3 && sigma <= 100;
}

DaxiGaussCfg gaussCfg(double sigma) {
  DaxiGaussCfg cfg;
  check(DAXI_GaussDefaultCfg(&cfg), "Gaussian");
  cfg.sigma = sigma;
  return cfg;
}

ImageFilter parseGauss(std::string_view text) {
  const auto sigma = parseNumber(text);
  if (!sigma || !isSigma(*sigma)) return {};
  const DaxiGaussCfg cfg = gaussCfg(*sigma);
  return {configuredFilter<uint8_t>("Gaussian", DAXI_FilterGaussBufferSize_8u, DAXI_FilterGauss_8u_C1R, cfg),
          configuredFilter<uint16_t>("Gaussian", DAXI_FilterGaussBufferSize_16u, DAXI_FilterGauss_16u_C1R, cfg)};
}

ImageFilter parseRecursive(std::string_view text) {
  const auto sigma = parseNumber(text);
  if (!sigma || !(*sigma >= 2 && *sigma <= 100)) return {};
  DaxiGaussRecursiveCfg cfg;
  check(DAXI_GaussRecursiveDefaultCfg(&cfg), "Gaussian");
  cfg.sigma = *sigma;
  return {configuredFilter<uint8_t>("Gaussian", DAXI_FilterGaussRecursiveBufferSize_8u,
                                    DAXI_FilterGaussRecursive_8u_C1R, cfg),
          configuredFilter<uint16_t>("Gaussian", DAXI_FilterGaussRecursiveBufferSize_16u,
                                     DAXI_FilterGaussRecursive_16u_C1R, cfg)};
}

ImageFilter parseUnsharp(std::string_view text) {
  const auto numbers = parseNumbers(text, 2);
  if (!numbers || !isSigma(numbers->at(0)) || !(numbers->at(1) >= -1 && numbers->at(1) <= 100)) return {};
  DaxiUnsharpCfg cfg;
  check(DAXI_UnsharpDefaultCfg(&cfg), "unsharp mask");
  cfg.sigma = numbers->at(0), cfg.amount = numbers->at(1);
  return {configuredFilter<uint8_t>("unsharp mask", DAXI_UnsharpBufferSize_8u, DAXI_Unsharp_8u_C1R, cfg),
          configuredFilter<uint16_t>("unsharp mask", DAXI_UnsharpBufferSize_16u, DAXI_Unsharp_16u_C1R, cfg)};
}

// Times sigma^2 it does not depend on the size of blobs, and is at most 2 / e of white: two thirds of it, around the middle.
template <class Pixel, class Query, class Filter>
auto logFilter(Query query, Filter filter, DaxiGaussCfg cfg) {
  return [=](const PixelImage<Pixel>& image) {
    constexpr double kWhite = std::numeric_limits<Pixel>::max(), kMiddle = (kWhite + 1) / 2;
    uint64_t bytes;
    check(query(image.size, &cfg, &bytes), "Laplacian of a Gaussian");
    const Memory buffer(bytes);
    std::vector<float> response(image.pixels.size());
    check(filter(image.pixels.data(), image.step(), response.data(), image.step(), image.size, &cfg, buffer.get()),
          "Laplacian of a Gaussian");
    auto result = makeImage<Pixel>(image.size);
    const double scale = cfg.sigma * cfg.sigma * 2 / 3;
    std::transform(response.begin(), response.end(), result.pixels.begin(), [=](double v) {
      return static_cast<Pixel>(std::clamp(std::nearbyint(kMiddle - scale * v), 0.0, kWhite));
    });
    return result;
  };
}

ImageFilter parseLog(std::string_view text) {
  const auto sigma = parseNumber(text);
  if (!sigma || !isSigma(*sigma)) return {};
  const DaxiGaussCfg cfg = gaussCfg(*sigma);
  return {logFilter<uint8_t>(DAXI_LoGBufferSize_8u32f, DAXI_LoG_8u32f_C1R, cfg),
          logFilter<uint16_t>(DAXI_LoGBufferSize_16u32f, DAXI_LoG_16u32f_C1R, cfg)};
}

const FilterRegistration gauss({"--gauss", "SIGMA", "SIGMA of 0.3..100", "Gaussian smoothing, SIGMA pixels wide",
                                kSmoothing, parseGauss});
const FilterRegistration recursive({"--gauss-recursive", "SIGMA", "SIGMA of 2..100",
                                    "the same within 0.1 % of white, as fast for any SIGMA of 2..100", kSmoothing,
                                    parseRecursive});
const FilterRegistration unsharp({"--unsharp", "SIGMA,AMOUNT", "SIGMA,AMOUNT, SIGMA of 0.3..100, AMOUNT of -1..100",
                                  "what --gauss SIGMA takes away is added AMOUNT times", kSmoothing, parseUnsharp});
const FilterRegistration laplacian({"--log", "SIGMA", "SIGMA of 0.3..100",
                                    "Laplacian of a Gaussian: bright blobs 1.4 SIGMA in radius\n"
                                    "stand out bright, dark ones dark, flat ground is middle grey",
                                    kEdges, parseLog});

}  // namespace
}  // namespace dax::tool
