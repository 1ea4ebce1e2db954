#include "bench/support/opencv.h"

namespace {

using bench::Image;
using bench::kSize;

const DaxiSize turned = {kSize.height, kSize.width};

// call(from, to) of views with so many channels.
template <class T, class Call>
bench::Task prepare(DaxiSize to, int32_t channels, Call call) {
  const Image<T> from = bench::noise<T>({kSize.width * channels, kSize.height});
  const Image<T> result({to.width * channels, to.height});
  return {[=] {
            cv::Mat dst = bench::viewOf(result).reshape(channels);
            call(bench::viewOf(from).reshape(channels), dst);
          },
          [=] { return bench::digest(result); }};
}

void rotate(const cv::Mat& from, cv::Mat& to) {
  cv::rotate(from, to, cv::ROTATE_90_CLOCKWISE);
}

void transpose(const cv::Mat& from, cv::Mat& to) {
  cv::transpose(from, to);
}

void mirror(const cv::Mat& from, cv::Mat& to) {
  cv::flip(from, to, 1);
}

const bench::OpenCvPeer operations[] = {
    {"rotate by 90 degrees, 8u", [] { return prepare<uint8_t>(turned, 1, rotate); }},
    {"rotate by 90 degrees, 8u, three channels", [] { return prepare<uint8_t>(turned, 3, rotate); }},
    {"transpose, 8u", [] { return prepare<uint8_t>(turned, 1, transpose); }},
    {"transpose, 32f", [] { return prepare<float>(turned, 1, transpose); }},
    {"mirror columns, 8u", [] { return prepare<uint8_t>(kSize, 1, mirror); }},
    {"mirror columns, 8u, three channels", [] { return prepare<uint8_t>(kSize, 3, mirror); }},
};

}  // namespace
