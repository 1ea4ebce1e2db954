// Trees of both generations, over any points, and their searches.
#include <cstddef>

#include "dax3dpcl.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

struct Cloud {
  int32_t n, d;
  std::vector<float> points;
};

Cloud cloud(Call& c) {
  Cloud made = {1 + c.random.below(c.chance(90) ? 60 : 400), c.chance(60) ? 3 : 1 + c.random.below(6), {}};
  made.points.resize(static_cast<size_t>(made.n * made.d));
  c.fillReals(made.points.data(), made.points.size());
  return made;
}

struct First {
  using Tree = DAX3DPCL_KDTREE;
  static constexpr auto* kSize = DAX3DPCL_SEARCH_KDTREE_BufferSize;
  static void build(Tree* tree, const Cloud& over, int32_t leafSize) {
    DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, over.points.data(), over.n, over.d, leafSize);
  }
};

template <auto size, auto stackSize, auto builder>
struct SecondKind {
  using Tree = DAX3DPCL_KDTREE_V2;
  static constexpr auto* kSize = size;
  static void build(Tree* tree, const Cloud& over, int32_t leafSize) {
    uint64_t bytes = 0;
    stackSize(over.n, over.d, &bytes);
    std::vector<uint64_t> stack(bytes / sizeof(uint64_t));
    builder(tree, over.points.data(), over.n, over.d, leafSize, stack.data());
  }
};
using Second = SecondKind<DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize,
                          DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2>;
using SecondInner =
    SecondKind<DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner, DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner,
               DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner>;

// A tree in a block of its own, for the argument `tree`.
template <class Generation>
void tree(Call& c, const Cloud& over) {
  if (c.isSpoiled("tree", 50)) return c.set<void*>("tree", nullptr);
  uint64_t bytes = 0;
  Generation::kSize(over.n, over.d, &bytes);
  auto* const made =
      static_cast<typename Generation::Tree*>(c.memory("tree", static_cast<int64_t>(bytes), Role::input, 8));
  std::memset(static_cast<void*>(made), 0, bytes);
  // Without a root a search finds nothing.
  if (c.chance(97)) Generation::build(made, over, 1 + c.random.below(12));
  c.set("tree", made);
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
  c.reals<float>("points", Call::product({n, d}));
  uint64_t bytes = 0;
  const bool possible = Generation::kSize(static_cast<int32_t>(n), static_cast<int32_t>(d), &bytes) == DAX_STS_OK;
  const bool missing = c.isSpoiled("tree");
  c.set("tree", missing ? nullptr : c.memory("tree", possible ? static_cast<int64_t>(bytes) : -1, Role::output, 8));
  if (Block* const block = c.blockOf("tree"); block && possible) {
    auto* const made = reinterpret_cast<typename Generation::Tree*>(block->data);
    const auto* const points = reinterpret_cast<const float*>(block->data + 128);
    block->tidy = [made, points] { clearGaps(made, points); };
  }
}

template <class Generation>
void relocate(Call& c) {
  const Cloud over = cloud(c);
  tree<Generation>(c, over);
  Block* const block = c.blockOf("tree");
  if (!block) return;
  block->role = Role::output;
  if (c.chance(20)) return;
  // Built elsewhere, where there is nothing any more.
  std::vector<uint64_t> elsewhere(block->bytes / sizeof(uint64_t));
  Generation::build(reinterpret_cast<typename Generation::Tree*>(elsewhere.data()), over, 4);
  std::memcpy(block->data, elsewhere.data(), block->bytes);
}

// --- Searches ---

void searchStack(Call& c, int32_t n) {
  const auto query = [&](uint64_t* bytes) {
    if (!c.has("threads")) return DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize(n, bytes);
    const uint32_t threads = std::max(c.get<uint32_t>("threads"), 1u);
    return DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(n, threads, bytes);
  };
  c.work("stack", query, 8);
}

// A tree and queries, and rows of results: `each` entries for every query.
Cloud search(Call& c, const char* each) {
  const Cloud over = cloud(c);
  const int32_t d = over.d;
  c.set("d", c.isSpoiled("d") ? static_cast<int32_t>(c.pick<int64_t>({c.hostileInteger(), d + 1, d - 1})) : d);
  if (c.has("pool")) {
    c.pool();
    if (c.get<uint32_t>("threads") > 64) c.set("threads", uint32_t{64});  // the most that the query has a size for
  }
  if (!c.has("stack")) {
    tree<First>(c, over);
    if (Block* const scratch = c.blockOf("tree")) scratch->role = Role::output, c.meansNothing("tree");
  } else {
    c.chance(50) ? tree<Second>(c, over) : tree<SecondInner>(c, over);
    searchStack(c, over.n);
  }
  const int64_t queries = c.has("queryCount") ? c.number("queryCount", 1, 15) : 1;
  c.reals<float>(c.has("queryCount") ? "queries" : "query", Call::product({queries, d}));
  const int64_t width = c.number(each, 1, 20);
  for (const char* name : {"indices", "distances"}) c.array(name, Call::product({queries, width}));
  c.has("counts") ? c.array("counts", Call::product({queries})) : c.array("count", 1);
  return over;
}

void nearest(Call& c) {
  search(c, "k");
}

void within(Call& c) {
  const Cloud over = search(c, "maxResults");
  c.real("radius", 0, 30);
  if (!c.has("mask")) return;
  if (auto* const mask = static_cast<uint8_t*>(c.array("mask", over.n))) c.fillMask(mask, static_cast<size_t>(over.n));
  const void* const list = c.array("list", std::max<int64_t>(c.integer("maxResults"), -1));
  c.onlyMeans(list,
              [count = c.get<const int32_t*>("count")] { return static_cast<size_t>(*count) * sizeof(uint32_t); });
}

const Rows rows = {
    {"DAX3DPCL_SEARCH_KDTREE_BuildIndex", build<First>},
    {"DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2", build<Second>},
    {"DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner", build<SecondInner>},
    {"DAX3DPCL_SEARCH_KDTREE_HandleRerange", relocate<First>},
    {"DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2", relocate<Second>},
    {"DAX3DPCL_SEARCH_KDTREE_KNearestSearch", nearest},
    {"DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2", nearest},
    {"DAX3DPCL_KDTREE_KNearestSearch_MT", nearest},
    {"DAX3DPCL_SEARCH_KDTREE_RNearestSearch*", within},
    {"DAX3DPCL_KDTREE_RNearestSearch_MT", within},
};

}  // namespace
}  // namespace dax::hostile
