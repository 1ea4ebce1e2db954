#include "bench/support/opencv.h"

namespace {

using bench::Image;
using bench::kSize;

const DaxiSize half = {(kSize.width + 1) / 2, (kSize.height + 1) / 2};

using Function = void (*)(const cv::Mat&, cv::Mat&);

bench::Task prepare(DaxiSize from, DaxiSize to, Function function) {
  const Image<uint8_t> src = bench::noise<uint8_t>(from);
  const Image<uint8_t> result(to);
  return {[=] {
            cv::Mat dst = bench::viewOf(result);
            function(bench::viewOf(src), dst);
          },
          nullptr};  // rounds halves up, and replicates the last column where it doubles
}

const bench::OpenCvPeer operations[] = {
    {"pyramid down, 8u",
     [] { return prepare(kSize, half, [](const cv::Mat& from, cv::Mat& to) { cv::pyrDown(from, to, to.size()); }); }},
    {"pyramid up, 8u",
     [] { return prepare(half, kSize, [](const cv::Mat& from, cv::Mat& to) { cv::pyrUp(from, to, to.size()); }); }},
};

}  // namespace
