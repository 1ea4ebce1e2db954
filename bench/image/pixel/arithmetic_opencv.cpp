#include <algorithm>

#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            call(bench::viewOf(from), dst);
          },
          [=] { return bench::digest(to); }};
}

template <class T, class Call>
bench::Task prepareTwo(Call call) {
  const Image<T> first = bench::noise<T>(), second = bench::noise<T>(), to(bench::kSize);
  std::reverse(second.data(), second.data() + bench::pixelCount(bench::kSize));
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            call(bench::viewOf(first), bench::viewOf(second), dst);
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"image + constant, 8u",
     [] { return prepare<uint8_t>([](const cv::Mat& src, cv::Mat& dst) { cv::add(src, cv::Scalar(77), dst); }); }},
    {"image * constant, 8u",
     [] { return prepare<uint8_t>([](const cv::Mat& src, cv::Mat& dst) { cv::multiply(src, cv::Scalar(3), dst); }); }},
    {"absolute difference, 16u",
     [] {
       return prepare<uint16_t>([](const cv::Mat& src, cv::Mat& dst) { cv::absdiff(src, cv::Scalar(3000), dst); });
     }},
    {"image + image, 8u",
     [] { return prepareTwo<uint8_t>([](const cv::Mat& a, const cv::Mat& b, cv::Mat& dst) { cv::add(a, b, dst); }); }},
    {"absolute difference of images, 16u",
     [] {
       return prepareTwo<uint16_t>([](const cv::Mat& a, const cv::Mat& b, cv::Mat& dst) { cv::absdiff(a, b, dst); });
     }},
    {"image - constant, 32f",
     [] { return prepare<float>([](const cv::Mat& src, cv::Mat& dst) { cv::subtract(src, cv::Scalar(0.5), dst); }); }},
};

}  // namespace
