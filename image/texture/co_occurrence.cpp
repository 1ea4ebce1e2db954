#include "daxi/co_occurrence.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/slices.h"

static_assert(sizeof(DaxiCoOccurrenceCfg) == 24);

namespace dax {
namespace {

constexpr uint32_t kMaxCountingTiles = 64;

struct Offset {
  int32_t dx, dy;
};

// --- Levels ---

// floor(n L / span) without a division of integers. Bytes: floor(n ceil(L 2^16 / span) / 2^16), since the error of the
// factor, below 1, times n stays below 2^16 / span, with n <= span and span^2 <= 2^16. Words: the quotient of floats; n
// L is exact, and what lies 1 / span >= 2^-16 below a whole number up to 256 is not rounded up to it.
template <class T>
class Leveller {
 public:
  explicit Leveller(const DaxiCoOccurrenceCfg& cfg)
      : low_(static_cast<T>(cfg.low)),
        // The first value above, which has the last level.
        above_(static_cast<T>(std::min<int32_t>(cfg.high + 1, std::numeric_limits<T>::max()))),
        levels_(cfg.levels),
        span_(cfg.high - cfg.low + 1) {}

  void run(const T* from, uint8_t* __restrict to, int32_t count) const {
    const T low = low_, above = above_;
    const int32_t last = levels_ - 1, factor = ((levels_ << 16) + span_ - 1) / span_;
    const auto levels = static_cast<float>(levels_), span = static_cast<float>(span_);
    for (int32_t i = 0; i < count; ++i) {
      const int32_t n = std::min(std::max(from[i], low), above) - low;
      int32_t level;
      if constexpr (sizeof(T) == 1) {
        level = (n * factor) >> 16;
      } else {
        level = static_cast<int32_t>(static_cast<float>(n) * levels / span);
      }
      to[i] = static_cast<uint8_t>(std::min(level, last));
    }
  }

 private:
  T low_, above_;
  int32_t levels_, span_;
};

// --- Counting ---

// Two tables for each offset, counted in by turns, so that equal pairs do not wait for each other; one where two would
// not fit the cache.
constexpr uint64_t tablesOf(int32_t levels) {
  return levels <= 64 ? 2 : 1;
}

struct CoOccurrenceBuffer {
  CoOccurrenceBuffer(DaxiSize size, int32_t levels, int32_t offsets, uint32_t threads)
      : tiles(std::clamp<uint32_t>(threads, 1,
                                   std::min<uint32_t>(kMaxCountingTiles, static_cast<uint32_t>(size.height)))),
        width(static_cast<uint64_t>(size.width)),
        cells(static_cast<uint64_t>(levels) * static_cast<uint64_t>(levels)),
        tables(tablesOf(levels) * cells),
        all(tables * static_cast<uint64_t>(offsets)),
        rows(layout.add<uint8_t>(2 * width * tiles)),
        counts(layout.add<uint32_t>(all * tiles)) {}
  uint32_t tiles;
  uint64_t width, cells;
  uint64_t tables, all;  // cells of the tables of one offset, and of all
  BufferLayout layout;
  BufferPiece<uint8_t> rows;  // two rows of levels
  BufferPiece<uint32_t> counts;
};

// Counts pairs (a[i], b[i]) in one table and another one.
void countPairs(const uint8_t* a, const uint8_t* b, int32_t count, uint32_t levels, uint32_t* table, uint32_t* other) {
  constexpr int32_t kStrip = 512;
  uint16_t pairs[kStrip];
  for (int32_t first = 0; first < count; first += kStrip) {
    const int32_t n = std::min(kStrip, count - first);
    for (int32_t i = 0; i < n; ++i) pairs[i] = static_cast<uint16_t>(a[first + i] * levels + b[first + i]);
    int32_t i = 0;
    for (; i + 4 <= n; i += 4) {
      ++table[pairs[i]], ++other[pairs[i + 1]];
      ++table[pairs[i + 2]], ++other[pairs[i + 3]];
    }
    for (; i < n; ++i) ++table[pairs[i]];
  }
}

// Pairs whose first pixel lies in some rows. All offsets lead to the same row, or stay in theirs.
template <class T, int kOffsets>
struct CoOccurrence {
  const T* src;
  int32_t srcStep;
  DaxiSize size;
  const DaxiCoOccurrenceCfg& cfg;
  Offset offsets[kOffsets];

  void countRows(int32_t first, int32_t end, uint8_t* rows, uint32_t* counts, const CoOccurrenceBuffer& at) const {
    const Leveller<T> leveller(cfg);
    const int32_t dy = offsets[kOffsets - 1].dy;
    uint8_t *const own = rows, *const other = dy == 0 ? own : rows + size.width;
    for (int32_t y = first; y < end; ++y) {
      const int64_t partner = int64_t{y} + dy;
      const bool hasOther = partner >= 0 && partner < size.height;
      if (kOffsets == 1 && !hasOther) continue;
      leveller.run(rowAt(src, srcStep, y), own, size.width);
      if (dy != 0 && hasOther) leveller.run(rowAt(src, srcStep, static_cast<int32_t>(partner)), other, size.width);
      for (uint64_t k = 0; k < kOffsets; ++k) {
        const auto [dx, down] = offsets[k];
        if (down != 0 && !hasOther) continue;
        const uint8_t* const partners = down == 0 ? own : other;
        const int32_t left = std::max(0, -dx), reach = std::abs(dx);
        if (reach >= size.width) continue;
        uint32_t* const table = counts + at.tables * k;
        countPairs(own + left, partners + left + dx, size.width - reach, static_cast<uint32_t>(cfg.levels), table,
                   table + (at.tables - at.cells));
      }
    }
  }

