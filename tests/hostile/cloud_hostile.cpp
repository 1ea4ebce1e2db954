// Clouds: trees of both generations, their searches, normals, voxels.
#include <cmath>
#include <cstddef>

#include "dax3dpcl.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void checkCloud(Call& c) {
  const int64_t most = c.number("maxCount", 1, 100);
  auto* const cloud = c.record<DAX3DPCL_CLOUD3D>("cloud");
  if (!cloud) return;
  *cloud = {200, static_cast<int32_t>(std::clamp<int64_t>(most, 1, 100)), c.elements<float>("points", -1, Role::input)};
  c.spoilWord("cloud", cloud, 0, offsetof(DAX3DPCL_CLOUD3D, points));
  if (c.isSpoiled("cloud") && c.chance(30)) cloud->points = nullptr;
}

// Points in a box, on a coarse lattice so that some coincide, or anywhere.
void scatter(Call& c, float* values, size_t count) {
  const int32_t kind = c.random.below(10);
  for (size_t i = 0; i < count; ++i) {
    values[i] = kind < 4 ? static_cast<float>(c.between(0, 5)) : static_cast<float>(c.between(-4000, 4000)) / 100;
    if (kind == 9 && c.chance(10)) values[i] = static_cast<float>(std::clamp(c.hostileReal(), -3e38, 3e38));
    if (kind == 9 && c.chance(3)) values[i] = INFINITY;
  }
}

float* scattered(Call& c, const char* name, int64_t count) {
  auto* const values = static_cast<float*>(c.array(name, count));
  if (const Block* const made = c.block(values)) scatter(c, values, made->bytes / sizeof(float));
  return values;
}

// --- Trees ---

int32_t aDimension(Call& c) {
  return c.chance(60) ? 3 : 1 + c.random.below(6);
}

struct First {
  using Tree = DAX3DPCL_KDTREE;
  static constexpr auto* kSize = DAX3DPCL_SEARCH_KDTREE_BufferSize;
  static void build(Call&, Tree* tree, const float* points, int32_t n, int32_t d, int32_t leafSize) {
    DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, points, n, d, leafSize);
  }
};

template <auto size, auto stackSize, auto builder>
struct SecondKind {
  using Tree = DAX3DPCL_KDTREE_V2;
  static constexpr auto* kSize = size;
  static void build(Call&, Tree* tree, const float* points, int32_t n, int32_t d, int32_t leafSize) {
    uint64_t bytes = 0;
    stackSize(n, d, &bytes);
    std::vector<uint64_t> stack(bytes / sizeof(uint64_t));
    builder(tree, points, n, d, leafSize, stack.data());
  }
};
using Second = SecondKind<DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize,
                          DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2>;
using SecondInner =
    SecondKind<DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner, DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner,
               DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner>;

// A tree over these points in a block of its own, for the argument `tree`.
template <class Generation>
typename Generation::Tree* tree(Call& c, const float* points, int32_t n, int32_t d) {
  if (c.isSpoiled("tree") && c.chance(50)) return c.set<void*>("tree", nullptr), nullptr;
  uint64_t bytes = 0;
  Generation::kSize(n, d, &bytes);
  void* const memory = c.memory("tree", static_cast<int64_t>(bytes), Role::input, 8);
  auto* const made = static_cast<typename Generation::Tree*>(memory);
  std::memset(memory, 0, bytes);
  // Without a root a search finds nothing.
  if (c.chance(97)) Generation::build(c, made, points, n, d, 1 + c.random.below(12));
  c.set("tree", made);
  return made;
}

struct Cloud {
  std::vector<float> points;
  int32_t n, d;
};

Cloud cloud(Call& c, int32_t d) {
  Cloud result = {{}, 1 + c.random.below(c.chance(90) ? 60 : 400), d};
  result.points.resize(static_cast<size_t>(result.n) * static_cast<size_t>(d));
  scatter(c, result.points.data(), result.points.size());
  return result;
}

