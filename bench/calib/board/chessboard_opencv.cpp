#include <opencv2/calib3d.hpp>

#include "bench/calib/board/board_support.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task refine() {
  const Image<uint8_t> image = bench::board().image;
  std::vector<cv::Point2f> from;
  for (const DaxiPoint32f& p : bench::starts()) from.emplace_back(p.x, p.y);
  return {[=] {
    std::vector<cv::Point2f> points = from;
    cv::cornerSubPix(bench::viewOf(image), points, {5, 5}, {-1, -1}, {cv::TermCriteria::COUNT, 10, 0});
  }};
}

bench::Task findQuads(const Image<uint8_t>& image) {
  return {[=] {
    std::vector<cv::Point2f> points;
    cv::findChessboardCorners(bench::viewOf(image), {9, 6}, points);
  }};
}

bench::Task findSectors(const Image<uint8_t>& image) {
  return {[=] {
    std::vector<cv::Point2f> points;
    cv::findChessboardCornersSB(bench::viewOf(image), {9, 6}, points);
  }};
}

// Beside both detectors that find out the size: the sectors, which are told it.
const bench::OpenCvPeer operations[] = {
    {"find by quads, 9 x 6", [] { return findQuads(bench::board().image); }},
    {"find by quads, no board", [] { return findQuads(bench::noBoard()); }},
    {"find by Hessian, 9 x 6", [] { return findSectors(bench::board().image); }},
    {"find by Hessian, no board", [] { return findSectors(bench::noBoard()); }},
    {"find by symmetry, 9 x 6", [] { return findSectors(bench::board().image); }},
    {"find by symmetry, no board", [] { return findSectors(bench::noBoard()); }},
    {"refine 54 corners, 11 x 11, 10 times", refine},
};

}  // namespace
