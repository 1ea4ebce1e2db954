#include "image/morphology/distance_transform.h"

#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/slices.h"

namespace dax {
namespace {

constexpr int32_t kMaxSide = 32768;
constexpr uint32_t kMaxTiles = 64;

// Rows to the nearest clear pixel of the same column.
using Rows = uint16_t;
constexpr Rows kNone = std::numeric_limits<Rows>::max();

// --- Metrics: the distance of column x to the clear pixel that column i knows of, and the last column for which i is no
// farther than u > i. The numbers are those of sides up to kMaxSide: 2 * 32767^2 fits. ---

struct Squared {
  static int32_t distance(int32_t x, int32_t i, int32_t rows) { return (x - i) * (x - i) + rows * rows; }
  static int32_t lastOf(int32_t i, int32_t iRows, int32_t u, int32_t uRows) {
    return (u * u - i * i + uRows * uRows - iRows * iRows) / (2 * (u - i));
  }
};

struct CityBlock {
  static int32_t distance(int32_t x, int32_t i, int32_t rows) { return std::abs(x - i) + rows; }
  static int32_t lastOf(int32_t i, int32_t iRows, int32_t u, int32_t uRows) {
    return uRows >= iRows + u - i ? kMaxSide : (uRows - iRows + u + i) / 2;
  }
};

struct Chessboard {
  static int32_t distance(int32_t x, int32_t i, int32_t rows) { return std::max(std::abs(x - i), rows); }
  static int32_t lastOf(int32_t i, int32_t iRows, int32_t u, int32_t uRows) {
    const int32_t middle = (i + u) / 2;
    return iRows <= uRows ? std::max(i + uRows, middle) : std::min(u - iRows, middle);
  }
};

// Column `nearest` is nearest from column `from` on.
struct EnvelopePart {
  int32_t nearest, from;
};

struct DistanceBuffer {
  explicit DistanceBuffer(DaxiSize size)
      : partsOfTile(static_cast<uint64_t>(size.width) + 2),
        rows(layout.add<Rows>(pixelsOf(size))),
        parts(layout.add<EnvelopePart>(kMaxTiles * partsOfTile)) {}
  uint64_t partsOfTile;
  BufferLayout layout;
  BufferPiece<Rows> rows;
  BufferPiece<EnvelopePart> parts;
};

// --- Columns ---

Rows oneMore(Rows rows) {
  return static_cast<Rows>(std::min<Rows>(rows, kNone - 1) + 1);
}

void rowsToClear(const uint8_t* src, int32_t srcStep, Rows* rows, DaxiSize size, int32_t first, int32_t end) {
  const auto rowsOf = [&](int32_t y) { return rowAt(rows, size.width, y); };
  for (int32_t x = first; x < end; ++x) rowsOf(0)[x] = src[x] ? kNone : 0;
  for (int32_t y = 1; y < size.height; ++y) {
    const uint8_t* const pixels = rowAt(src, srcStep, y);
    const Rows* const above = rowsOf(y - 1);
    Rows* __restrict const own = rowsOf(y);
    for (int32_t x = first; x < end; ++x) own[x] = pixels[x] ? oneMore(above[x]) : Rows{0};
  }
  for (int32_t y = size.height - 2; y >= 0; --y) {
    const Rows* const below = rowsOf(y + 1);
    Rows* __restrict const own = rowsOf(y);
    for (int32_t x = first; x < end; ++x) own[x] = std::min(own[x], oneMore(below[x]));
  }
}

// --- Rows ---

template <class To, class Metric>
To storedDistance(int32_t distance) {
  if constexpr (std::is_same_v<To, int32_t>) {
    return distance;
  } else if constexpr (std::is_same_v<Metric, Squared>) {
    return static_cast<float>(std::sqrt(static_cast<double>(distance)));
  } else {
    return static_cast<float>(distance);
  }
}

template <class To>
constexpr To kNoDistance = std::numeric_limits<To>::has_infinity ? std::numeric_limits<To>::infinity()
                                                                 : std::numeric_limits<To>::max();

// The lower envelope of columns first..last, of which those at most have a distance, from column `from` on. Returns how
// many parts it has.
template <class Metric>
int32_t findEnvelope(const Rows* rows, int32_t first, int32_t last, int32_t from, int32_t end, EnvelopePart* parts) {
  int32_t count = 0;
  for (int32_t u = first; u <= last; ++u) {
    if (rows[u] == kNone) continue;
    int32_t begin = from;
    while (count > 0) {
      const EnvelopePart& top = parts[count - 1];
      if (Metric::distance(top.from, top.nearest, rows[top.nearest]) <= Metric::distance(top.from, u, rows[u])) {
        begin = Metric::lastOf(top.nearest, rows[top.nearest], u, rows[u]) + 1;
        break;
      }
      --count;
    }
    if (begin < end) parts[count++] = {u, begin};
  }
  return count;
}

// Set pixels from..end - 1 between clear ones: what lies beyond these is farther than they are.
template <class Metric, class To>
void transformRun(const Rows* rows, int32_t from, int32_t end, int32_t width, To* dst, EnvelopePart* parts) {
  const int32_t first = std::max(from - 1, 0), last = std::min(end, width - 1);
  const int32_t count = findEnvelope<Metric>(rows, first, last, from, end, parts);
  if (count == 0) std::fill(dst + from, dst + end, kNoDistance<To>);
  for (int32_t part = 0; part < count; ++part) {
    const int32_t i = parts[part].nearest, partEnd = part + 1 < count ? parts[part + 1].from : end;
    for (int32_t x = parts[part].from; x < partEnd; ++x) {
      dst[x] = storedDistance<To, Metric>(Metric::distance(x, i, rows[i]));
    }
  }
}

template <class Metric, class To>
void transformRow(const Rows* rows, To* dst, int32_t width, EnvelopePart* parts) {
  for (int32_t x = 0; x < width;) {
    if (rows[x] == 0) {
      dst[x++] = 0;
      continue;
    }
    const int32_t from = x;
    while (x < width && rows[x] != 0) ++x;
    transformRun<Metric>(rows, from, x, width, dst, parts);
  }
}

template <class To>
using TransformRow = void (*)(const Rows*, To*, int32_t, EnvelopePart*);

bool isMetric(int32_t metric) {
  return metric >= DAXI_DISTANCE_L2 && metric <= DAXI_DISTANCE_LINF;
}

}  // namespace

DaxStatus distanceBufferSize(DaxiSize size, int32_t metric, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && atMost(size, kMaxSide) && isMetric(metric), DAX_STS_BAD_PARAM);
  return DistanceBuffer(size).layout.store(bytes);
}

