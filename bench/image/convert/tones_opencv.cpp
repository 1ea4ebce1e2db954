#include "bench/support/opencv.h"

namespace {

using bench::Image;

template <class From, class To, class Call>
bench::Task prepare(Call call) {
  const Image<From> from = bench::noise<From>();
  const Image<To> to(bench::kSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            call(bench::viewOf(from), dst);
          },
          [=] { return bench::digest(to); }};
}

template <class To>
bench::Task prepareLut() {
  cv::Mat table(1, 256, cv::traits::Type<To>::value);
  for (int v = 0; v < 256; ++v) table.at<To>(v) = static_cast<To>(255 - v);
  return prepare<uint8_t, To>([table](const cv::Mat& src, cv::Mat& dst) { cv::LUT(src, table, dst); });
}

template <class T>
bench::Task prepareClip() {
  const cv::Ptr<cv::CLAHE> clahe = cv::createCLAHE(2.0, {8, 8});
  bench::Task task = prepare<T, T>([clahe](const cv::Mat& src, cv::Mat& dst) { clahe->apply(src, dst); });
  task.result = {};
  return task;
}

const bench::OpenCvPeer operations[] = {
    {"look-up table, 8u", prepareLut<uint8_t>},
    {"look-up table, 8u to 16u", prepareLut<uint16_t>},
    {"look-up table, 8u to 32f", prepareLut<float>},
    {"stretch, 16u to 8u",
     [] {
       return prepare<uint16_t, uint8_t>(
           [](const cv::Mat& src, cv::Mat& dst) { cv::normalize(src, dst, 0, 255, cv::NORM_MINMAX, CV_8U); });
     }},
    {"equalise, 8u",
     [] { return prepare<uint8_t, uint8_t>([](const cv::Mat& src, cv::Mat& dst) { cv::equalizeHist(src, dst); }); }},
    {"equalise by tiles, 8u", prepareClip<uint8_t>},
    {"equalise by tiles, 16u", prepareClip<uint16_t>},
};

}  // namespace
