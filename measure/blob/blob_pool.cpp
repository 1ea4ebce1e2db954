// Features are computed by tiles; everything that depends on order stays on the calling thread. Domains are processed
// in blocks, so that memory does not grow with their number.
#include "measure/blob/blob_pool.h"

#include <algorithm>
#include <cstring>

#include "frame/check.h"
#include "frame/tiles.h"
#include "measure/blob/blob_cascade.h"
#include "measure/blob/blob_passes.h"
#include "measure/blob/blob_rank.h"

namespace dax {
namespace {

constexpr int32_t kBlock = DAXI_BLOB_MAX_COUNT;  // domains, or kept blobs, at a time
constexpr int32_t kChunksPerTile = 4;            // evens out domains of different cost
constexpr int32_t kMaxChunks = 256;

// The work buffer: that of the single-threaded form, then a block of records and whether they pass, then the scratch of
// every tile.
struct PoolScratch {
  PoolScratch(DaxiSize size, uint32_t threads)
      : serial(size),
        layout(serial.layout),
        records(layout.add<BlobInfo>(kBlock)),
        accepted(layout.add<uint8_t>(kBlock)),
        bounds(layout.add<int32_t>(kMaxChunks + 1)),
        slices(layout.addSlices(sliceBytes(size), threads)),
        size_(size) {}

  // The context of one tile, with its scratch at the start of its slice.
  SelectContext context(const SelectCall& call, uint32_t slice) const {
    BufferLayout own;
    const FeatureScratch features(own, size_);
    return makeContext(call, features, slices.in(call.buffer) + slice * sliceBytes(size_));
  }

  SelectScratch serial;
  BufferLayout layout;
  BufferPiece<BlobInfo> records;
  BufferPiece<uint8_t> accepted;
  BufferPiece<int32_t> bounds;
  BufferPiece<uint8_t> slices;

 private:
  static uint64_t sliceBytes(DaxiSize size) {
    BufferLayout own;
    [[maybe_unused]] const FeatureScratch features(own, size);
    return own.total();
  }
  DaxiSize size_;
};

// A block of work cut into chunks with about equal numbers of runs, because one domain can have most of the runs.
class Chunks {
 public:
  template <class RunsOf>
  Chunks(int32_t* bounds, int32_t count, uint32_t threads, RunsOf runsOf) : bounds_(bounds) {
    uint64_t total = 0;
    for (int32_t i = 0; i < count; ++i) total += runsOf(i);
    const auto wanted = static_cast<uint64_t>(std::min<int64_t>(int64_t{kChunksPerTile} * threads, kMaxChunks));
    uint64_t done = 0;
    bounds_[0] = 0;
    for (int32_t i = 0; i < count; ++i) {
      done += runsOf(i);
      // A chunk ends where its share of the runs is reached, so that there are at most `wanted`.
      if (done * wanted >= total * (static_cast<uint64_t>(count_) + 1)) bounds_[++count_] = i + 1;
    }
  }

  int32_t count() const { return count_; }
  int32_t first(int32_t chunk) const { return bounds_[chunk]; }
  int32_t end(int32_t chunk) const { return bounds_[chunk + 1]; }

 private:
  int32_t* bounds_;
  int32_t count_ = 0;
};

// A selection in progress.
struct PoolJob {
  const SelectCall& call;
  const PoolScratch& at;
  Cascade cascade;
  uint32_t threads;
  void* pool;
  int32_t firstLabel;  // of the block
  KeptBlobs kept;