template <class Generation>
typename Generation::Tree* anyTree(Call& c, const Cloud& over) {
  return tree<Generation>(c, over.points.data(), over.n, over.d);
}

void* secondTree(Call& c, const Cloud& over) {
  return c.chance(50) ? anyTree<Second>(c, over) : anyTree<SecondInner>(c, over);
}

void need(Call& c) {
  c.number("n", 1, 100000);
  if (c.has("d")) c.number("d", 1, 16);
  if (c.has("threads")) c.number("threads", 1, 64);
}

// Clears the gaps between fields, unless the call has failed and left the block as it was.
template <class Tree>
void clearGaps(Tree* tree, const float* ownPoints) {
  if (tree->points != ownPoints) return;
  const auto clear = [](auto* after, size_t bytes) { std::memset(static_cast<void*>(after + 1), 0, bytes); };
  clear(&tree->leafSize, 4), clear(&tree->nodeCount, 4);
  for (uint32_t i = 0; i < tree->nodeCount; ++i) clear(&tree->nodes[i].highBound, 4);
}

template <class Generation>
void build(Call& c) {
  const int64_t n = c.number("n", 1, 80), d = c.number("d", 1, 5);
  c.number("leafSize", 1, 12);
  scattered(c, "points", Call::product({n, d}));
  uint64_t bytes = 0;
  const bool possible = Generation::kSize(static_cast<int32_t>(n), static_cast<int32_t>(d), &bytes) == DAX_STS_OK;
  const bool missing = c.isSpoiled("tree");
  c.set("tree", missing ? nullptr : c.memory("tree", possible ? static_cast<int64_t>(bytes) : -1, Role::output, 8));
  if (Block* const block = c.blockOf("tree"); block && possible) {
    auto* const made = reinterpret_cast<typename Generation::Tree*>(block->data);
    const auto* const points = reinterpret_cast<const float*>(block->data + 128);
    block->tidy = [made, points] { clearGaps(made, points); };
  }
  if (!c.has("stack")) return;
  c.work(
      "stack",
      [&](uint64_t* need) {
        const auto query = std::is_same_v<Generation, Second> ? DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize
                                                              : DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner;
        return query(c.get<int32_t>("n"), c.get<int32_t>("d"), need);
      },
      8);
}

template <class Generation>
void relocate(Call& c) {
  const Cloud over = cloud(c, aDimension(c));
  auto* const made = anyTree<Generation>(c, over);
  if (!made) return;
  Block* const block = c.blockOf("tree");
  block->role = Role::output;
  if (c.chance(20)) return;
  // Built elsewhere, where there is nothing any more.
  std::vector<uint64_t> elsewhere(block->bytes / sizeof(uint64_t));
  Generation::build(c, reinterpret_cast<typename Generation::Tree*>(elsewhere.data()), over.points.data(), over.n,
                    over.d, 4);
  std::memcpy(block->data, elsewhere.data(), block->bytes);
}

// --- Searches ---

// Rows of results: `each` entries for every query.
void rowsOfResults(Call& c, int64_t queries, const char* each, const char* counts) {
  const int64_t width = c.number(each, 1, 20);
  for (const char* name : {"indices", "distances"}) c.array(name, Call::product({queries, width}));
  c.array(counts, std::string_view(counts) == "counts" ? Call::product({queries}) : 1);
}

void searchStack(Call& c, int32_t n) {
  c.work(
      "stack",
      [&](uint64_t* bytes) {
        if (!c.has("threads")) return DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize(n, bytes);
        const uint32_t threads = std::max(c.get<uint32_t>("threads"), 1u);
        return DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(n, threads, bytes);
      },
      8);
}

