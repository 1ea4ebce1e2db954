#include "daxi/distance_transform.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

bench::Task prepare(const Image<uint8_t>& from, int32_t metric) {
  const Image<float> to(kSize);
  uint64_t bytes = 0;
  bench::require(DAXI_DistanceTransformBufferSize_8u32f(kSize, metric, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  return {[=] {
    bench::require(DAXI_DistanceTransform_8u32f_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, metric,
                                                    buffer->data()));
  }};
}

// One clear pixel in the middle: distances to a thousand pixels.
Image<uint8_t> almostAllSet() {
  const Image<uint8_t> image(kSize);
  std::fill(image.pixels->begin(), image.pixels->end(), uint8_t{255});
  image.data()[image.bytes() / 2] = 0;
  return image;
}

constexpr size_t kBytes = 5 * bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"distances, blobs", kBytes, [] { return prepare(bench::smoothBlobMask(), DAXI_DISTANCE_L2); }},
    {"distances, one clear pixel", kBytes, [] { return prepare(almostAllSet(), DAXI_DISTANCE_L2); }},
    {"distances, blobs, city block", kBytes, [] { return prepare(bench::smoothBlobMask(), DAXI_DISTANCE_L1); }},
};

}  // namespace
