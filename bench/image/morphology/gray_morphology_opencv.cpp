#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class T>
bench::Task prepare(int operation, int side) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kSize);
  const cv::Mat window = cv::getStructuringElement(cv::MORPH_RECT, {side, side});
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::morphologyEx(bench::viewOf(from), dst, operation, window);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"gray erosion 3 x 3, 8u", [] { return prepare<uint8_t>(cv::MORPH_ERODE, 3); }},
    {"gray erosion 3 x 3, 32f", [] { return prepare<float>(cv::MORPH_ERODE, 3); }},
    {"gray erosion 15 x 15, 8u", [] { return prepare<uint8_t>(cv::MORPH_ERODE, 15); }},
    {"gray erosion 61 x 61, 8u", [] { return prepare<uint8_t>(cv::MORPH_ERODE, 61); }},
    {"gray erosion 255 x 255, 8u", [] { return prepare<uint8_t>(cv::MORPH_ERODE, 255); }},
    {"gray erosion 15 x 15, 16u", [] { return prepare<uint16_t>(cv::MORPH_ERODE, 15); }},
    {"gray erosion 15 x 15, 32f", [] { return prepare<float>(cv::MORPH_ERODE, 15); }},
    {"gray top-hat 15 x 15, 8u", [] { return prepare<uint8_t>(cv::MORPH_TOPHAT, 15); }},
};

}  // namespace