  DaxStatus run(PoolThreads on, uint32_t* to, void* buffer) const {
    const CoOccurrenceBuffer at(size, cfg.levels, kOffsets, hasPool(on.pool, on.threads) ? on.threads : 1);
    uint8_t* const rows = at.rows.in(buffer);
    uint32_t* const counts = at.counts.in(buffer);
    std::fill_n(counts, at.all * at.tiles, 0u);
    DAX_REQUIRE_OK(runSlices(on, at.tiles, size.height, 1, [&](int32_t first, int32_t end, uint32_t slice) {
      countRows(first, end, rows + 2 * at.width * slice, counts + at.all * slice, at);
    }));
    for (uint64_t k = 0; k < kOffsets; ++k) sumUp(counts + at.tables * k, at, to + at.cells * k);
    return DAX_STS_OK;
  }

 private:
  // The tables of one offset, of all tiles.
  void sumUp(uint32_t* tables, const CoOccurrenceBuffer& at, uint32_t* to) const {
    const uint64_t perTile = tablesOf(cfg.levels);
    for (uint64_t k = 1; k < perTile * at.tiles; ++k) {
      const uint32_t* const part = tables + at.all * (k / perTile) + at.cells * (k % perTile);
      for (uint64_t i = 0; i < at.cells; ++i) tables[i] += part[i];
    }
    const auto levels = static_cast<uint64_t>(cfg.levels);
    for (uint64_t i = 0; i < levels; ++i) {
      for (uint64_t j = 0; j < levels; ++j) {
        const uint32_t turned = cfg.symmetric != 0 ? tables[j * levels + i] : 0;
        to[i * levels + j] = tables[i * levels + j] + turned;
      }
    }
  }
};

// --- Calls ---

template <class T, int kOffsets>
DaxStatus checkCoOccurrenceCfg(const DaxiCoOccurrenceCfg& cfg) {
  constexpr int32_t kReach = 32767, kGreatest = sizeof(T) == 1 ? 255 : 65535;
  DAX_REQUIRE(cfg.dx >= (kOffsets == 1 ? -kReach : 1) && cfg.dx <= kReach, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(kOffsets != 1 || (cfg.dy >= -kReach && cfg.dy <= kReach), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.levels >= 2 && cfg.levels <= 256, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.low >= 0 && cfg.low <= kGreatest, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.high >= cfg.low && cfg.high <= kGreatest, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.symmetric == 0 || cfg.symmetric == 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// Symmetric counts of one cell are at most twice the pixels.
bool isCountable(DaxiSize size) {
  return atLeast(size, 1) && int64_t{size.width} * size.height <= INT32_MAX;
}

template <class T, int kOffsets>
DaxStatus coOccurrence(PoolThreads on, const T* src, int32_t srcStep, DaxiSize size, const DaxiCoOccurrenceCfg* cfg,
                       uint32_t* counts, void* buffer) {
  DAX_REQUIRE(src && cfg && counts && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isCountable(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
  const DaxStatus checked = checkCoOccurrenceCfg<T, kOffsets>(*cfg);
  DAX_REQUIRE_OK(checked);
  const int32_t d = cfg->dx;
  if constexpr (kOffsets == 1) {
    return CoOccurrence<T, 1>{src, srcStep, size, *cfg, {{d, cfg->dy}}}.run(on, counts, buffer);
  } else {
    return CoOccurrence<T, 4>{src, srcStep, size, *cfg, {{d, 0}, {d, -d}, {0, -d}, {-d, -d}}}.run(on, counts, buffer);
  }
}

template <class T, int kOffsets>
DaxStatus coOccurrenceBufferSize(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isCountable(size), DAX_STS_BAD_PARAM);
  const DaxStatus checked = checkCoOccurrenceCfg<T, kOffsets>(*cfg);
  DAX_REQUIRE_OK(checked);
  return CoOccurrenceBuffer(size, cfg->levels, kOffsets, threads).layout.store(bytes);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_CoOccurrenceDefaultCfg(DaxiCoOccurrenceCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {1, 0, 32, 0, 255, 1};
  return DAX_STS_OK;
}

#define DAX_CO_OCCURRENCE(NAME, OFFSETS, SUFFIX, T)                                                                    \
  DaxStatus DAXI_##NAME##BufferSize_##SUFFIX(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint64_t* bytes) {         \
    return dax::coOccurrenceBufferSize<T, OFFSETS>(size, cfg, 1, bytes);                                               \
  }                                                                                                                    \
  DaxStatus DAXI_##NAME##BufferSize_##SUFFIX##_MT(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t threads,     \
                                                  uint64_t* bytes) {                                                   \
    return dax::coOccurrenceBufferSize<T, OFFSETS>(size, cfg, threads, bytes);                                         \
  }                                                                                                                    \
  DaxStatus DAXI_##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size, const DaxiCoOccurrenceCfg* cfg, \
                                         uint32_t* counts, void* buffer) {                                             \
    return dax::coOccurrence<T, OFFSETS>({}, src, srcStep, size, cfg, counts, buffer);                                 \
  }                                                                                                                    \
  DaxStatus DAXI_##NAME##_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,               \
                                            DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t* counts,           \
                                            void* buffer) {                                                            \
    return dax::coOccurrence<T, OFFSETS>({pool, threads}, src, srcStep, size, cfg, counts, buffer);                    \
  }
DAX_CO_OCCURRENCE(CoOccurrence, 1, 8u, uint8_t)
DAX_CO_OCCURRENCE(CoOccurrence, 1, 16u, uint16_t)
DAX_CO_OCCURRENCE(CoOccurrence4, 4, 8u, uint8_t)
DAX_CO_OCCURRENCE(CoOccurrence4, 4, 16u, uint16_t)
#undef DAX_CO_OCCURRENCE
