#include "inspector.h"

#include <cstring>
#include <limits>

namespace live {

namespace {

void check(DaxStatus status, const char* step) {
  if (status != DAX_STS_OK) throw InspectionError(std::string(step) + ": " + DAX_GetStatusText(status));
}

}  // namespace

Inspector::Inspector(uint32_t threads, float minArea, int32_t maxCount)
    : pool_(DAXHOST_CreatePool(threads), DAXHOST_DestroyPool), threads_(DAX_THREADPOOL_GetThreadsCnt(pool_.get())) {
  if (!pool_) throw InspectionError("cannot create the thread pool");
  cfg_.maxCount = maxCount;
  cfg_.flags = DAXI_BLOB_BY_AREA;
  cfg_.area = {minArea, std::numeric_limits<float>::max()};
  cfg_.sortOrder = DAXI_BLOB_DESCENDING;
  cfg_.sortKey = DAXI_BLOB_KEY_AREA;
  room_.resize(static_cast<size_t>(maxCount));
}

Inspector::~Inspector() {
  DAXI_BlobFindV3DestroyModel_8u(&model_);
}

void Inspector::reserve(DaxiSize size) {
  if (size.width == size_.width && size.height == size_.height) return;
  uint64_t bytes = 0;
  check(DAXI_BlobSelectBufferSize_8u_MT(size, threads_, &bytes), "frame size");
  buffer_ = std::make_unique_for_overwrite<char[]>(bytes);
  mask_.resize(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
  size_ = size;
}

const std::vector<BlobInfo>& Inspector::inspect(const Frame& frame) {
  const DaxiSize size = {frame.width, frame.height};
  reserve(size);
  for (int32_t y = 0; y < size.height; ++y) {
    std::memcpy(mask_.data() + size_t(y) * size_t(size.width), frame.pixels + ptrdiff_t{y} * frame.step,
                size_t(size.width));
  }
  // In place: foreground is strictly above the level. The other form includes the level itself, which in an image of
  // two grey values is the background.
  check(DAXI_AdpThresholdOtsu_8u_C1IR(mask_.data(), size.width, size), "threshold");
  const DaxiDomainList* domains = nullptr;
  check(DAXI_BlobFindV3_8u_C1IR(mask_.data(), size.width, size, 8, &model_, &domains), "labelling");

  BlobSelectResult result = {room_.data(), 0, nullptr};
  if (const uint32_t count = _DAXI_DomainCount(domains); count > 0) {
    check(DAXI_BlobSelect_8u_C1R_MT(frame.pixels, frame.step, frame.pixels, frame.step, size, domains,
                                    static_cast<int32_t>(count), &result, &cfg_, buffer_.get(), threads_, pool_.get()),
          "selection");
  }
  found_.assign(room_.begin(), room_.begin() + result.count);
  return found_;
}

}  // namespace live
