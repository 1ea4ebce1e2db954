#include "bench/image/draw/draw_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;
using bench::kSize;

constexpr int kBits = 8;  // of fractions, which the peer takes as integers

cv::Point fixedPoint(DaxiPoint64f p) {
  return {static_cast<int>(std::lrint(p.x * (1 << kBits))), static_cast<int>(std::lrint(p.y * (1 << kBits)))};
}

template <int channels>
bench::Task lines(int width, int type) {
  const Image<uint8_t> image({kSize.width * channels, kSize.height});
  const auto points = bench::drawnPoints();
  return {[=] {
            cv::Mat view = bench::viewOf(image).reshape(channels);
            for (size_t i = 0; i < points.size(); i += 2) {
              cv::line(view, fixedPoint(points[i]), fixedPoint(points[i + 1]), cv::Scalar::all(255), width, type,
                       kBits);
            }
          },
          nullptr};
}

bench::Task circles() {
  const Image<uint8_t> image(kSize);
  const auto points = bench::drawnPoints();
  return {[=] {
            cv::Mat view = bench::viewOf(image);
            for (size_t i = 0; i < points.size(); i += 2) {
              cv::circle(view, fixedPoint(points[i]), 30 << kBits, cv::Scalar::all(255), 2, cv::LINE_AA, kBits);
            }
          },
          nullptr};
}

bench::Task star() {
  const Image<uint8_t> image(kSize);
  std::vector<std::vector<cv::Point>> outlines(1);
  for (const DaxiPoint64f& p : bench::drawnStar(40, kSize.height)) outlines[0].push_back(fixedPoint(p));
  return {[=] {
            cv::Mat view = bench::viewOf(image);
            cv::fillPoly(view, outlines, cv::Scalar::all(255), cv::LINE_AA, kBits);
          },
          nullptr};
}

const bench::OpenCvPeer operations[] = {
    {"draw 1000 anti-aliased lines, 8u", [] { return lines<1>(1, cv::LINE_AA); }},
    {"draw 1000 anti-aliased lines, 8u, three channels", [] { return lines<3>(1, cv::LINE_AA); }},
    {"draw 1000 anti-aliased lines 5 wide, 8u", [] { return lines<1>(5, cv::LINE_AA); }},
    {"draw 1000 lines, 8u", [] { return lines<1>(1, cv::LINE_8); }},
    {"draw 1000 circles, 8u", circles},
    {"fill a star, 8u", star},
};

}  // namespace
