#include "bench/support/opencv.h"

namespace {

using bench::Image;

// A composition of box filters in single precision, as the peer's main modules have no guided filter.
template <class T>
bench::Task prepareGuided(int radius, bool isSelf) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kSize);
  return {[=] {
    cv::Mat p, guide, meanP, mean, products, variance, covariance, a, b;
    const cv::Size side(2 * radius + 1, 2 * radius + 1);
    const auto smooth = [&](const cv::Mat& src, cv::Mat& dst) { cv::boxFilter(src, dst, CV_32F, side); };
    bench::viewOf(from).convertTo(guide, CV_32F);
    smooth(guide, mean);
    cv::multiply(guide, guide, products);
    smooth(products, variance);
    cv::multiply(mean, mean, products);
    cv::subtract(variance, products, variance);
    if (isSelf) {
      covariance = variance, meanP = mean;
    } else {
      bench::viewOf(from).convertTo(p, CV_32F);
      smooth(p, meanP);
      cv::multiply(guide, p, products);
      smooth(products, covariance);
      cv::multiply(mean, meanP, products);
      cv::subtract(covariance, products, covariance);
    }
    cv::add(variance, 400, a);
    cv::divide(covariance, a, a);
    cv::multiply(a, mean, b);
    cv::subtract(meanP, b, b);
    smooth(a, a);
    smooth(b, b);
    cv::multiply(a, guide, a);
    cv::add(a, b, a);
    a.convertTo(bench::viewOf(to), cv::traits::Depth<T>::value);
  }};
}

bench::Task prepareBilateral() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(bench::kSize);
  return {[=] { cv::bilateralFilter(bench::viewOf(from), bench::viewOf(to), 9, 30, 5, cv::BORDER_REPLICATE); }};
}

const bench::OpenCvPeer operations[] = {
    {"guided filter by itself, radius 8, 8u", [] { return prepareGuided<uint8_t>(8, true); }},
    {"guided filter by itself, radius 60, 8u", [] { return prepareGuided<uint8_t>(60, true); }},
    {"guided filter by another, radius 8, 8u", [] { return prepareGuided<uint8_t>(8, false); }},
    {"guided filter by itself, radius 8, 32f", [] { return prepareGuided<float>(8, true); }},
    {"bilateral filter, radius 4, 8u", prepareBilateral},
};

}  // namespace
