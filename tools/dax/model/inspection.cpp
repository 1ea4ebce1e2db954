#include "model/inspection.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/library_call.h"
#include "daxi/hist_level.h"
#include "daxi/histogram.h"
#include "daxi/threshold.h"
#include "model/filters.h"
#include "model/threshold_method.h"

namespace dax::tool {
namespace {

// Levels that the user gave, and that every picture has: a picture of 8 bits holds none above 255.
void requireLevels(const Picture& picture, const DaxiThresholdBinCfg& cfg) {
  const int open = cfg.method == DAXI_THRESHOLD_BAND && cfg.t2 == 65535 ? 0 : static_cast<int>(cfg.t2);
  const int largest = std::max({static_cast<int>(cfg.t1), open, cfg.softLow, cfg.softHigh});
  if (largest <= picture.maxValue) return;
  throw Failure(ExitStatus::kUsage, "--threshold: " + std::to_string(largest) + " is not a grey level 0.." +
                                        std::to_string(picture.maxValue) + " of this picture");
}

// A level or a band by the picture's own values; the library compares 8 bits only.
GreyImage thresholdByValue(const Picture& picture, DaxiThresholdBinCfg cfg, Inspection& result) {
  const bool isBand = cfg.method == DAXI_THRESHOLD_BAND;
  result.low = static_cast<int>(cfg.t1);
  result.high = isBand ? std::min(static_cast<int>(cfg.t2), picture.maxValue) : result.low;
  const int last = isBand ? result.high : picture.maxValue;
  GreyImage mask = makeGreyImage(picture.grey.size);
  std::transform(picture.values.pixels.begin(), picture.values.pixels.end(), mask.pixels.begin(),
                 [&](int v) { return static_cast<uint8_t>(v >= result.low && v <= last ? 255 : 0); });
  return mask;
}

// Of the picture's own values. Those beyond stated levels count at the levels.
int otsuLevel(const Picture& picture) {
  const Grey16Image& image = picture.values;
  const auto [low, high] = picture.levels.value_or(Levels{0, picture.maxValue});
  const int bins = high - low + 1;
  std::vector<uint64_t> counts(static_cast<size_t>(bins));
  DaxiHistogramOutside outside;
  uint64_t bytes = 0;
  check(DAXI_HistogramEvenBufferSize_16u(bins, &bytes), "threshold");
  const Memory buffer(bytes);
  check(DAXI_HistogramEven_16u_C1R(image.pixels.data(), image.step(), image.size, bins, low, high + 1, counts.data(),
                                   &outside, buffer.get()),
        "threshold");
  counts.front() += outside.below;
  counts.back() += outside.above;
  DaxiHistLevelCfg cfg;
  DaxiHistLevel level;
  check(DAXI_HistLevelDefaultCfg(&cfg), "threshold");
  check(DAXI_HistLevel_Otsu(counts.data(), bins, &cfg, &level), "threshold");
  return low + level.level[0];
}

GreyImage thresholdByOtsu(const Picture& picture, Inspection& result) {
  result.low = result.high = otsuLevel(picture);
  GreyImage mask = makeGreyImage(picture.grey.size);
  std::transform(picture.values.pixels.begin(), picture.values.pixels.end(), mask.pixels.begin(),
                 [&](int v) { return static_cast<uint8_t>(v <= result.low ? 255 : 0); });
  return mask;
}

GreyImage thresholdByLevel(const Picture& picture, DaxiThresholdBinCfg cfg, Inspection& result) {
  const auto toGrey = [&](int value) {
    int level = 0;
    while (level < 255 && picture.valueOf(level) < value) ++level;
    return level;
  };
  cfg.t2 = std::min(cfg.t2, 255U);
  cfg.softLow = toGrey(cfg.softLow);
  cfg.softHigh = toGrey(cfg.softHigh);
  const GreyImage& image = picture.grey;
  GreyImage mask = makeGreyImage(image.size);
  uint8_t low = 0, high = 0;
  check(DAXI_ThresholdBinV2_8u_C1R(image.pixels.data(), image.step(), mask.pixels.data(), mask.step(), image.size, &cfg,
                                   &low, &high),
        "threshold");
  result.low = picture.valueOf(low);
  result.high = picture.valueOf(high);
  return mask;
}

GreyImage maskOf(const Picture& picture, const DaxiThresholdBinCfg& cfg, Inspection& result) {
  const bool isByValue = cfg.method == DAXI_THRESHOLD_SINGLE || cfg.method == DAXI_THRESHOLD_BAND;
  if (picture.hasValues() && isByValue) return thresholdByValue(picture, cfg, result);
  if (picture.hasValues() && cfg.method == DAXI_THRESHOLD_OTSU) return thresholdByOtsu(picture, result);
  return thresholdByLevel(picture, cfg, result);
}

GreyImage threshold(const Picture& picture, const Threshold& option, Inspection& result) {
  if (option.method) {
    MethodMask found = applyThresholdMethod(*option.method, picture, option.dark);
    if (!found.levels.empty()) result.low = found.levels.front(), result.high = found.levels.back();
    if (!found.note.empty()) result.note += (result.note.empty() ? "" : "; ") + found.note;
    return std::move(found.mask);
  }
  requireLevels(picture, option.cfg);
  GreyImage mask = maskOf(picture, option.cfg, result);
  if (option.invert) {
    for (uint8_t& pixel : mask.pixels) pixel = static_cast<uint8_t>(255 - pixel);
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

Labelling label(const Picture& picture, const InspectionSettings& settings, StageTimes& times, Inspection& result) {
  const int connectivity = settings.connectivity;
  if (settings.byClass) {
    return times.measure(Stage::kLabel, [&] { return Labelling(picture.grey, connectivity, kByClass); });
  }
  const GreyImage mask =
      times.measure(Stage::kThreshold, [&] { return threshold(picture, settings.threshold, result); });
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

namespace {

template <class Pixel>
PixelImage<Pixel> cropped(const PixelImage<Pixel>& image, const DaxiRect& part) {
  auto result = makeImage<Pixel>({part.width, part.height});
  for (int32_t y = 0; y < part.height; ++y) std::copy_n(image.row(part.y + y) + part.x, part.width, result.row(y));
  return result;
}

void move(BlobInfo& blob, const DaxiRect& by) {
  const auto x = static_cast<float>(by.x), y = static_cast<float>(by.y);
  blob.centroidX += x;
  blob.centroidY += y;
  blob.boxX += x;
  blob.boxY += y;
  blob.rectX += by.x;
  blob.rectY += by.y;
}

// From places in the region of interest to places in the picture.
void moveBack(Inspection& inspection, const DaxiRect& roi, DaxiSize size) {
  inspection.size = size;
  for (Blob& blob : inspection.blobs) move(blob, roi);
  for (Rejection& each : inspection.rejected) move(each.blob, roi);
  for (Contour& contour : inspection.contours) {
    for (Point& point : contour) {
      point.x += static_cast<float>(roi.x);
      point.y += static_cast<float>(roi.y);
    }
  }
}

// The first range that a blob lies outside of; null: none. By the values that the outputs show.
const ShapeFeature* refusingShape(const Blob& blob, const InspectionSettings& settings) {
  for (const auto& [feature, range] : settings.shapeRanges) {
    const float value = valueOf(feature->feature, blob, settings.mmPerPixel);
    if (range.min && value < static_cast<float>(*range.min)) return feature;
    if (range.max && value > static_cast<float>(*range.max)) return feature;
  }
  return nullptr;
}

// The best first; of equal ones the order of the selection.
void rank(std::vector<Blob>& blobs, const Feature& feature, bool isAscending) {
  std::stable_sort(blobs.begin(), blobs.end(), [&](const Blob& a, const Blob& b) {
    return isAscending ? feature.value(a) < feature.value(b) : feature.value(a) > feature.value(b);
  });
}

// Ranges and order that the library's selection does not know come after it: it must then keep every blob.
std::vector<Blob> selectAll(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const Workers& workers) {
  BlobSelectV4Cfg roomy = cfg;
  BlobSelectCfg& common = roomy.common;
  common.maxCount = DAXI_BLOB_MAX_COUNT;
  if (common.sortOrder == DAXI_BLOB_UNSORTED) {  // which ranks by area, too
    common.sortOrder = DAXI_BLOB_DESCENDING;
    common.sortKey = DAXI_BLOB_KEY_AREA;
  }
  std::vector<Blob> blobs = select(labelled, roomy, workers);
  if (blobs.size() == DAXI_BLOB_MAX_COUNT && _DAXI_DomainCount(&labelled.domains) > DAXI_BLOB_MAX_COUNT) {
    throw Failure(ExitStatus::kRefused, "more than " + std::to_string(DAXI_BLOB_MAX_COUNT) +
                                            " objects for a range or order by shape or score: narrow them by --area");
  }
  return blobs;
}

// Ranges of shape, order, and the maximum number.
void keepBest(std::vector<Blob>& blobs, const InspectionSettings& settings) {
  const BlobSelectCfg& cfg = settings.select.common;
  std::erase_if(blobs, [&](const Blob& blob) { return refusingShape(blob, settings) != nullptr; });
  if (settings.ranking) rank(blobs, *settings.ranking, cfg.sortOrder == DAXI_BLOB_ASCENDING);
  const size_t count = std::min(blobs.size(), static_cast<size_t>(cfg.maxCount));
  blobs.erase(blobs.begin() + static_cast<ptrdiff_t>(count), blobs.end());
}

std::vector<Blob> selectBest(const Picture& picture, const DaxiDomainList& domains, const InspectionSettings& settings,
                             const BlobSelectV4Cfg& cfg, const Workers& workers) {
  const bool isAll = settings.ranking || !settings.shapeRanges.empty();
  std::vector<Blob> blobs = (isAll ? selectAll : select)({picture.grey, domains}, cfg, workers);
  if (settings.shape) measureShapes(picture, domains, settings.connectivity, blobs);
  if (isAll) keepBest(blobs, settings);
  if (cfg.common.sortOrder == DAXI_BLOB_UNSORTED) {
    std::sort(blobs.begin(), blobs.end(), [](const Blob& a, const Blob& b) { return a.label < b.label; });
  }
  return blobs;
}

std::vector<Rejection> rejectedOf(const Picture& picture, const DaxiDomainList& domains,
                                  const InspectionSettings& settings, const BlobSelectV4Cfg& cfg,
                                  const std::vector<Blob>& kept, const Workers& workers) {
  std::vector<Rejection> rejected = findRejected({picture.grey, domains}, cfg, kept, workers);
  if (!settings.shape) return rejected;
  std::vector<Blob> blobs;
  blobs.reserve(rejected.size());
  for (const Rejection& each : rejected) blobs.push_back(each.blob);
  measureShapes(picture, domains, settings.connectivity, blobs);
  for (size_t i = 0; i < blobs.size(); ++i) {
    rejected[i].blob = blobs[i];
    const ShapeFeature* by = refusingShape(blobs[i], settings);
    if (by && rejected[i].by == kByCount) rejected[i].by = by->feature.option();
  }
  return rejected;
}

bool isWithin(size_t count, const OpenRange& range) {
  const auto number = static_cast<double>(count);
  return number >= range.min.value_or(0) && number <= range.max.value_or(number);
}

Inspection inspectRegion(const Picture& picture, const InspectionSettings& settings, const Workers& workers,
                         StageTimes& times);

Inspection inspectRoi(const Picture& picture, const InspectionSettings& settings, const Workers& workers,
                      StageTimes& times) {
  const DaxiRect& roi = *settings.roi;
  const auto [width, height] = picture.grey.size;
  if (roi.x > width - roi.width || roi.y > height - roi.height) {
    throw Failure(ExitStatus::kRefused,
                  "--roi reaches beyond the picture of " + std::to_string(width) + " x " + std::to_string(height));
  }
  Picture part = picture;
  part.grey = cropped(picture.grey, roi);
  if (picture.hasValues()) part.values = cropped(picture.values, roi);
  InspectionSettings inside = settings;
  if (settings.outsideMask) {
    (void)withMask(settings, picture.grey.size);
    inside.outsideMask = std::make_shared<const GreyImage>(cropped(*settings.outsideMask, roi));
  }
  Inspection result = inspectRegion(part, inside, workers, times);
  moveBack(result, roi, picture.grey.size);
  return result;
}

}  // namespace

Inspection inspect(const Picture& picture, const InspectionSettings& settings, const Workers& workers,
                   StageTimes& times) {
  Inspection result = (settings.roi ? inspectRoi : inspectRegion)(picture, settings, workers, times);
  result.met = !settings.expected || isWithin(result.blobs.size(), *settings.expected);
  return result;
}

namespace {

Inspection inspectRegion(const Picture& picture, const InspectionSettings& settings, const Workers& workers,
                         StageTimes& times) {
  const GreyImage& image = picture.grey;
  Inspection result;
  result.size = image.size;
  result.depth = picture.depth();
  result.levels = picture.levels;
  result.note = picture.note();
  result.scored = isScored(settings.select.common);
  const BlobSelectV4Cfg cfg = withMask(settings, image.size);
  const Labelling labelling = label(picture, settings, times, result);
  const DaxiDomainList& domains = labelling.domains();
  result.regions = _DAXI_DomainCount(&domains);
  times.measure(Stage::kSelect, [&] {
    result.blobs = selectBest(picture, domains, settings, cfg, workers);
    if (settings.rejected) result.rejected = rejectedOf(picture, domains, settings, cfg, result.blobs, workers);
  });
  if (settings.contours) {
    std::vector<const DaxiDomain*> shown;
    for (const Blob& blob : result.blobs) shown.push_back(blob.domain);
    result.contours = times.measure(Stage::kDraw, [&] { return traceContours(domains, shown, settings.connectivity); });
  }
  return result;
}

}  // namespace
}  // namespace dax::tool
