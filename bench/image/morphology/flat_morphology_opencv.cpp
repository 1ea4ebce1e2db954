#include "bench/support/opencv.h"

namespace {

using bench::Image;

bench::Task prepare(int side) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(bench::kSize);
  cv::Mat disc(side, side, CV_8U);
  for (int i = 0; i < side * side; ++i) {
    const int x = 2 * (i % side) + 1 - side, y = 2 * (i / side) + 1 - side;
    disc.at<uint8_t>(i / side, i % side) = x * x + y * y <= side * side;
  }
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::erode(bench::viewOf(from), dst, disc);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"erosion by a disc of 15 x 15", [] { return prepare(15); }},
};

}  // namespace
