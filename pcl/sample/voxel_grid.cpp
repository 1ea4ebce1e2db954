#include "pcl/sample/voxel_grid.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <utility>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "pcl/sample/voxel_grid_neon.h"

namespace dax {
namespace {

struct VoxelWork {
  explicit VoxelWork(int32_t n) : pairs(layout.add<KeyedPoint>(static_cast<uint64_t>(n))) {}
  BufferLayout layout;
  BufferPiece<KeyedPoint> pairs;
};

// The memory of the points is also the second buffer of the sort.
struct VoxelResult {
  explicit VoxelResult(int32_t n)
      : record(layout.add<DAX3DPCL_CLOUD3D>(1)), points(layout.add<float[3]>(static_cast<uint64_t>(n))) {}
  BufferLayout layout;
  BufferPiece<DAX3DPCL_CLOUD3D> record;
  BufferPiece<float[3]> points;
};
static_assert(sizeof(float[3]) >= sizeof(KeyedPoint));

// Stable radix sort, lowest digit first; each pass moves the pairs from one buffer to the other.
class KeySort {
 public:
  explicit KeySort(uint32_t cells)
      : bits_(std::bit_width(cells - 1)),
        passes_((bits_ + kMaxBits - 1) / kMaxBits),
        digitBits_(passes_ ? (bits_ + passes_ - 1) / passes_ : 0) {}

  // Buffer that must hold the pairs for the result to end in `home`.
  KeyedPoint* start(KeyedPoint* home, KeyedPoint* away) const { return passes_ % 2 ? away : home; }

  void run(KeyedPoint* home, KeyedPoint* away, int32_t count) const {
    KeyedPoint* from = start(home, away);
    for (int pass = 0; pass < passes_; ++pass) {
      KeyedPoint* const to = from == home ? away : home;
      scatter(from, to, count, pass * digitBits_);
      from = to;
    }
  }

 private:
  void scatter(const KeyedPoint* from, KeyedPoint* to, int32_t count, int shift) const {
    uint32_t places[1 << kMaxBits];
    const uint32_t digits = 1u << digitBits_;
    const auto digit = [&](const KeyedPoint& pair) { return static_cast<uint32_t>(pair.key) >> shift & (digits - 1); };
    std::fill_n(places, digits, 0u);
    for (int32_t i = 0; i < count; ++i) ++places[digit(from[i])];
    uint32_t sum = 0;
    for (uint32_t d = 0; d < digits; ++d) sum += std::exchange(places[d], sum);
    for (int32_t i = 0; i < count; ++i) to[places[digit(from[i])]++] = from[i];
  }

