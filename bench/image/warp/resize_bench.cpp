#include "daxi/resize.h"

#include "bench/image/warp/resize_bench.h"
#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

bench::Task prepare(double factor, int32_t interpolation) {
  const DaxiSize to = bench::scaledSize(factor);
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> result(to);
  DaxiResizeCfg cfg;
  bench::require(DAXI_ResizeDefaultCfg(&cfg));
  cfg.antialias = 0, cfg.interpolation = interpolation;
  const DaxiRect all = {0, 0, to.width, to.height};
  uint64_t bytes = 0;
  bench::require(DAXI_ResizeBufferSize_8u_C1R(kSize, to, all, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] {
            bench::require(DAXI_Resize_8u_C1R(from.data(), kSize.width, kSize, result.data(), to.width, to, all, &cfg,
                                              buffer->data()));
          },
          [=] { return bench::digest(result); }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"resize by 0.37, linear, 8u", kBytes, [] { return prepare(0.37, DAXI_INTERPOLATION_LINEAR); }},
    {"resize by 0.5, linear, 8u", kBytes, [] { return prepare(0.5, DAXI_INTERPOLATION_LINEAR); }},
    {"resize by 2.5, linear, 8u", kBytes, [] { return prepare(2.5, DAXI_INTERPOLATION_LINEAR); }},
    {"resize by 2.5, nearest, 8u", kBytes, [] { return prepare(2.5, DAXI_INTERPOLATION_NEAREST); }},
    {"resize by 2.5, cubic, 8u", kBytes, [] { return prepare(2.5, DAXI_INTERPOLATION_CUBIC); }},
    {"resize by 2.5, Lanczos, 8u", kBytes, [] { return prepare(2.5, DAXI_INTERPOLATION_LANCZOS3); }},
    {"resize by 0.37, area, 8u", kBytes, [] { return prepare(0.37, DAXI_INTERPOLATION_AREA); }},
};

}  // namespace
