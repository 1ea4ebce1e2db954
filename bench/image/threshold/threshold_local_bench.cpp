#include "daxi/threshold_local.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T, class Query, class Defaults, class Threshold>
bench::Task prepare(Defaults defaults, Query query, Threshold threshold, int32_t method, int32_t side, double k,
                    double offset) {
  DaxiThresholdLocalCfg cfg;
  bench::require(defaults(method, &cfg));
  cfg.window = {side, side}, cfg.border = DAXI_BORDER_REPLICATE, cfg.k = k, cfg.offset = offset;
  uint64_t bytes = 0;
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<T> from = bench::noise<T>();
  const Image<uint8_t> to(kSize);
  return {[=] {
    bench::require(threshold(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data()));
  }};
}

template <int32_t method, int32_t side>
bench::Task onBytes() {
  return prepare<uint8_t>(DAXI_ThresholdLocalDefaultCfg_8u, DAXI_ThresholdLocalBufferSize_8u,
                          DAXI_ThresholdLocal_8u_C1R, method, side, 0.2, 0);
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"local threshold by the mean, 15 x 15, 8u", kBytes, onBytes<DAXI_LOCAL_MEAN, 15>},
    {"local threshold by the mean, 51 x 51, 8u", kBytes, onBytes<DAXI_LOCAL_MEAN, 51>},
    {"local threshold by the mean, 255 x 255, 8u", kBytes, onBytes<DAXI_LOCAL_MEAN, 255>},
    {"local threshold by a Gaussian mean, 15 x 15, 8u", kBytes, onBytes<DAXI_LOCAL_GAUSS, 15>},
    {"local threshold by a Gaussian mean, 51 x 51, 8u", kBytes, onBytes<DAXI_LOCAL_GAUSS, 51>},
    {"Sauvola's threshold, 15 x 15, 8u", kBytes, onBytes<DAXI_LOCAL_SAUVOLA, 15>},
    {"Sauvola's threshold, 51 x 51, 8u", kBytes, onBytes<DAXI_LOCAL_SAUVOLA, 51>},
    {"Sauvola's threshold, 255 x 255, 8u", kBytes, onBytes<DAXI_LOCAL_SAUVOLA, 255>},
    {"Niblack's threshold, 31 x 31, 8u", kBytes, onBytes<DAXI_LOCAL_NIBLACK, 31>},
    {"Wolf's threshold, 31 x 31, 8u", kBytes, onBytes<DAXI_LOCAL_WOLF, 31>},
    {"Bernsen's threshold, 31 x 31, 8u", kBytes, onBytes<DAXI_LOCAL_BERNSEN, 31>},
    {"Sauvola's threshold, 31 x 31, 16u", 2 * kBytes,
     [] {
       return prepare<uint16_t>(DAXI_ThresholdLocalDefaultCfg_16u, DAXI_ThresholdLocalBufferSize_16u8u,
                                DAXI_ThresholdLocal_16u8u_C1R, DAXI_LOCAL_SAUVOLA, 31, 0.2, 0);
     }},
    {"Sauvola's threshold, 31 x 31, 32f", 4 * kBytes,
     [] {
       return prepare<float>(DAXI_ThresholdLocalDefaultCfg_32f, DAXI_ThresholdLocalBufferSize_32f8u,
                             DAXI_ThresholdLocal_32f8u_C1R, DAXI_LOCAL_SAUVOLA, 31, 0.2, 0);
     }},
};

}  // namespace