  static constexpr int kMaxBits = 11;  // 2048 counters: 8 KiB, which fit the first-level cache
  int bits_, passes_, digitBits_;
};

// The centroid of the points of each key, in the order of the pairs; returns their number.
int32_t averageCells(const KeyedPoint* pairs, int32_t count, const float* points, float (*centroids)[3]) {
  int32_t cells = 0;
  for (int32_t i = 0; i < count; ++cells) {
    const int32_t key = pairs[i].key, first = i;
    const float* const p = points + ptrdiff_t{3} * pairs[i].index;
    float x = p[0], y = p[1], z = p[2];
    for (++i; i < count && pairs[i].key == key; ++i) {
      const float* const q = points + ptrdiff_t{3} * pairs[i].index;
      x += q[0], y += q[1], z += q[2];
    }
    const float perPoint = 1 / static_cast<float>(i - first);
    centroids[cells][0] = x * perPoint;
    centroids[cells][1] = y * perPoint;
    centroids[cells][2] = z * perPoint;
  }
  return cells;
}

constexpr int64_t kMaxCells = INT32_MAX;

// Number of cells along an axis; 0 when the cell of an end does not fit 32 bits.
int64_t makeAxis(float low, float high, float leaf, VoxelAxis& axis) {
  const float perUnit = 1 / leaf, first = low * perUnit, last = high * perUnit;
  if (!(first >= -0x1p31f && last < 0x1p31f && first <= last)) return 0;
  axis = {low, high, perUnit, static_cast<int32_t>(first), 1};
  return int64_t{static_cast<int32_t>(last)} - axis.base + 1;
}

}  // namespace

bool makeVoxelGrid(const float* box, const float* leaf, VoxelGrid& grid) {
  const int64_t nx = makeAxis(box[0], box[3], leaf[0], grid.x);
  const int64_t ny = makeAxis(box[1], box[4], leaf[1], grid.y);
  const int64_t nz = makeAxis(box[2], box[5], leaf[2], grid.z);
  // Each factor fits 31 bits before it is multiplied, so that products fit 64 bits.
  const auto fits = [](int64_t n) { return n >= 1 && n <= kMaxCells; };
  if (!fits(nx) || !fits(ny) || !fits(nz) || !fits(nx * ny) || !fits(nx * ny * nz)) return false;
  grid.y.stride = static_cast<int32_t>(nx);
  grid.z.stride = static_cast<int32_t>(nx * ny);
  grid.cells = static_cast<uint32_t>(nx * ny * nz);
  return true;
}

void downsample(const DAX3DPCL_CLOUD3D* cloud, const VoxelGrid& grid, DAX3DPCL_CLOUD3D** out, void* result, void* work,
                int32_t isa) {
  const int32_t n = cloud->count;
  const VoxelResult layout(n);
  KeyedPoint* const pairs = VoxelWork(n).pairs.in(work);
  float(*const points)[3] = layout.points.in(result);
  KeyedPoint* const other = reinterpret_cast<KeyedPoint*>(points);

  const KeySort sort(grid.cells);
  const auto keyPoints = usesNeon(isa) ? neon::keyPoints : portable::keyPoints;
  const int32_t inside = keyPoints(grid, cloud->points, 0, n, sort.start(pairs, other), 0);
  int32_t cells = 1;
  if (inside > 1) {
    sort.run(pairs, other, inside);
    cells = averageCells(pairs, inside, cloud->points, points);
  } else {
    const int32_t only = inside == 1 ? sort.start(pairs, other)->index : 0;
    std::copy_n(cloud->points + ptrdiff_t{3} * only, 3, points[0]);
  }
  *out = layout.record.in(result);
  **out = {n, cells, points[0]};
}

namespace {

template <class Layout>
DaxStatus storeSize(int32_t n, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1, DAX_STS_BAD_PARAM);
  return Layout(n).layout.store(bytes);
}

}  // namespace
}  // namespace dax

DaxStatus DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize(int32_t n, uint64_t* bytes) {
  return dax::storeSize<dax::VoxelWork>(n, bytes);
}

DaxStatus DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize(int32_t n, uint64_t* bytes) {
  return dax::storeSize<dax::VoxelResult>(n, bytes);
}

DaxStatus DAX3DPCL_PREP_SAMPLE_VoxelGrid(const DAX3DPCL_CLOUD3D* cloud, const float* box, DAX3DPCL_CLOUD3D** out,
                                         void* result, void* work, float leafX, float leafY, float leafZ) {
  DAX_REQUIRE(cloud && cloud->points && box, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(out && result && work, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(cloud->count >= 1, DAX_STS_BAD_PARAM);
  const float leaf[3] = {leafX, leafY, leafZ};
  for (const float side : leaf) DAX_REQUIRE(side > FLT_EPSILON, DAX_STS_BAD_PARAM);
  for (int i = 0; i < 3; ++i) DAX_REQUIRE(box[i] <= box[i + 3], DAX_STS_BAD_PARAM);
  dax::VoxelGrid grid;
  DAX_REQUIRE(dax::makeVoxelGrid(box, leaf, grid), DAX_STS_BAD_PARAM);
  dax::downsample(cloud, grid, out, result, work, dax::currentIsa());
  return DAX_STS_OK;
}
