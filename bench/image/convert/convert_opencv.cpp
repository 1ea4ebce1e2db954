#include "bench/support/opencv.h"

namespace {

using bench::Image;

// The peer calculates in single precision, so the same result is claimed where that is enough.
template <class From, class To>
std::function<bench::Task()> scaled(double scale, double offset) {
  return [=]() -> bench::Task {
    const Image<From> from = bench::noise<From>();
    const Image<To> to(bench::kSize);
    const auto convert = [=] {
      cv::Mat dst = bench::viewOf(to);
      bench::viewOf(from).convertTo(dst, cv::traits::Type<To>::value, scale, offset);
    };
    if (static_cast<float>(scale) != scale) return {convert, {}};
    return {convert, [=] { return bench::digest(to); }};
  };
}

const bench::OpenCvPeer operations[] = {
    {"8u to 16u", scaled<uint8_t, uint16_t>(1, 0)},
    {"8u to 32f", scaled<uint8_t, float>(1, 0)},
    {"16u to 8u", scaled<uint16_t, uint8_t>(1, 0)},
    {"16u to 32f", scaled<uint16_t, float>(1, 0)},
    {"16s to 8u", scaled<int16_t, uint8_t>(1, 0)},
    {"32f to 8u", scaled<float, uint8_t>(1, 0)},
    {"32f to 16u", scaled<float, uint16_t>(1, 0)},
    {"8u to 32f, scaled by 1/255", scaled<uint8_t, float>(1 / 255.0, 0)},
    {"8u to 16s, scaled", scaled<uint8_t, int16_t>(1.7, -200)},
    {"16u to 8u, scaled by 1/16", scaled<uint16_t, uint8_t>(1 / 16.0, 0)},
    {"16u to 8u, scaled by 0.3", scaled<uint16_t, uint8_t>(0.3, 0)},
    {"16u to 32f, scaled by 0.3", scaled<uint16_t, float>(0.3, 0)},
    {"32f to 8u, scaled by 0.3", scaled<float, uint8_t>(0.3, 0)},
    {"16u to 8u, full range", scaled<uint16_t, uint8_t>(1 / 257.0, 0)},
    {"8u to 16u, full range", scaled<uint8_t, uint16_t>(257, 0)},
    {"8u to 32f, full range", scaled<uint8_t, float>(1 / 255.0, 0)},
    {"32f to 8u, full range", scaled<float, uint8_t>(255, 0)},
};

}  // namespace
