#include "bench/image/threshold/threshold_bench.h"

#include "bench/support/opencv.h"

namespace {

using bench::Image;

// Calls threshold(src, dst).
template <class Threshold>
bench::Task prepare(Threshold threshold) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(bench::kSize);
  return {[=] { threshold(bench::viewOf(from), bench::viewOf(to)); }, [=] { return bench::digest(to); }};
}

bench::Task prepareSingle() {
  return prepare(
      [](const cv::Mat& src, cv::Mat dst) { cv::threshold(src, dst, bench::kLevel - 1, 255, cv::THRESH_BINARY); });
}

bench::Task prepareBand() {
  return prepare([](const cv::Mat& src, cv::Mat dst) { cv::inRange(src, bench::kBandLow, bench::kBandHigh, dst); });
}

// The pixels at Otsu's level belong to the other class than in the library, hence no common result.
bench::Task prepareOtsu() {
  bench::Task task = prepare(
      [](const cv::Mat& src, cv::Mat dst) { cv::threshold(src, dst, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU); });
  task.result = {};
  return task;
}

// There is no such function; a table that is ready before the call comes nearest.
bench::Task prepareSoft() {
  cv::Mat table(1, 256, CV_8U);
  const int steps = bench::kSoftLevels + 1;
  const int width = bench::kSoftHigh - bench::kSoftLow;
  for (int i = 0; i < 256; ++i) {
    const int fromLow = std::clamp(i - bench::kSoftLow, 0, width);
    const int step = (2 * fromLow * steps + width) / (2 * width);
    table.at<uint8_t>(i) = static_cast<uint8_t>((2 * 255 * step + steps) / (2 * steps));
  }
  return prepare([table](const cv::Mat& src, cv::Mat dst) { cv::LUT(src, table, dst); });
}

const bench::OpenCvPeer operations[] = {
    {"single threshold, 8u", prepareSingle},
    {"band threshold, 8u", prepareBand},
    {"Otsu threshold, 8u", prepareOtsu},
    {"soft binarisation, 8u", prepareSoft},
};

}  // namespace
