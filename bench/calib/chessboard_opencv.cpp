#include <opencv2/calib3d.hpp>

#include "calib/board.h"
#include "support/opencv.h"

namespace {

using bench::Image;

std::vector<cv::Point2f> starts() {
  std::vector<cv::Point2f> points;
  for (const DaxiPoint32f& p : bench::board().corners) {
    const auto i = static_cast<int>(points.size());
    points.emplace_back(p.x + static_cast<float>(i % 5) * 0.5f - 1, p.y + static_cast<float>(i % 3) - 1);
  }
  return points;
}

bench::Task refine() {
  const Image<uint8_t> image = bench::board().image;
  const std::vector<cv::Point2f> from = starts();
  return {[=] {
    std::vector<cv::Point2f> points = from;
    cv::cornerSubPix(bench::viewOf(image), points, {5, 5}, {-1, -1}, {cv::TermCriteria::COUNT, 10, 0});
  }};
}

const bench::OpenCvPeer operations[] = {
    {"refine 54 corners, 11 x 11, 10 times", refine},
};

}  // namespace
