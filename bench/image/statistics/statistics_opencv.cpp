#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class T, class Call>
bench::Task prepare(Call call) {
  const Image<T> from = bench::noise<T>();
  return {[=] { call(bench::viewOf(from)); }};
}

template <class T>
bench::Task prepareIntegral(int depth) {
  const Image<T> from = bench::noise<T>();
  const auto to = std::make_shared<cv::Mat>();
  return {[=] { cv::integral(bench::viewOf(from), *to, depth); }};
}

bench::Task prepareHistogram() {
  const auto counts = std::make_shared<cv::Mat>();
  return prepare<uint8_t>([=](const cv::Mat& src) {
    const int channel = 0, bins = 256;
    const float limits[] = {0, 256};
    const float* ranges[] = {limits};
    cv::calcHist(&src, 1, &channel, cv::noArray(), *counts, 1, &bins, ranges);
  });
}

volatile double taken;

const bench::OpenCvPeer operations[] = {
    {"sum, 8u", [] { return prepare<uint8_t>([](const cv::Mat& src) { taken = cv::sum(src)[0]; }); }},
    {"mean and deviation, 8u",
     [] {
       return prepare<uint8_t>([](const cv::Mat& src) {
         cv::Scalar mean, deviation;
         cv::meanStdDev(src, mean, deviation);
         taken = deviation[0];
       });
     }},
    {"sum, 32f", [] { return prepare<float>([](const cv::Mat& src) { taken = cv::sum(src)[0]; }); }},
    {"minimum and maximum, 8u",
     [] {
       return prepare<uint8_t>([](const cv::Mat& src) {
         double min, max;
         cv::Point minAt, maxAt;
         cv::minMaxLoc(src, &min, &max, &minAt, &maxAt);
         taken = max;
       });
     }},
    {"norm L2, 8u", [] { return prepare<uint8_t>([](const cv::Mat& src) { taken = cv::norm(src, cv::NORM_L2); }); }},
    {"norm L1, 16u", [] { return prepare<uint16_t>([](const cv::Mat& src) { taken = cv::norm(src, cv::NORM_L1); }); }},
    {"histogram, 8u", prepareHistogram},
    {"integral, 8u", [] { return prepareIntegral<uint8_t>(CV_32S); }},
    {"integral, 32f", [] { return prepareIntegral<float>(CV_64F); }},
    {"sums of columns, 8u",
     [] {
       return prepare<uint8_t>([](const cv::Mat& src) {
         cv::Mat sums;
         cv::reduce(src, sums, 0, cv::REDUCE_SUM, CV_64F);
         taken = sums.at<double>(0);
       });
     }},
    {"moments, 8u", [] { return prepare<uint8_t>([](const cv::Mat& src) { taken = cv::moments(src).m00; }); }},
};

}  // namespace
