#include "inspection.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <numeric>
#include <string>

#include "daxi/threshold.h"
#include "failure.h"
#include "filters.h"

namespace dax::tool {
namespace {

void check(DaxStatus status, const char* step) {
  if (status == DAX_STS_OK) return;
  char code[16];
  std::snprintf(code, sizeof code, "0x%08x", status);
  throw Failure(ExitStatus::kRefused, std::string(step) + " refused: " + DAX_GetStatusText(status) + " (" + code + ")");
}

// Memory that a size query asked for. Left uninitialised: of the worst case that it provides for, little is touched.
class Memory {
 public:
  explicit Memory(uint64_t bytes) : block_(std::malloc(bytes == 0 ? 1 : bytes)) {
    if (!block_) throw std::bad_alloc();
  }
  void* get() const { return block_.get(); }

 private:
  struct Free {
    void operator()(void* block) const { std::free(block); }
  };
  std::unique_ptr<void, Free> block_;
};

GreyImage threshold(const GreyImage& image, const Threshold& option, Inspection& result) {
  GreyImage mask = makeGreyImage(image.size);
  check(DAXI_ThresholdBinV2_8u_C1R(image.pixels.data(), image.step(), mask.pixels.data(), mask.step(), image.size,
                                   &option.cfg, &result.low, &result.high),
        "threshold");
  if (option.invert) {
    check(DAXI_ThresholdBin_0to255_8u_C1R_NEON(mask.pixels.data(), mask.step(), mask.pixels.data(), mask.step(),
                                               mask.size),
          "inversion");
  }
  return mask;
}

// A labelling and the memory that it lives in.
class Labelling {
 public:
  Labelling(const GreyImage& mask, int connectivity) : model_(modelSize(mask.size, connectivity)) {
    uint64_t bytes;
    check(DAXI_BlobFindBufferSize_8u(mask.size, connectivity, &bytes), "labelling");
    const Memory buffer(bytes);
    check(DAXI_BlobFind_8u_C1R(mask.pixels.data(), mask.step(), mask.size, connectivity, model_.get(), &domains_,
                               buffer.get()),
          "labelling");
  }
  const DaxiDomainList& domains() const { return *domains_; }

 private:
  static uint64_t modelSize(DaxiSize size, int connectivity) {
    uint64_t bytes;
    check(DAXI_BlobFindModelSize_8u(size, connectivity, &bytes), "labelling");
    return bytes;
  }

  Memory model_;
  const DaxiDomainList* domains_ = nullptr;
};

std::vector<BlobInfo> select(const GreyImage& image, const DaxiDomainList& domains, const BlobSelectCfg& cfg) {
  if (_DAXI_DomainCount(&domains) == 0) return {};
  uint64_t bytes;
  check(DAXI_BlobSelectBufferSize_8u(image.size, &bytes), "selection");
  const Memory buffer(bytes);
  std::vector<BlobInfo> blobs(static_cast<size_t>(cfg.maxCount));
  BlobSelectResult result{blobs.data(), 0, nullptr};
  check(
      DAXI_BlobSelect_8u_C1R(image.pixels.data(), image.step(), image.pixels.data(), image.step(), image.size, &domains,
                             static_cast<int32_t>(_DAXI_DomainCount(&domains)), &result, &cfg, buffer.get()),
      "selection");
  return {blobs.begin(), blobs.begin() + result.count};
}

}  // namespace

double StageTimes::total() const {
  return std::accumulate(seconds_.begin(), seconds_.end(), 0.0);
}

void StageTimes::add(const StageTimes& other) {
  for (size_t i = 0; i < seconds_.size(); ++i) seconds_[i] += other.seconds_[i];
}

Inspection inspect(const GreyImage& image, const InspectionSettings& settings, StageTimes& times) {
  Inspection result;
  result.size = image.size;
  result.scored = isScored(settings.select);
  const GreyImage mask = times.measure(Stage::kThreshold, [&] { return threshold(image, settings.threshold, result); });
  const Labelling labelling = times.measure(Stage::kLabel, [&] { return Labelling(mask, settings.connectivity); });
  const DaxiDomainList& domains = labelling.domains();
  result.regions = _DAXI_DomainCount(&domains);
  result.blobs = times.measure(Stage::kSelect, [&] { return select(image, domains, settings.select); });
  if (settings.contours) {
    result.contours =
        times.measure(Stage::kDraw, [&] { return traceContours(domains, result.blobs, settings.connectivity); });
  }
  return result;
}

}  // namespace dax::tool