template <class To>
DaxStatus distanceTransform(PoolThreads on, const uint8_t* src, int32_t srcStep, To* dst, int32_t dstStep,
                            DaxiSize size, int32_t metric, void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && atMost(size, kMaxSide), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE(isMetric(metric), DAX_STS_BAD_PARAM);
  constexpr TransformRow<To> kRows[] = {transformRow<Squared, To>, transformRow<CityBlock, To>,
                                        transformRow<Chessboard, To>};
  const TransformRow<To> transform = kRows[metric];
  const DistanceBuffer at(size);
  Rows* const rows = at.rows.in(buffer);
  constexpr int32_t kMinColumns = 64;
  DAX_REQUIRE_OK(runSlices(on, kMaxTiles, size.width, kMinColumns, [&](int32_t first, int32_t end, uint32_t) {
    rowsToClear(src, srcStep, rows, size, first, end);
  }));
  return runSlices(on, kMaxTiles, size.height, 1, [&](int32_t first, int32_t end, uint32_t tile) {
    EnvelopePart* const parts = at.parts.in(buffer) + tile * at.partsOfTile;
    for (int32_t y = first; y < end; ++y) {
      transform(rowAt(rows, size.width, y), rowAt(dst, dstStep, y), size.width, parts);
    }
  });
}

template DaxStatus distanceTransform<int32_t>(PoolThreads, const uint8_t*, int32_t, int32_t*, int32_t, DaxiSize,
                                              int32_t, void*);
template DaxStatus distanceTransform<float>(PoolThreads, const uint8_t*, int32_t, float*, int32_t, DaxiSize, int32_t,
                                            void*);

}  // namespace dax
