// How blob analysis grows: labelling and selection from half a megapixel to a hundred, selection on the host's pool, and a
// checkerboard of the worst width. Prints the tables "size", "pool" and "worst" of docs/performance.md. Native only.
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "daxhost.h"
#include "daxi.h"

namespace {

using bench::fastest;
using bench::Image;
using Memory = std::unique_ptr<uint8_t[]>;

template <class Query>
Memory allocate(Query query) {
  uint64_t bytes = 0;
  bench::require(query(&bytes));
  return Memory(new uint8_t[bytes]);
}

// A mask with memory for its labelling, and its domains.
struct Labelled {
  Labelled(Image<uint8_t> image, int32_t how)
      : mask(std::move(image)),
        connectivity(how),
        model(allocate([&](uint64_t* bytes) { return DAXI_BlobFindModelSize_8u(mask.size, how, bytes); })),
        buffer(allocate([&](uint64_t* bytes) { return DAXI_BlobFindBufferSize_8u(mask.size, how, bytes); })) {
    find();
  }
  void find() {
    bench::require(DAXI_BlobFind_8u_C1R(mask.data(), mask.size.width, mask.size, connectivity, model.get(), &domains,
                                        buffer.get()));
  }
  Image<uint8_t> mask;
  int32_t connectivity;
  Memory model, buffer;
  const DaxiDomainList* domains = nullptr;
};

BlobSelectCfg allFeatures() {
  BlobSelectCfg cfg{};
  cfg.maxCount = DAXI_BLOB_MAX_COUNT;
  cfg.sortOrder = DAXI_BLOB_DESCENDING;
  cfg.sortKey = DAXI_BLOB_KEY_AREA;
  return cfg;
}

// One selection of all features, on a pool where there is one.
class Selection {
 public:
  Selection(const Labelled& labelled, uint32_t threads, void* pool)
      : labelled_(labelled), threads_(threads), pool_(pool), buffer_(allocate([&](uint64_t* bytes) {
          return DAXI_BlobSelectBufferSize_8u_MT(labelled.mask.size, threads, bytes);
        })) {}

  void run() {
    const Image<uint8_t>& m = labelled_.mask;
    const auto count = static_cast<int32_t>(labelled_.domains->domainCount);
    const BlobSelectCfg cfg = allFeatures();
    BlobSelectResult result{kept_.data(), 0, nullptr};
    bench::require(DAXI_BlobSelect_8u_C1R_MT(m.data(), m.size.width, m.data(), m.size.width, m.size, labelled_.domains,
                                             count, &result, &cfg, buffer_.get(), threads_, pool_));
  }

 private:
  const Labelled& labelled_;
  uint32_t threads_;
  void* pool_;
  Memory buffer_;
  std::vector<BlobInfo> kept_ = std::vector<BlobInfo>(DAXI_BLOB_MAX_COUNT);
};

void printGrowth() {
  bench::printHead({"megapixels", "runs", "blobs", "labelling ms", "labelling ns / pixel", "all features ms",
                    "all features ns / run"});
  for (const double megapixels : {0.5, 2.0, 8.0, 25.0, 100.0}) {
    const auto height = static_cast<int32_t>(std::sqrt(megapixels * 1e6 * 0.75));
    const DaxiSize size{height * 4 / 3, height};
    Labelled labelled(bench::smoothBlobMask(size), 8);
    Selection selection(labelled, 0, nullptr);
    const double find = fastest(5, [&] { labelled.find(); }), select = fastest(5, [&] { selection.run(); });
    const DaxiDomainList& list = *labelled.domains;
    const double pixels = static_cast<double>(bench::pixelCount(size));
    std::printf("| %.1f | %u | %u | %.2f | %.2f | %.2f | %.0f |\n", megapixels, list.runCount, list.domainCount, find,
                find * 1e6 / pixels, select, select * 1e6 / list.runCount);
    std::fflush(stdout);
  }
}

// 20000 blobs of some 150 pixels each, of several shapes: discs, bars and rings in a grid.
Image<uint8_t> grid() {
  Image<uint8_t> image({200 * 20, 100 * 20});
  for (int32_t y = 0; y < image.size.height; ++y) {
    for (int32_t x = 0; x < image.size.width; ++x) {
      const int32_t kind = (x / 20 + y / 20) % 3, dx = x % 20 - 10, dy = y % 20 - 10, r2 = dx * dx + dy * dy;
      const bool bar = std::abs(dx + dy) <= 9 && std::abs(dx - dy) <= 5;
      const bool set = kind == 0 ? r2 <= 64 : kind == 1 ? bar : r2 <= 72 && r2 >= 16;
      image.data()[static_cast<size_t>(y) * static_cast<size_t>(image.size.width) + static_cast<size_t>(x)] =
          set ? 255 : 0;
    }
  }
  return image;
}

void printPool() {
  const uint32_t threads = std::max(std::thread::hardware_concurrency(), 1u);
  void* const pool = DAXHOST_CreatePool(threads);
  const Labelled labelled(grid(), 8);
  Selection one(labelled, 1, nullptr), many(labelled, threads, pool);
  bench::printPoolHead(threads);
  const std::string operation = "all features of " + std::to_string(labelled.domains->domainCount) + " blobs";
  bench::printPooled(
      operation.c_str(), 60, [&] { one.run(); }, [&] { many.run(); });
  DAXHOST_DestroyPool(pool);
}

void printCheckerboard() {
  Image<uint8_t> image({65536, 3000});
  for (int32_t y = 0; y < image.size.height; ++y) {
    for (int32_t x = 0; x < image.size.width; ++x) {
      image.data()[static_cast<size_t>(y) * 65536 + static_cast<size_t>(x)] = (x + y) % 2 ? 255 : 0;
    }
  }
  bench::printHead({"connectivity", "runs", "blobs", "labelling s"});
  for (const int32_t connectivity : {4, 8}) {
    Labelled labelled(image, connectivity);
    std::printf("| %d | %u | %u | %.2f |\n", connectivity, labelled.domains->runCount, labelled.domains->domainCount,
                fastest(1, [&] { labelled.find(); }) / 1000);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (bench::wanted(argc, argv, "size")) printGrowth();
  if (bench::wanted(argc, argv, "pool")) printPool();
  if (bench::wanted(argc, argv, "worst")) printCheckerboard();
}
