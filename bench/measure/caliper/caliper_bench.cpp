#include "daxi/caliper.h"

#include <memory>

#include "bench/measure/caliper/caliper_boxes.h"
#include "bench/support/operation.h"
#include "daxi/caliper_pair.h"

namespace {

using bench::kBoxes;

constexpr int32_t kMax = 8;

template <class Cfg>
Cfg config(uint32_t projection) {
  Cfg cfg = {};
  cfg.projection = projection, cfg.polarity = DAXI_CALIPER_ANY, cfg.filterHalfWidth = 3;
  cfg.threshold = 10, cfg.scoreFlags = 1;
  cfg.contrast = {0, 0, 0, 100, 0, 1};
  return cfg;
}

template <class Record, class Result, class Cfg, class Detect>
bench::Task prepare(Cfg cfg, bool turned, Detect detect, uint64_t bytes) {
  const auto boxes = std::make_shared<std::vector<CaliperBox>>(bench::boxes(turned));
  const auto image = bench::boxedImage();
  const auto records = std::make_shared<std::vector<Record>>(static_cast<size_t>(kBoxes) * kMax);
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  return {[=] {
    std::vector<Result> results;
    for (int32_t i = 0; i < kBoxes; ++i) results.push_back({records->data() + i * kMax, nullptr, 0});
    bench::require(detect(image.data(), image.size.width, image.size, boxes->data(), kBoxes, &cfg, results.data(),
                          buffer->data(), 1, nullptr));
  }};
}

bench::Task prepareEdges(uint32_t projection, bool turned) {
  auto cfg = config<CaliperEdgeCfg>(projection);
  cfg.maxEdges = kMax;
  const std::vector<CaliperBox> boxes = bench::boxes(turned);
  uint64_t bytes = 0;
  bench::require(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes.data(), kBoxes, 1, &bytes));
  return prepare<CaliperEdge, CaliperEdgeResult>(cfg, turned, DAXI_CalipEdgeDetectV2_8u_C1R, bytes);
}

bench::Task preparePairs() {
  auto cfg = config<CaliperEdgePairCfg>(DAXI_CALIPER_VERTICAL);
  cfg.maxPairs = kMax;
  const std::vector<CaliperBox> boxes = bench::boxes(true);
  uint64_t bytes = 0;
  bench::require(DAXI_CalipEdgePairDetectV2BufferSize_8u(boxes.data(), kBoxes, 1, &bytes));
  return prepare<CaliperEdgePair, CaliperEdgePairResult>(cfg, true, DAXI_CalipEdgePairDetectV2_8u_C1R, bytes);
}

constexpr size_t kBytes = size_t{bench::kUsualBoxes} * bench::kBoxWidth * 4;

const bench::Own operations[] = {
    {"1000 calipers, 64 x 16, any direction", kBytes, [] { return prepareEdges(DAXI_CALIPER_VERTICAL, true); }},
    {"1000 calipers, 64 x 16, upright", kBytes, [] { return prepareEdges(DAXI_CALIPER_VERTICAL, false); }},
    {"1000 calipers, 64 x 16, across", kBytes, [] { return prepareEdges(DAXI_CALIPER_HORIZONTAL, true); }},
    {"1000 pair calipers, 64 x 16", kBytes, [] { return preparePairs(); }},
};

}  // namespace
