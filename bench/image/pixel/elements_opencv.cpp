#include "bench/support/element_opencv.h"

namespace {

using cv::Mat;

// Where results differ by definition, they are not compared: halves are rounded otherwise, exp and log are coarser.
constexpr bool kDiffers = false;

template <class T, class Call>
bench::Task ofTwo(Call call, bool same = true) {
  return bench::openCvOfTwo<T, T>(call, same);
}
template <class T, class D, class Call>
bench::Task ofOne(Call call, bool same = true) {
  return bench::openCvOfOne<T, D>(call, same);
}

template <class T>
bench::Task weighted() {
  return ofTwo<T>([](const Mat& a, const Mat& b, Mat& dst) { cv::addWeighted(a, 0.3, b, 0.7, 1, dst); }, kDiffers);
}
template <class T>
bench::Task quotient(bool same) {
  return ofTwo<T>([](const Mat& a, const Mat& b, Mat& dst) { cv::divide(a, b, dst); }, same);
}
template <class T>
bench::Task product() {
  return ofTwo<T>([](const Mat& a, const Mat& b, Mat& dst) { cv::multiply(a, b, dst, 1.0 / 128); }, kDiffers);
}
template <class T>
bench::Task lesser() {
  return ofTwo<T>([](const Mat& a, const Mat& b, Mat& dst) { cv::min(a, b, dst); });
}

const bench::OpenCvPeer operations[] = {
    {"image * image / 128, 8u", product<uint8_t>},
    {"image * image / 128, 16u", product<uint16_t>},
    {"(image + image) / 2, 8u",
     [] {
       return ofTwo<uint8_t>([](const Mat& a, const Mat& b, Mat& dst) { cv::addWeighted(a, 0.5, b, 0.5, 0, dst); },
                             kDiffers);
     }},
    {"image / image, 8u", [] { return quotient<uint8_t>(kDiffers); }},
    {"image / image, 16u", [] { return quotient<uint16_t>(kDiffers); }},
    {"image / image, 32f", [] { return quotient<float>(true); }},
    {"image / constant, 8u",
     [] {
       return ofOne<uint8_t, uint8_t>([](const Mat& src, Mat& dst) { cv::divide(src, cv::Scalar(7), dst); }, kDiffers);
     }},
    {"weighted sum, 8u", weighted<uint8_t>},
    {"weighted sum, 16u", weighted<uint16_t>},
    {"weighted sum, 32f", weighted<float>},
    {"min(image, image), 8u", lesser<uint8_t>},
    {"min(image, image), 32f", lesser<float>},
    {"max(image, constant), 16u",
     [] { return ofOne<uint16_t, uint16_t>([](const Mat& src, Mat& dst) { cv::max(src, cv::Scalar(100), dst); }); }},
    {"square root, 32f", [] { return ofOne<float, float>([](const Mat& src, Mat& dst) { cv::sqrt(src, dst); }); }},
    {"exponential, 32f",
     [] { return ofOne<float, float>([](const Mat& src, Mat& dst) { cv::exp(src, dst); }, kDiffers); }},
    {"logarithm, 32f",
     [] { return ofOne<float, float>([](const Mat& src, Mat& dst) { cv::log(src, dst); }, kDiffers); }},
    {"sum, 8u32f",
     [] { return ofOne<uint8_t, float>([](const Mat& src, Mat& dst) { cv::accumulate(src, dst); }, kDiffers); }},
    {"running average, 16u32f",
     [] {
       return ofOne<uint16_t, float>([](const Mat& src, Mat& dst) { cv::accumulateWeighted(src, dst, 0.1); }, kDiffers);
     }},
};

}  // namespace
