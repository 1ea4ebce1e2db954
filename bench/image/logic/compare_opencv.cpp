#include "bench/support/element_opencv.h"

namespace {

using cv::Mat;

bench::Task inRangeOfColour() {
  const bench::Image<uint8_t> from = bench::noise<uint8_t>();
  const DaxiSize size = {bench::kSize.width / 3, bench::kSize.height};
  const bench::Image<uint8_t> to(size);
  return {[=] {
            Mat dst = bench::viewOf(to);
            cv::inRange(Mat(size.height, size.width, CV_8UC3, from.data()), cv::Scalar(20, 30, 40),
                        cv::Scalar(200, 210, 220), dst);
          },
          [=] { return bench::digest(to); }};
}

template <class T>
bench::Task comparison(int op) {
  return bench::openCvOfTwo<T, uint8_t>([=](const Mat& a, const Mat& b, Mat& dst) { cv::compare(a, b, dst, op); });
}

template <class T>
bench::Task range() {
  return bench::openCvOfOne<T, uint8_t>(
      [](const Mat& src, Mat& dst) { cv::inRange(src, cv::Scalar(50), cv::Scalar(150), dst); });
}

const bench::OpenCvPeer operations[] = {
    {"image > image, 8u", [] { return comparison<uint8_t>(cv::CMP_GT); }},
    {"image > image, 16u", [] { return comparison<uint16_t>(cv::CMP_GT); }},
    {"image <= image, 32f", [] { return comparison<float>(cv::CMP_LE); }},
    {"image != constant, 8u",
     [] {
       return bench::openCvOfOne<uint8_t, uint8_t>(
           [](const Mat& src, Mat& dst) { cv::compare(src, cv::Scalar(77), dst, cv::CMP_NE); });
     }},
    {"in range, 8u", range<uint8_t>},
    {"in range, 16u", range<uint16_t>},
    {"in range, three channels, 8u", inRangeOfColour},
    {"image & image, 8u",
     [] {
       return bench::openCvOfTwo<uint8_t, uint8_t>(
           [](const Mat& a, const Mat& b, Mat& dst) { cv::bitwise_and(a, b, dst); });
     }},
    {"image ^ constant, 16u",
     [] {
       return bench::openCvOfOne<uint16_t, uint16_t>(
           [](const Mat& src, Mat& dst) { cv::bitwise_xor(src, cv::Scalar(77), dst); });
     }},
    {"~image, 8u",
     [] { return bench::openCvOfOne<uint8_t, uint8_t>([](const Mat& src, Mat& dst) { cv::bitwise_not(src, dst); }); }},
};

}  // namespace