void dimensionAndPool(Call& c, int32_t d) {
  c.set("d", c.isSpoiled("d") ? static_cast<int32_t>(c.pick<int64_t>({c.hostileInteger(), d + 1, d - 1})) : d);
  if (!c.has("pool")) return;
  c.pool();
  if (c.get<uint32_t>("threads") > 64) c.set("threads", uint32_t{64});  // the most that the query has a size for
}

template <bool second>
void nearest(Call& c) {
  const int32_t d = aDimension(c);
  const Cloud over = cloud(c, d);
  dimensionAndPool(c, d);
  if constexpr (second) {
    secondTree(c, over);
    searchStack(c, over.n);
  } else if (anyTree<First>(c, over)) {
    // Its scratch changes.
    c.blockOf("tree")->role = Role::output;
    c.blockOf("tree")->meaningful = [] { return size_t{0}; };
  }
  const int64_t queries = c.number("queryCount", 1, 15);
  scattered(c, "queries", Call::product({queries, d}));
  rowsOfResults(c, queries, "k", "count");
}

void within(Call& c) {
  const int32_t d = aDimension(c);
  const Cloud over = cloud(c, d);
  dimensionAndPool(c, d);
  secondTree(c, over);
  searchStack(c, over.n);
  const int64_t queries = c.has("queryCount") ? c.number("queryCount", 1, 15) : 1;
  scattered(c, c.has("queryCount") ? "queries" : "query", Call::product({queries, d}));
  rowsOfResults(c, queries, "maxResults", c.has("counts") ? "counts" : "count");
  c.real("radius", 0, 30);
  if (!c.has("mask")) return;
  if (auto* const mask = static_cast<uint8_t*>(c.array("mask", over.n))) c.fillMask(mask, static_cast<size_t>(over.n));
  const int64_t most = c.integer("maxResults");
  c.array("list", most < 1 ? -1 : most);
  if (Block* const list = c.blockOf("list")) {
    const auto* const count = c.get<const int32_t*>("count");
    list->meaningful = [count] { return static_cast<size_t>(*count) * sizeof(uint32_t); };
  }
}

// --- Normals ---

void normalsNeed(Call& c) {
  c.number("n", 3, 100000);
  c.number("k", 3, 1000);
}

void normals(Call& c) {
  const int64_t n = c.number("n", 3, 60), k = c.number("k", 3, 12);
  const int32_t held = static_cast<int32_t>(std::clamp<int64_t>(n, 1, 60));
  const float* const points = scattered(c, "points", Call::product({n, 3}));
  std::vector<float> copy(static_cast<size_t>(3 * held));
  if (const Block* const made = c.block(points))
    std::memcpy(copy.data(), points, std::min(made->bytes, copy.size() * sizeof(float)));
  if (tree<First>(c, copy.data(), held, 3)) {
    c.blockOf("tree")->role = Role::output;
    c.blockOf("tree")->meaningful = [] { return size_t{0}; };
  }
  c.chance(50) ? c.set<const float*>("viewpoint", nullptr) : static_cast<void>(scattered(c, "viewpoint", 3));
  c.array("normals", n < 1 ? -1 : n);
  if (Block* const made = c.blockOf("normals")) made->realBytes = sizeof(float);
  c.real("radius", 0.1, 100);
  c.work(
      "buffer",
      [&](uint64_t* bytes) {
        return DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(static_cast<int32_t>(std::max<int64_t>(n, 3)),
                                                            static_cast<int32_t>(k), bytes);
      },
      8);
}

void oneNormal(Call& c) {
  if (c.has("count")) {
    const int64_t count = c.number("count", 4, 40);
    scattered(c, "points", Call::product({count, 3}));
    c.array("estimated", 1);
  } else {
    scattered(c, "point", 3), scattered(c, "viewpoint", 3);
  }
  c.array("normal", 1);
  Block* const normal = c.blockOf("normal");
  if (normal) normal->realBytes = sizeof(float);
  if (normal && !c.has("count")) scatter(c, reinterpret_cast<float*>(normal->data), 4);
}

// --- Voxels ---

