#include <limits>
#include <memory>
#include <vector>

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/blob_find.h"
#include "daxi/blob_select.h"

namespace {

using bench::Image;
using bench::kSize;
using MakeMask = Image<uint8_t> (*)(DaxiSize);

using Memory = std::unique_ptr<uint8_t[]>;

// Memory of the size that `query` tells. Like a caller's, it has not been written before.
template <class Query>
Memory allocate(Query query) {
  uint64_t bytes = 0;
  bench::require(query(&bytes));
  return Memory(new uint8_t[bytes]);
}

// A mask, and all the memory that labelling and selection want.
struct Blobs {
  explicit Blobs(const Image<uint8_t>& image)
      : mask(image),
        model(allocate([](uint64_t* bytes) { return DAXI_BlobFindModelSize_8u(kSize, 8, bytes); })),
        findBuffer(allocate([](uint64_t* bytes) { return DAXI_BlobFindBufferSize_8u(kSize, 8, bytes); })),
        selectBuffer(allocate([](uint64_t* bytes) { return DAXI_BlobSelectBufferSize_8u(kSize, bytes); })),
        kept(DAXI_BLOB_MAX_COUNT) {}

  void find() {
    bench::require(DAXI_BlobFind_8u_C1R(mask.data(), kSize.width, kSize, 8, model.get(), &domains, findBuffer.get()));
  }

  void select(const BlobSelectCfg& cfg) {
    BlobSelectResult result{kept.data(), 0, nullptr};
    bench::require(DAXI_BlobSelect_8u_C1R(mask.data(), kSize.width, mask.data(), kSize.width, kSize, domains,
                                          static_cast<int32_t>(domains->domainCount), &result, &cfg,
                                          selectBuffer.get()));
  }

  Image<uint8_t> mask;
  Memory model;
  Memory findBuffer;
  Memory selectBuffer;
  std::vector<BlobInfo> kept;
  const DaxiDomainList* domains = nullptr;
};

// All features of all blobs, largest first.
BlobSelectCfg allFeatures() {
  BlobSelectCfg cfg{};
  cfg.maxCount = DAXI_BLOB_MAX_COUNT;
  cfg.sortOrder = DAXI_BLOB_DESCENDING;
  cfg.sortKey = DAXI_BLOB_KEY_AREA;
  return cfg;
}

// The basic features of all blobs: each one passes the area filter, and only the single one kept gets further features,
// the smallest.
BlobSelectCfg basicFeatures() {
  BlobSelectCfg cfg = allFeatures();
  cfg.maxCount = 1;
  cfg.sortOrder = DAXI_BLOB_ASCENDING;
  cfg.flags = DAXI_BLOB_BY_AREA;
  cfg.area = {0, std::numeric_limits<float>::max()};
  return cfg;
}

bench::Task prepareFind(MakeMask makeMask) {
  auto blobs = std::make_shared<Blobs>(makeMask(kSize));
  return {[blobs] { blobs->find(); }, [blobs] { return uint64_t{blobs->domains->domainCount}; }};
}

bench::Task prepareFindAndSelect(MakeMask makeMask, const BlobSelectCfg& cfg) {
  auto blobs = std::make_shared<Blobs>(makeMask(kSize));
  return {[blobs, cfg] {
            blobs->find();
            blobs->select(cfg);
          },
          [blobs] { return uint64_t{blobs->domains->domainCount}; }};
}

bench::Task prepareSelect(MakeMask makeMask, const BlobSelectCfg& cfg) {
  auto blobs = std::make_shared<Blobs>(makeMask(kSize));
  blobs->find();
  return {[blobs, cfg] { blobs->select(cfg); }};
}

constexpr auto smooth = bench::smoothBlobMask;
constexpr auto raw = bench::rawNoiseMask;
constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"labelling, smooth blobs", kBytes, [] { return prepareFind(smooth); }},
    {"labelling + basic features, smooth blobs", kBytes, [] { return prepareFindAndSelect(smooth, basicFeatures()); }},
    {"labelling + all features, smooth blobs", kBytes, [] { return prepareFindAndSelect(smooth, allFeatures()); }},
    {"all features alone, smooth blobs", kBytes, [] { return prepareSelect(smooth, allFeatures()); }},
    {"labelling, raw noise", kBytes, [] { return prepareFind(raw); }},
    {"labelling + basic features, raw noise", kBytes, [] { return prepareFindAndSelect(raw, basicFeatures()); }},
};

}  // namespace
