#include "daxi/flat_morphology.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

// A disc.
Image<uint8_t> discOf(int32_t side) {
  const Image<uint8_t> disc({side, side});
  for (int32_t i = 0; i < side * side; ++i) {
    const int32_t x = 2 * (i % side) + 1 - side, y = 2 * (i / side) + 1 - side;
    disc.data()[i] = x * x + y * y <= side * side;
  }
  return disc;
}

bench::Task prepareDisc(int32_t side) {
  const Image<uint8_t> from = bench::noise<uint8_t>(), disc = discOf(side);
  const Image<uint8_t> to(kSize);
  DaxiFlatMaskCfg cfg;
  bench::require(DAXI_FlatMaskDefaultCfg(&cfg));
  uint64_t bytes = 0;
  bench::require(DAXI_GrayErodeMaskBufferSize_8u(kSize, disc.data(), side, disc.size, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  return {[=] {
            bench::require(DAXI_GrayErodeMask_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize,
                                                     disc.data(), side, disc.size, &cfg, buffer->data()));
          },
          [=] { return bench::digest(to); }};
}

bench::Task prepareLine(int32_t dx, int32_t dy) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(kSize);
  const DaxiFlatLineCfg cfg = {dx, dy, -1, DAXI_BORDER_CLIP, 0};
  uint64_t bytes = 0;
  bench::require(DAXI_GrayErodeLineBufferSize_8u(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  return {[=] {
    bench::require(
        DAXI_GrayErodeLine_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data()));
  }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"erosion by a disc of 15 x 15", kBytes, [] { return prepareDisc(15); }},
    {"erosion by a disc of 61 x 61", kBytes, [] { return prepareDisc(61); }},
    {"erosion by a line of 31 pixels, 45 degrees", kBytes, [] { return prepareLine(30, 30); }},
    {"erosion by a line of 31 pixels, 20 degrees", kBytes, [] { return prepareLine(30, 11); }},
};

}  // namespace