void voxelNeed(Call& c) {
  c.number("n", 1, 100000);
}

void voxels(Call& c) {
  auto* const given = c.record<DAX3DPCL_CLOUD3D>("cloud");
  const int32_t n = 1 + c.random.below(120);
  if (given) {
    *given = {n, n, c.elements<float>("points", 3 * n, Role::input)};
    if (given->points) scatter(c, given->points, static_cast<size_t>(3 * n));
    if (c.isSpoiled("cloud")) {
      if (c.chance(50)) given->count = c.pick({0, -1, INT32_MIN});
      if (c.chance(50)) given->points = nullptr;
    }
  }
  if (auto* const box = static_cast<float*>(c.array("box", 6)); box && c.blockOf("box")->bytes) {
    const float low = static_cast<float>(c.between(-50, 0)), high = static_cast<float>(c.between(1, 50));
    std::fill_n(box, 3, low), std::fill_n(box + 3, 3, high);
    c.spoilWord("box", box, 0, 6 * sizeof(float));
  }
  for (const char* name : {"leafX", "leafY", "leafZ"}) c.real(name, 0.5, 10);
  c.array("out", 1);
  const auto memory = [&](const char* name, auto* query, size_t alignment, Role role) {
    uint64_t bytes = 0;
    query(n, &bytes);
    c.set(name, c.isSpoiled(name) ? nullptr : c.memory(name, static_cast<int64_t>(bytes), role, alignment));
  };
  memory("work", DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize, 4, Role::work);
  memory("result", DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize, 8, Role::output);
  if (Block* const result = c.blockOf("result")) {
    result->realBytes = sizeof(float);
    const auto* const found = reinterpret_cast<const DAX3DPCL_CLOUD3D*>(result->data);
    // Between the record and the points there is nothing.
    result->meaningful = [] { return sizeof(DAX3DPCL_CLOUD3D); };
    c.settle = [found, result](uint64_t status) -> uint64_t {
      uint64_t sum = status;
      const auto* const words = reinterpret_cast<const uint32_t*>(result->data + 128);
      for (int32_t i = 0; status == DAX_STS_OK && i < 3 * found->count; ++i) {
        const bool isNan = (words[i] & 0x7FFFFFFF) > 0x7F800000;
        sum = sum * 31 + (isNan ? 1 : words[i]);
      }
      return sum;
    };
  }
}

const Rows rows = {
    {"DAX3DPCL_UTILS_Check_Cloud3D_32f", checkCloud},
    {"DAX3DPCL_SEARCH_KDTREE_BuildIndex", build<First>},
    {"DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2", build<Second>},
    {"DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner", build<SecondInner>},
    {"DAX3DPCL_SEARCH_KDTREE_BufferSize", need},
    {"DAX3DPCL_SEARCH_KDTREE_V2_BufferSize*", need},
    {"DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize*", need},
    {"DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize*", need},
    {"DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize*", need},
    {"DAX3DPCL_SEARCH_KDTREE_HandleRerange", relocate<First>},
    {"DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2", relocate<Second>},
    {"DAX3DPCL_SEARCH_KDTREE_KNearestSearch", nearest<false>},
    {"DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2", nearest<true>},
    {"DAX3DPCL_KDTREE_KNearestSearch_MT", nearest<true>},
    {"DAX3DPCL_SEARCH_KDTREE_RNearestSearch*", within},
    {"DAX3DPCL_KDTREE_RNearestSearch_MT", within},
    {"DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize", normalsNeed},
    {"DAX3DPCL_FEATURE_NORM_PCAEstimate", normals},
    {"DAX3DPCL_FEATURE_NORM_*", oneNormal},
    {"DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize", voxelNeed},
    {"DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize", voxelNeed},
    {"DAX3DPCL_PREP_SAMPLE_VoxelGrid", voxels},
};

}  // namespace

}  // namespace dax::hostile
