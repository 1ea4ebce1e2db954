#include "model/selection.h"

#include <array>
#include <limits>
#include <string>

#include "base/failure.h"
#include "base/library_call.h"

namespace dax::tool {
namespace {

struct CascadeStep {
  std::string_view name;  // of the option
  uint32_t flag;
};

// In the order in which the library tests.
constexpr std::array kCascade = {
    CascadeStep{"area", DAXI_BLOB_BY_AREA},
    CascadeStep{"rect-width", DAXI_BLOB_BY_RECT_WIDTH},
    CascadeStep{"rect-height", DAXI_BLOB_BY_RECT_HEIGHT},
    CascadeStep{"perimeter", DAXI_BLOB_BY_PERIMETER},
    CascadeStep{"circularity", DAXI_BLOB_BY_CIRCULARITY},
    CascadeStep{"short-axis", DAXI_BLOB_BY_SHORT_AXIS},
    CascadeStep{"long-axis", DAXI_BLOB_BY_LONG_AXIS},
    CascadeStep{"axis-ratio", DAXI_BLOB_BY_AXIS_RATIO},
    CascadeStep{"rectangularity", DAXI_BLOB_BY_RECTANGULARITY},
    CascadeStep{"central-bias", DAXI_BLOB_BY_CENTRAL_BIAS},
    CascadeStep{"box-angle", DAXI_BLOB_BY_BOX_ANGLE},
    CascadeStep{"outside-pixels", DAXI_BLOB_BY_OUTSIDE_PIXELS},
};

using Labels = std::vector<bool>;

Labels labelsOf(const std::vector<Blob>& blobs, size_t count) {
  Labels labels(count);
  for (const Blob& blob : blobs) labels[blob.label] = true;
  return labels;
}

// The first filter that rejects each blob; empty for those that pass all. Runs the library with one more filter each
// time, so that ranges, tolerances and features are those of the selection itself.
std::vector<std::string_view> firstRefusals(const Labelled& labelled, BlobSelectV4Cfg cfg, const Workers& workers) {
  const uint32_t active = cfg.common.flags;
  cfg.common.flags = 0;
  std::vector<std::string_view> refusals(_DAXI_DomainCount(&labelled.domains));
  for (const CascadeStep& step : kCascade) {
    if ((active & step.flag) == 0) continue;
    cfg.common.flags |= step.flag;
    const Labels passing = labelsOf(select(labelled, cfg, workers), refusals.size());
    for (size_t label = 0; label < refusals.size(); ++label) {
      if (refusals[label].empty() && !passing[label]) refusals[label] = step.name;
    }
  }
  return refusals;
}

// All blobs, with outside pixels counted if a filter uses them.
BlobSelectV4Cfg acceptingAll(BlobSelectV4Cfg cfg) {
  cfg.common.flags &= DAXI_BLOB_BY_OUTSIDE_PIXELS;
  cfg.common.outsideLimit = std::numeric_limits<int32_t>::max();
  return cfg;
}

}  // namespace

std::vector<Blob> select(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const Workers& workers) {
  const GreyImage& image = labelled.image;
  const DaxiDomainList& domains = labelled.domains;
  const auto domainCount = static_cast<int32_t>(_DAXI_DomainCount(&domains));
  if (domainCount == 0) return {};
  uint64_t bytes;
  check(DAXI_BlobSelectV3BufferSize_8u_MT(image.size, workers.count, &bytes), "selection");
  const Memory buffer(bytes);
  std::vector<BlobInfo> blobs(static_cast<size_t>(cfg.common.maxCount));
  BlobSelectResult result{blobs.data(), 0, nullptr};
  const auto run = [&](auto function, const auto& configuration) {
    check(function(image.pixels.data(), image.step(), image.pixels.data(), image.step(), image.size, &domains,
                   domainCount, &result, &configuration, buffer.get(), workers.count, workers.pool),
          "selection");
  };
  // Without classes the third version, whose ranges of area need not be integers.
  if (cfg.perClass != 0) {
    run(DAXI_BlobSelectV4_8u_C1R_MT, cfg);
  } else {
    run(DAXI_BlobSelectV3_8u_C1R_MT, cfg.common);
  }
  return {blobs.begin(), blobs.begin() + result.count};
}

std::vector<Rejection> findRejected(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const std::vector<Blob>& kept,
                                    const Workers& workers) {
  const uint32_t count = _DAXI_DomainCount(&labelled.domains);
  if (count > DAXI_BLOB_MAX_COUNT) {
    throw Failure(ExitStatus::kRefused, "--rejected tells of images of at most " + std::to_string(DAXI_BLOB_MAX_COUNT) +
                                            " regions; this one has " + std::to_string(count));
  }
  BlobSelectV4Cfg roomy = cfg;
  roomy.common.maxCount = DAXI_BLOB_MAX_COUNT;
  const Labels isKept = labelsOf(kept, count);
  const std::vector<std::string_view> refusals = firstRefusals(labelled, roomy, workers);
  std::vector<Rejection> rejected;
  for (const Blob& blob : select(labelled, acceptingAll(roomy), workers)) {
    if (isKept[blob.label]) continue;
    const std::string_view by = refusals[blob.label];
    rejected.push_back({blob, by.empty() ? kByCount : std::string(by)});
  }
  return rejected;
}

}  // namespace dax::tool
