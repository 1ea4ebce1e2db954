// Any points, leaf sizes and numbers of neighbours: both generations of the KD-tree against brute force.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"

namespace {

using dax::fuzz::require;
using Memory = std::unique_ptr<uint8_t[]>;

// Bounds of regions are sums and differences of floats: what lies this close to the last neighbour may stand for it.
constexpr double kRounding = 1e-5;

template <class Query, class... Arguments>
Memory allocate(Query query, Arguments... arguments) {
  uint64_t bytes = 0;
  require(query(arguments..., &bytes) == DAX_STS_OK);
  return Memory(new uint8_t[bytes]);
}

struct Input {
  int32_t d = 3, leafSize = 1, k = 1, n = 0;
  float radius = 1;
  std::vector<float> points;  // the first is the query
};

// Four bytes of numbers; then coordinates: any floats, or bytes for many ties.
bool parse(const uint8_t* data, size_t size, Input& input) {
  if (size < 4) return false;
  input.d = data[0] % 5 + 1;
  input.leafSize = data[1] % 16 + 1;
  input.k = data[2] % 96 + 1;
  input.radius = static_cast<float>(data[3]) / 8;
  const bool floats = data[0] & 0x80;
  const size_t width = floats ? 4 : 1;
  for (size_t at = 4; at + width <= size; at += width) {
    float x = static_cast<float>(data[at]) / 16;
    if (floats) std::memcpy(&x, data + at, sizeof x);
    input.points.push_back(x);
  }
  input.n = static_cast<int32_t>(input.points.size()) / input.d - 1;
  return input.n > 0;
}

struct Found {
  explicit Found(int32_t max) : indices(static_cast<size_t>(max)), distances(indices.size()) {}
  std::vector<uint32_t> indices;
  std::vector<float> distances;
  int32_t count = -1;
};

float squaredDistance(const Input& input, size_t point, int32_t axes) {
  const auto d = static_cast<size_t>(input.d);
  const float* const p = &input.points[(point + 1) * d];
  float sum = 0;
  for (int32_t a = 0; a < axes; ++a)
    sum += (input.points[static_cast<size_t>(a)] - p[a]) * (input.points[static_cast<size_t>(a)] - p[a]);
  return sum;
}

// Distances that a search can find, in ascending order.
std::vector<float> expected(const Input& input, int32_t axes) {
  std::vector<float> all;
  for (size_t i = 0; i < static_cast<size_t>(input.n); ++i) {
    const float distance = squaredDistance(input, i, axes);
    if (distance < FLT_MAX) all.push_back(distance);
  }
  std::sort(all.begin(), all.end());
  return all;
}

bool finiteQuery(const Input& input) {
  return std::all_of(input.points.begin(), input.points.begin() + input.d, [](float x) { return std::isfinite(x); });
}

void expectDistance(const Input& input, const Found& found, size_t i, int32_t axes) {
  require(found.indices[i] < static_cast<uint32_t>(input.n));
  const double distance = squaredDistance(input, found.indices[i], axes);
  require(std::fabs(found.distances[i] - distance) <= kRounding * distance);
}

void expectNearest(const Input& input, const Found& found) {
  require(found.count == std::min(input.n, input.k));
  if (!finiteQuery(input)) return;
  const std::vector<float> all = expected(input, input.d);
  for (size_t i = 0; i < std::min(all.size(), found.indices.size()); ++i) {
    expectDistance(input, found, i, input.d);
    require(std::fabs(found.distances[i] - all[i]) <= kRounding * all[i]);
  }
}

void expectWithin(const Input& input, const Found& found) {
  const int32_t axes = std::min(input.d, 3);
  const float limit = input.radius * input.radius;
  for (size_t i = 0; i < static_cast<size_t>(found.count); ++i) {
    expectDistance(input, found, i, axes);
    require(found.distances[i] < limit);
  }
  if (!finiteQuery(input) || limit < FLT_EPSILON) return;
  const std::vector<float> all = expected(input, axes);
  const auto below = [&](double bound) {
    return std::count_if(all.begin(), all.end(), [=](float distance) { return distance < bound; });
  };
  require(found.count >= below(limit * (1 - kRounding)) && found.count <= below(limit));
}

Found firstGeneration(const Input& input) {
  const Memory block = allocate(DAX3DPCL_SEARCH_KDTREE_BufferSize, input.n, input.d);
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE*>(block.get());
  const float* const query = input.points.data();
  require(DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, query + input.d, input.n, input.d, input.leafSize) == DAX_STS_OK);
  Found found(input.k);
  require(DAX3DPCL_SEARCH_KDTREE_KNearestSearch(tree, query, 1, input.d, input.k, found.indices.data(),
                                                found.distances.data(), &found.count) == DAX_STS_OK);
  return found;
}

struct SecondGeneration {
  decltype(&DAX3DPCL_SEARCH_KDTREE_V2_BufferSize) size, buildSize;
  decltype(&DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2) build;
  decltype(&DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize) stackSize;
};
constexpr SecondGeneration kWhole{DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize,
                                  DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2,
                                  DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize};
constexpr SecondGeneration kInner{
    DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner, DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner,
    DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner, DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize_Inner};

// The nearest; those within the radius are compared here.
Found secondGeneration(const Input& input, const SecondGeneration& with) {
  const Memory block = allocate(with.size, input.n, input.d), boxes = allocate(with.buildSize, input.n, input.d);
  const Memory stack = allocate(with.stackSize, input.n);
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.get());
  const float* const query = input.points.data();
  require(with.build(tree, query + input.d, input.n, input.d, input.leafSize, boxes.get()) == DAX_STS_OK);
  Found found(input.k), within(input.n);
  require(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(tree, query, 1, input.d, input.k, found.indices.data(),
                                                   found.distances.data(), &found.count, stack.get()) == DAX_STS_OK);
  require(DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(tree, query, input.d, input.n, within.indices.data(),
                                                   within.distances.data(), &within.count, stack.get(),
                                                   input.radius) == DAX_STS_OK);
  expectWithin(input, within);
  return found;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input;
  if (!parse(data, size, input)) return 0;
  const Found first = firstGeneration(input), second = secondGeneration(input, kWhole);
  expectNearest(input, first);
  require(second.count == first.count && second.indices == first.indices);
  require(std::memcmp(second.distances.data(), first.distances.data(), sizeof(float) * first.distances.size()) == 0);
  expectNearest(input, secondGeneration(input, kInner));
  return 0;
}
