#include "daxi/line_fit.h"

#include <memory>

#include "bench/measure/fit/line_points.h"
#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

constexpr int32_t kUsualPoints = 1000;
const int32_t kPoints = bench::scaled(kUsualPoints);

struct Fit {
  std::vector<DaxiPoint32f> points = bench::linePoints(kPoints, 0.1);
  std::vector<uint8_t> inliers = std::vector<uint8_t>(kPoints);
  std::vector<float> weights = std::vector<float>(kPoints);
  std::vector<double> buffer;
  DaxiLine line = {};
  float rms = 0;
};

bench::Task prepare(int32_t method, int32_t weights) {
  const auto fit = std::make_shared<Fit>();
  uint64_t bytes = 0;
  bench::require(DAXI_LineFitRegreBufferSize_32f(kPoints, &bytes));
  fit->buffer.resize(bytes / sizeof(double) + 1);
  return {[=] {
    const LineFitCfg cfg = {method, weights, 50, kPoints / 10, 5, 0, 0, 0};
    bench::require(DAXI_LineFitRegre_32f(fit->points.data(), kPoints, &cfg, &fit->line, fit->inliers.data(),
                                         fit->weights.data(), &fit->rms, fit->buffer.data()));
  }};
}

constexpr size_t kBytes = kUsualPoints * 5;

const bench::Own operations[] = {
    {"line fit, method 1, least squares", kBytes, [] { return prepare(1, DAXI_LINE_LEAST_SQUARES); }},
    {"line fit, method 1, Huber", kBytes, [] { return prepare(1, DAXI_LINE_HUBER); }},
    {"line fit, method 1, Tukey", kBytes, [] { return prepare(1, DAXI_LINE_TUKEY); }},
    {"line fit, method 2, Huber", kBytes, [] { return prepare(2, DAXI_LINE_HUBER); }},
    {"line fit, method 3, Huber", kBytes, [] { return prepare(3, DAXI_LINE_HUBER); }},
};

}  // namespace
