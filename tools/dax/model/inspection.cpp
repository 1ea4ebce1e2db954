#include "model/inspection.h"

#include <numeric>
#include <string>

#include "base/failure.h"
#include "base/library_call.h"
#include "daxi/threshold.h"
#include "model/filters.h"

namespace dax::tool {
namespace {

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

// Size queries and call of a labelling, of a mask or of an image of classes.
struct Labeller {
  DaxStatus (*modelSize)(DaxiSize size, int32_t connectivity, uint64_t* bytes);
  DaxStatus (*bufferSize)(DaxiSize size, int32_t connectivity, uint64_t* bytes);
  decltype(&DAXI_BlobFind_8u_C1R) find;
};

constexpr Labeller kOfMask{DAXI_BlobFindModelSize_8u, DAXI_BlobFindBufferSize_8u, DAXI_BlobFind_8u_C1R};
constexpr Labeller kByClass{
    [](DaxiSize size, int32_t, uint64_t* bytes) { return DAXI_BlobFindMultiClsModelSize_8u(size, bytes); },
    [](DaxiSize size, int32_t, uint64_t* bytes) { return DAXI_BlobFindMultiClsBufferSize_8u(size, bytes); },
    DAXI_BlobFindMultiCls_8u_C1R};

// A labelling and its memory.
class Labelling {
 public:
  Labelling(const GreyImage& image, int connectivity, const Labeller& labeller)
      : model_(ask(labeller.modelSize, image.size, connectivity)) {
    const Memory buffer(ask(labeller.bufferSize, image.size, connectivity));
    check(labeller.find(image.pixels.data(), image.step(), image.size, connectivity, model_.get(), &domains_,
                        buffer.get()),
          "labelling");
  }
  const DaxiDomainList& domains() const { return *domains_; }

 private:
  template <class Query>
  static uint64_t ask(Query query, DaxiSize size, int connectivity) {
    uint64_t bytes;
    check(query(size, connectivity, &bytes), "labelling");
    return bytes;
  }

  Memory model_;
  const DaxiDomainList* domains_ = nullptr;
};

Labelling label(const GreyImage& image, const InspectionSettings& settings, StageTimes& times, Inspection& result) {
  const int connectivity = settings.connectivity;
  if (settings.byClass) {
    return times.measure(Stage::kLabel, [&] { return Labelling(image, connectivity, kByClass); });
  }
  const GreyImage mask = times.measure(Stage::kThreshold, [&] { return threshold(image, settings.threshold, result); });
  return times.measure(Stage::kLabel, [&] { return Labelling(mask, connectivity, kOfMask); });
}

// The configuration with the mask of the settings, if any, which must cover the image.
BlobSelectV4Cfg withMask(const InspectionSettings& settings, DaxiSize size) {
  BlobSelectV4Cfg cfg = settings.select;
  const GreyImage* mask = settings.outsideMask.get();
  if (!mask) return cfg;
  if (mask->size.width != size.width || mask->size.height != size.height) {
    throw Failure(ExitStatus::kRefused, "--outside-mask is " + std::to_string(mask->size.width) + " x " +
                                            std::to_string(mask->size.height) + ", the image " +
                                            std::to_string(size.width) + " x " + std::to_string(size.height));
  }
  cfg.common.mask = mask->pixels.data();
  cfg.common.maskStep = mask->step();
  return cfg;
}

}  // namespace

double StageTimes::total() const {
  return std::accumulate(seconds_.begin(), seconds_.end(), 0.0);
}

void StageTimes::add(const StageTimes& other) {
  for (size_t i = 0; i < seconds_.size(); ++i) seconds_[i] += other.seconds_[i];
}

Inspection inspect(const GreyImage& image, const InspectionSettings& settings, const Workers& workers,
                   StageTimes& times) {
  Inspection result;
  result.size = image.size;
  result.scored = isScored(settings.select.common);
  const BlobSelectV4Cfg cfg = withMask(settings, image.size);
  const Labelling labelling = label(image, settings, times, result);
  const DaxiDomainList& domains = labelling.domains();
  result.regions = _DAXI_DomainCount(&domains);
  times.measure(Stage::kSelect, [&] {
    const Labelled labelled{image, domains};
    result.blobs = select(labelled, cfg, workers);
    if (settings.rejected) result.rejected = findRejected(labelled, cfg, result.blobs, workers);
  });
  if (settings.contours) {
    result.contours =
        times.measure(Stage::kDraw, [&] { return traceContours(domains, result.blobs, settings.connectivity); });
  }
  return result;
}

}  // namespace dax::tool
