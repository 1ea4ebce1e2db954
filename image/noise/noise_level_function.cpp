#include "daxi/noise_level_function.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "frame/numeric/rank.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/noise/clipping.h"
#include "image/noise/frame_stack.h"

namespace dax {
namespace {

constexpr int32_t kMinBlock = 8, kMaxBlock = 64, kMaxBins = 256;

DaxStatus checkCfg(const DaxiNoiseLevelCfg& cfg) {
  DAX_REQUIRE(cfg.block >= kMinBlock && cfg.block <= kMaxBlock, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.bins >= 1 && cfg.bins <= kMaxBins, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.minCount >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.share >= 0.01 && cfg.share <= 0.5, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.low < cfg.high, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
DaxStatus setDefaults(DaxiNoiseLevelCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {16, 16, 8, 0, 0.25, -HUGE_VAL, HUGE_VAL};
  if constexpr (std::is_integral_v<T>) {
    cfg->low = std::numeric_limits<T>::min(), cfg->high = std::numeric_limits<T>::max();
  }
  return DAX_STS_OK;
}

// Splits levels in bins of one width.
class LevelBins {
 public:
  LevelBins(double low, double high, int32_t bins) : low_(low), bins_(bins) {
    if (high > low) scale_ = bins / (high - low);
  }
  int32_t of(double level) const {
    const double place = (level - low_) * scale_;
    return place < bins_ ? static_cast<int32_t>(place) : bins_ - 1;
  }

 private:
  double low_, scale_ = 0;
  int32_t bins_;
};

struct LevelRange {
  double low = HUGE_VAL, high = -HUGE_VAL;
  void add(double level) { low = std::min(low, level), high = std::max(high, level); }
};

// The points that a call finds, stored when there are any.
struct LevelPoints {
  DaxiNoiseLevel* points;
  int32_t* count;
};

// --- Blocks of one image ---

struct Block {
  double level, variance;
  int32_t bin;  // -1: some of its pixels are clipped
};

struct BlockGrid {
  BlockGrid(DaxiSize size, int32_t block)
      : width(size.width / block),
        height(size.height / block),
        blocks(layout.add<Block>(static_cast<uint64_t>(width) * static_cast<uint64_t>(height))) {}
  int32_t width, height;
  BufferLayout layout;
  BufferPiece<Block> blocks;
};

template <class T>
struct NoisyBlocks {
  using Number = std::conditional_t<std::is_integral_v<T>, int32_t, double>;
  using Sum = std::conditional_t<std::is_integral_v<T>, int64_t, double>;

  const T* src;
  int32_t srcStep;
  DaxiSize size;
  PoolThreads on;

  // The sum of the squared responses to the right of a pixel with whole windows below it.
  Sum squaresOfRow(const T* a, int32_t side) const {
    const T *const b = a + srcStep, *const c = b + srcStep;
    Number bends[kMaxBlock];
    for (int32_t x = 0; x < side; ++x) bends[x] = (Number{a[x]} + Number{c[x]}) - 2 * Number{b[x]};
    Sum sum = 0;
    for (int32_t x = 2; x < side; ++x) {
      const Sum response = (bends[x - 2] + bends[x]) - 2 * bends[x - 1];
      sum += response * response;
    }
    return sum;
  }

  Block measure(const T* corner, int32_t side, const Clipping<T>& clipping) const {
    Sum sum = 0, squares = 0;
    bool counts = true;
    for (int32_t y = 0; y < side; ++y) {
      const T* const row = rowAt(corner, srcStep, y);
      for (int32_t x = 0; x < side; ++x) {
        counts &= clipping.isInside(row[x]);
        sum += row[x];
      }
    }
    if (!counts) return {0, 0, -1};
    for (int32_t y = 0; y + 2 < side; ++y) squares += squaresOfRow(rowAt(corner, srcStep, y), side);
    const double windows = (side - 2.0) * (side - 2.0);
    return {static_cast<double>(sum) / (side * side), static_cast<double>(squares) / (36 * windows), 0};
  }

  DaxStatus measureAll(const BlockGrid& grid, const DaxiNoiseLevelCfg& cfg, Block* blocks) const {
    const Clipping<T> clipping(cfg.low, cfg.high);
    return runRows(on, grid.height, [&](int32_t first, int32_t end) {
      for (int32_t y = first; y < end; ++y) {
        const T* const row = rowAt(src, srcStep, y * cfg.block);
        Block* const to = blocks + ptrdiff_t{y} * grid.width;
        for (int32_t x = 0; x < grid.width; ++x) to[x] = measure(row + x * cfg.block, cfg.block, clipping);
      }
    });
  }
};

// The normal deviate of a share of at most 1/2 (Hastings, Approximations for Digital Computers, 1955, sheet 67).
double normalQuantile(double share) {
  const double t = std::sqrt(-2 * elementary::log(share));
  const double above = 2.515517 + t * (0.802853 + t * 0.010328);
  const double below = 1 + t * (1.432788 + t * (0.189269 + t * 0.001308));
  return above / below - t;
}

// What the variance of the block of a rank, of n without texture, is of that of the noise. Responses to white noise overlap:
// along an axis their correlations are -2/3 at one pixel and 1/6 at two.
double quantileOfBlocks(uint64_t rank, uint64_t n, int32_t block) {
  const double m = block - 2, root = m / (1 + 8 * (1 - 1 / m) / 9 + (1 - 2 / m) / 18), spread = 2 / (9 * root * root);
  const double share = (static_cast<double>(rank) - 0.375) / (static_cast<double>(n) + 0.25);
  const double cubic = 1 - spread + normalQuantile(std::min(share, 0.5)) * std::sqrt(spread);
  return cubic * cubic * cubic;
}

// The point of a bin, whose blocks come in the order of their variances.
template <class T>
DaxiNoiseLevel pointOf(const Block* blocks, uint64_t n, const DaxiNoiseLevelCfg& cfg) {
  double sum = 0;
  for (uint64_t i = 0; i < n; ++i) sum += blocks[i].level;
  const uint64_t rank = rankOf(cfg.share, n);
  const double variance = blocks[rank - 1].variance / quantileOfBlocks(rank, n, cfg.block);
  return {sum / static_cast<double>(n), std::max(variance - kRoundingVariance<T>, 0.0), n};
}

void sortByBin(Block* first, Block* end, int32_t bins) {
  LevelRange range;
  for (const Block* each = first; each != end; ++each) range.add(each->level);
  const LevelBins levels(range.low, range.high, bins);
  for (Block* each = first; each != end; ++each) each->bin = levels.of(each->level);
  std::sort(first, end, [](const Block& a, const Block& b) {
    if (a.bin != b.bin) return a.bin < b.bin;
    return a.variance != b.variance ? a.variance < b.variance : a.level < b.level;
  });
}

template <class T>
DaxStatus functionOfBlocks(const NoisyBlocks<T>& image, const DaxiNoiseLevelCfg* cfg, LevelPoints found, void* buffer) {
  DAX_REQUIRE(image.src && cfg && found.points && found.count && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(image.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(image.size.width, image.srcStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkCfg(*cfg));
  const BlockGrid grid(image.size, cfg->block);
  Block* const blocks = grid.blocks.in(buffer);
  DAX_REQUIRE_OK(image.measureAll(grid, *cfg, blocks));
  Block* const end = std::remove_if(blocks, blocks + int64_t{grid.width} * grid.height,
                                    [](const Block& block) { return block.bin < 0; });
  sortByBin(blocks, end, cfg->bins);
  int32_t count = 0;
  for (const Block *first = blocks, *next; first != end; first = next) {
    next = std::find_if(first, static_cast<const Block*>(end), [=](const Block& b) { return b.bin != first->bin; });
    if (next - first >= cfg->minCount)
      found.points[count++] = pointOf<T>(first, static_cast<uint64_t>(next - first), *cfg);
  }
  DAX_REQUIRE(count > 0, DAX_STS_DEGENERATE);
  *found.count = count;
  return DAX_STS_OK;
}

// --- Frames ---

template <class T>
struct FrameBin {
  using Stack = FrameStack<T>;
  typename Stack::Sum spreads = 0, sums = 0;
  uint64_t count = 0;
};

// Bins, and of each what the frames differ from the first one.
template <class T>
struct FrameBins {
  FrameBins(int32_t frameCount, int32_t binCount)
      : bins(layout.add<FrameBin<T>>(static_cast<uint64_t>(binCount))),
        offs(layout.add<typename FrameStack<T>::Number>(static_cast<uint64_t>(binCount) *
                                                        static_cast<uint64_t>(frameCount))) {}
  BufferLayout layout;
  BufferPiece<FrameBin<T>> bins;
  BufferPiece<typename FrameStack<T>::Number> offs;
};

template <class T>
struct LevelFrames {
  using Stack = FrameStack<T>;
  using Part = typename Stack::Part;
  using Number = typename Stack::Number;

  const Stack& stack;
  const DaxiNoiseLevelCfg& cfg;
  Clipping<T> clipping{cfg.low, cfg.high};

  // visit(part, counts): which pixels lie between the limits in all frames.
  template <class Visit>
  void forEachPart(const Visit& visit) const {
    stack.forEachPart([&](const Part& part) {
      bool counts[Part::kMax];
      std::fill_n(counts, part.count, true);
      for (int32_t i = 0; i < stack.count; ++i) {
        const T* const pixels = stack.pixelsOf(part, i);
        for (int32_t x = 0; x < part.count; ++x) counts[x] &= clipping.isInside(pixels[x]);
      }
      visit(part, counts);
    });
  }

  LevelRange range() const {
    LevelRange range;
    forEachPart([&](const Part& part, const bool* counts) {
      for (int32_t x = 0; x < part.count; ++x) {
        if (counts[x]) range.add(static_cast<double>(part.sums[x]));
      }
    });
    return range;
  }

  void fill(FrameBin<T>* bins, Number* offs) const {
    const LevelRange all = range();
    const LevelBins levels(all.low, all.high, cfg.bins);
    std::fill_n(bins, cfg.bins, FrameBin<T>{});
    std::fill_n(offs, int64_t{cfg.bins} * stack.count, Number{0});
    forEachPart([&](const Part& part, const bool* counts) {
      for (int32_t x = 0; x < part.count; ++x) {
        if (!counts[x]) continue;
        const int32_t bin = levels.of(static_cast<double>(part.sums[x]));
        bins[bin].spreads += part.spreads[x];
        bins[bin].sums += part.sums[x];
        ++bins[bin].count;
        const T first = stack.pixelsOf(part, 0)[x];
        Number* const off = offs + int64_t{bin} * stack.count;
        for (int32_t i = 1; i < stack.count; ++i) off[i] += Number{stack.pixelsOf(part, i)[x]} - Number{first};
      }
    });
  }

  DaxiNoiseLevel point(const FrameBin<T>& bin, const Number* offs) const {
    const auto pixels = static_cast<double>(bin.count);
    const double variance =
        varianceOfFrames(static_cast<double>(bin.spreads), pixels, stack.count, [=](int32_t i) { return offs[i]; });
    return {static_cast<double>(bin.sums) / (stack.count * pixels), std::max(variance - kRoundingVariance<T>, 0.0),
            bin.count};
  }
};

template <class T>
DaxStatus functionOfFrames(const FrameStack<T>& stack, const DaxiNoiseLevelCfg* cfg, LevelPoints found, void* buffer) {
  DAX_REQUIRE(stack.frames && cfg && found.points && found.count && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(stack.checkFrames());
  DAX_REQUIRE_OK(checkCfg(*cfg));
  const LevelFrames<T> frames{stack, *cfg};
  const FrameBins<T> held(stack.count, cfg->bins);
  FrameBin<T>* const bins = held.bins.in(buffer);
  auto* const offs = held.offs.in(buffer);
  frames.fill(bins, offs);
  int32_t count = 0;
  for (int32_t i = 0; i < cfg->bins; ++i) {
    if (bins[i].count < static_cast<uint64_t>(cfg->minCount)) continue;
    found.points[count++] = frames.point(bins[i], offs + int64_t{i} * stack.count);
  }
  DAX_REQUIRE(count > 0, DAX_STS_DEGENERATE);
  *found.count = count;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_NoiseLevelFunctionBufferSize(DaxiSize size, const DaxiNoiseLevelCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkCfg(*cfg));
  return dax::BlockGrid(size, cfg->block).layout.store(bytes);
}

DaxStatus DAXI_NoiseLevelFramesBufferSize(int32_t frameCount, const DaxiNoiseLevelCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isFrameCount(frameCount), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkCfg(*cfg));
  return dax::FrameBins<int16_t>(frameCount, cfg->bins).layout.store(bytes);  // of floats no more
}

#define DAX_NOISE_LEVEL(SUFFIX, T)                                                                                    \
  DaxStatus DAXI_NoiseLevelDefaultCfg_##SUFFIX(DaxiNoiseLevelCfg* cfg) {                                              \
    return dax::setDefaults<T>(cfg);                                                                                  \
  }                                                                                                                   \
  DaxStatus DAXI_NoiseLevelFunction_##SUFFIX##_C1R(const T* src, int32_t srcStep, DaxiSize size,                      \
                                                   const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points,              \
                                                   int32_t* count, void* buffer) {                                    \
    return dax::functionOfBlocks<T>({src, srcStep, size, {}}, cfg, {points, count}, buffer);                          \
  }                                                                                                                   \
  DaxStatus DAXI_NoiseLevelFunction_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,    \
                                                      DaxiSize size, const DaxiNoiseLevelCfg* cfg,                    \
                                                      DaxiNoiseLevel* points, int32_t* count, void* buffer) {         \
    return dax::functionOfBlocks<T>({src, srcStep, size, {pool, threads}}, cfg, {points, count}, buffer);             \
  }                                                                                                                   \
  DaxStatus DAXI_NoiseLevelFrames_##SUFFIX##_C1R(const T* const* frames, int32_t frameCount, int32_t step,            \
                                                 DaxiSize size, const DaxiNoiseLevelCfg* cfg, DaxiNoiseLevel* points, \
                                                 int32_t* count, void* buffer) {                                      \
    return dax::functionOfFrames<T>({frames, frameCount, step, size}, cfg, {points, count}, buffer);                  \
  }
DAX_NOISE_LEVEL(8u, uint8_t)
DAX_NOISE_LEVEL(16u, uint16_t)
DAX_NOISE_LEVEL(16s, int16_t)
DAX_NOISE_LEVEL(32f, float)
#undef DAX_NOISE_LEVEL
