#include "bench/image/warp/warp_bench.h"
#include "bench/support/opencv.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T>
bench::Task turned(int interpolation, int channels = 1) {
  const Image<T> from = bench::noise<T>({kSize.width * channels, kSize.height});
  const Image<T> to(from.size);
  double m[9];
  bench::turnBack(m);
  const cv::Mat matrix = cv::Mat(2, 3, CV_64F, m).clone();
  return {[=] {
            const cv::Mat source = bench::viewOf(from).reshape(channels);
            cv::Mat result = bench::viewOf(to).reshape(channels);
            cv::warpAffine(source, result, matrix, source.size(), interpolation | cv::WARP_INVERSE_MAP);
          },
          nullptr};  // rounds positions to 1/32 pixel
}

bench::Task tilted() {
  const Image<uint8_t> from = bench::noise<uint8_t>(), to(kSize);
  double m[9];
  bench::tiltBack(m);
  const cv::Mat matrix = cv::Mat(3, 3, CV_64F, m).clone();
  return {[=] {
            cv::Mat result = bench::viewOf(to);
            cv::warpPerspective(bench::viewOf(from), result, matrix, result.size(),
                                cv::INTER_LINEAR | cv::WARP_INVERSE_MAP);
          },
          nullptr};
}

template <bool isPrepared>
bench::Task remapped() {
  const Image<uint8_t> from = bench::noise<uint8_t>(), to(kSize);
  const Image<float> x = bench::turnMap(true), y = bench::turnMap(false);
  cv::Mat map, fractions;
  cv::convertMaps(bench::viewOf(x), bench::viewOf(y), map, fractions, CV_16SC2);
  return {[=] {
            cv::Mat result = bench::viewOf(to);
            if (isPrepared) {
              cv::remap(bench::viewOf(from), result, map, fractions, cv::INTER_LINEAR);
            } else {
              cv::remap(bench::viewOf(from), result, bench::viewOf(x), bench::viewOf(y), cv::INTER_LINEAR);
            }
          },
          nullptr};
}

// Its rows are angles.
bench::Task unrolled() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to({bench::kRing.height, bench::kRing.width});
  return {[=] {
            cv::Mat result = bench::viewOf(to);
            const cv::Point2f centre((kSize.width - 1) / 2.0f, (kSize.height - 1) / 2.0f);
            cv::warpPolar(bench::viewOf(from), result, result.size(), centre, kSize.height / 2.0, cv::INTER_LINEAR);
          },
          nullptr};
}

const bench::OpenCvPeer operations[] = {
    {"warp by an affine matrix, nearest, 8u", [] { return turned<uint8_t>(cv::INTER_NEAREST); }},
    {"warp by an affine matrix, linear, 8u", [] { return turned<uint8_t>(cv::INTER_LINEAR); }},
    {"warp by an affine matrix, cubic, 8u", [] { return turned<uint8_t>(cv::INTER_CUBIC); }},
    {"warp by an affine matrix, Lanczos, 8u", [] { return turned<uint8_t>(cv::INTER_LANCZOS4); }},
    {"warp by an affine matrix, linear, 8u, colour", [] { return turned<uint8_t>(cv::INTER_LINEAR, 3); }},
    {"warp by an affine matrix, linear, 16u", [] { return turned<uint16_t>(cv::INTER_LINEAR); }},
    {"warp by an affine matrix, linear, 32f", [] { return turned<float>(cv::INTER_LINEAR); }},
    {"warp by a homography, linear, 8u", tilted},
    {"remap, linear, 8u", remapped<false>},
    {"remap by a prepared map, linear, 8u", remapped<true>},
    {"polar image, linear, 8u", unrolled},
};

}  // namespace
