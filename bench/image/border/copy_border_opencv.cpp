#include "bench/image/border/copy_border_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;
using bench::kBorder;

template <class T>
bench::Task prepare(int borderType) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(bench::kBorderedSize);
  return {[=] {
            cv::Mat dst = bench::viewOf(to);
            cv::copyMakeBorder(bench::viewOf(from), dst, kBorder, kBorder, kBorder, kBorder, borderType,
                               cv::Scalar::all(bench::kBorderValue));
          },
          [=] { return bench::digest(to); }};
}

const bench::OpenCvPeer operations[] = {
    {"replicate border of 16, 8u", [] { return prepare<uint8_t>(cv::BORDER_REPLICATE); }},
    {"replicate border of 16, 32f", [] { return prepare<float>(cv::BORDER_REPLICATE); }},
    {"mirror border of 16, 8u", [] { return prepare<uint8_t>(cv::BORDER_REFLECT_101); }},
    {"symmetric border of 16, 8u", [] { return prepare<uint8_t>(cv::BORDER_REFLECT); }},
    {"circular border of 16, 8u", [] { return prepare<uint8_t>(cv::BORDER_WRAP); }},
    {"constant border of 16, 8u", [] { return prepare<uint8_t>(cv::BORDER_CONSTANT); }},
};

}  // namespace
