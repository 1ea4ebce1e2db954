#include <memory>

#include "bench/measure/fit/line_points.h"
#include "bench/support/amount.h"
#include "bench/support/opencv.h"

namespace {

struct Fit {
  std::vector<cv::Point2f> points;
  cv::Vec4f line;
};

bench::Task prepare(int distance) {
  const auto fit = std::make_shared<Fit>();
  for (const DaxiPoint32f p : bench::linePoints(bench::scaled(1000), 0.1)) fit->points.emplace_back(p.x, p.y);
  return {[=] { cv::fitLine(fit->points, fit->line, distance, 0, 0.01, 0.01); }};
}

const bench::OpenCvPeer operations[] = {
    {"line fit, method 1, least squares", [] { return prepare(cv::DIST_L2); }},
    {"line fit, method 1, Huber", [] { return prepare(cv::DIST_HUBER); }},
    {"line fit, method 1, Tukey", [] { return prepare(cv::DIST_WELSCH); }},
};

}  // namespace