  BlobInfo* records() const { return at.records.in(call.buffer); }
  uint8_t* accepted() const { return at.accepted.in(call.buffer); }
};

// Tile i takes every n-th chunk from the i-th on, n being the number of tiles.
template <class RunsOf, class Tile>
DaxStatus runChunks(const PoolJob& job, int32_t count, RunsOf runsOf, Tile tile) {
  const Chunks chunks(job.at.bounds.in(job.call.buffer), count, job.threads, runsOf);
  const auto tiles = static_cast<int32_t>(std::min<int64_t>(job.threads, chunks.count()));
  return runTiles(job.pool, job.threads, tiles, 1, [&](int32_t first, int32_t, uint32_t slice) -> DaxStatus {
    for (int32_t i = first; i < chunks.count(); i += tiles) {
      DAX_REQUIRE_OK(tile(&job, chunks.first(i), chunks.end(i), slice));
    }
    return DAX_STS_OK;
  });
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_BlobSelect_cal_blob_props_tile(const void* opaque, int32_t first, int32_t end, uint32_t slice) {
  const auto& job = *static_cast<const dax::PoolJob*>(opaque);
  const dax::SelectContext context = job.at.context(job.call, slice);
  for (int32_t i = first; i < end; ++i) {
    BlobInfo& record = job.records()[i];
    record = {};
    dax::calculateBasicFeatures(context, context.domains.domains[job.firstLabel + i], record);
    job.accepted()[i] = job.cascade.accepts(context, record);
  }
  return DAX_STS_OK;
}

// The fourth version differs only in its cascade.
DaxStatus DAXI_BlobSelectV4_cal_blob_props_tile(const void* opaque, int32_t first, int32_t end, uint32_t slice) {
  return DAXI_BlobSelect_cal_blob_props_tile(opaque, first, end, slice);
}

DaxStatus DAXI_BlobSelect_blob_info_calculator_tile(const void* opaque, int32_t first, int32_t end, uint32_t slice) {
  const auto& job = *static_cast<const dax::PoolJob*>(opaque);
  const dax::SelectContext context = job.at.context(job.call, slice);
  for (int32_t i = first; i < end; ++i) dax::completeFeatures(context, job.cascade.done, job.kept.array[i]);
  return DAX_STS_OK;
}

namespace dax {
namespace {

DaxStatus measureBlock(const PoolJob& job, int32_t count) {
  const DaxiDomain* const domains = job.call.domains->domains + job.firstLabel;
  const auto tile = job.call.rules.v4 ? DAXI_BlobSelectV4_cal_blob_props_tile : DAXI_BlobSelect_cal_blob_props_tile;
  return runChunks(
      job, count, [&](int32_t i) { return domains[i].runCount; }, tile);
}

DaxStatus completeKept(const PoolJob& job) {
  return runChunks(
      job, job.kept.count, [&](int32_t i) { return job.kept.array[i].domain->runCount; },
      DAXI_BlobSelect_blob_info_calculator_tile);
}

// Copies the fields that the first pass writes; the rest of the caller's record stays as it is.
void copyMeasured(const BlobInfo& from, bool withBorder, BlobInfo& to) {
  std::memcpy(static_cast<void*>(&to), &from, offsetof(BlobInfo, borderPixels));
  if (withBorder) to.borderPixels = from.borderPixels;
  to.domain = from.domain;
  to.label = from.label;
  to.cls = from.cls;
}

// Takes the accepted records of a block in label order, as the two passes would: appends until the set is full, then
// offers them to the heap.
class Gatherer {
 public:
  Gatherer(PoolJob& job, bool countsOutside) : job_(job), countsOutside_(countsOutside) {}

  void take(int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      if (job_.accepted()[i]) take(job_.records()[i]);
    }
  }

  bool full() const { return job_.kept.count == job_.call.cfg->maxCount; }

 private:
  void take(const BlobInfo& record) {
    if (!full()) {
      copyMeasured(record, countsOutside_, job_.kept.array[job_.kept.count++]);
      return;
    }
    if (!heapMade_) {
      heap_ = KeptHeap(job_.kept, keepRanking(*job_.call.cfg), job_.at.serial.order.in(job_.call.buffer));
      heapMade_ = true;
    }
    heap_.offer(record);
  }

  PoolJob& job_;
  bool countsOutside_;
  bool heapMade_ = false;
  KeptHeap heap_;
};

DaxStatus gatherAll(PoolJob& job) {
  const BlobSelectCfg& cfg = *job.call.cfg;
  // Without filters the first domains are kept.
  const int32_t total = cfg.flags == 0 ? std::min(job.call.domainCount, cfg.maxCount) : job.call.domainCount;
  const bool countsOutside = job.call.rules.countsOutside && (cfg.flags & DAXI_BLOB_BY_OUTSIDE_PIXELS) != 0;
  Gatherer gatherer(job, countsOutside);
  for (; job.firstLabel < total; job.firstLabel += kBlock) {
    const int32_t count = std::min(kBlock, total - job.firstLabel);
    DAX_REQUIRE_OK(measureBlock(job, count));
    gatherer.take(count);
  }
  return DAX_STS_OK;
}

}  // namespace

DaxStatus selectOnPool(const SelectCall& call, uint32_t threads, void* pool) {
  if (!hasPool(pool, threads) || call.domainCount < 2) {
    select(call);
    return DAX_STS_OK;
  }
  const PoolScratch at(call.size, threads);
  PoolJob job{call, at, {}, threads, pool, 0, {call.result->array, 0}};
  DAXI_BlobSelect_create_cascade_filter(call.cfg, &call.rules, &job.cascade);
  for (uint32_t slice = 0; slice < threads; ++slice) at.context(call, slice).bitmap.clear(call.size);
  DAX_REQUIRE_OK(gatherAll(job));
  if (job.kept.count > 0) DAX_REQUIRE_OK(completeKept(job));
  finishSelect(call, at.serial, job.kept);
  return DAX_STS_OK;
}

DaxStatus poolBufferSize(DaxiSize size, uint32_t threads, uint64_t* bytes) {
  return PoolScratch(size, threads).layout.store(bytes);
}

}  // namespace dax
