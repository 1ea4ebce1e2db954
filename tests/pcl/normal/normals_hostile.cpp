#include "dax3dpcl.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// A tree over the points, whose scratch changes.
void tree(Call& c, const float* points, int32_t n) {
  if (c.isSpoiled("tree")) return c.set<void*>("tree", nullptr);
  uint64_t bytes = 0;
  DAX3DPCL_SEARCH_KDTREE_BufferSize(n, 3, &bytes);
  void* const made = c.memory("tree", static_cast<int64_t>(bytes), Role::output, 8);
  DAX3DPCL_SEARCH_KDTREE_BuildIndex(static_cast<DAX3DPCL_KDTREE*>(made), points, n, 3, 1 + c.random.below(12));
  c.set("tree", made);
  c.meansNothing("tree");
}

void normals(Call& c) {
  const int64_t n = c.number("n", 3, 60);
  c.number("k", 3, 12);
  const auto held = static_cast<int32_t>(std::clamp<int64_t>(n, 1, 60));
  const float* const points = c.reals<float>("points", Call::product({n, 3}));
  std::vector<float> copy(static_cast<size_t>(3 * held));
  if (const Block* const made = c.block(points))
    std::memcpy(copy.data(), points, std::min(made->bytes, copy.size() * sizeof(float)));
  tree(c, copy.data(), held);
  c.chance(50) ? c.set<const float*>("viewpoint", nullptr) : static_cast<void>(c.reals<float>("viewpoint", 3));
  c.array("normals", std::max<int64_t>(n, -1));
  if (Block* const made = c.blockOf("normals")) made->realBytes = sizeof(float);
  c.real("radius", 0.1, 100);
}

void oneNormal(Call& c) {
  if (c.has("count")) {
    c.draw("count");
    c.reals<float>("points", Call::product({c.integer("count"), 3}));
  } else {
    c.reals<float>("point", 3), c.reals<float>("viewpoint", 3);
  }
  c.array("normal", 1);
  Block* const normal = c.blockOf("normal");
  if (normal) normal->realBytes = sizeof(float);
  if (normal && !c.has("count")) c.fillReals(reinterpret_cast<float*>(normal->data), 4);
}

const Rows rows = {
    {"DAX3DPCL_FEATURE_NORM_PCAEstimate", normals},
    {"DAX3DPCL_FEATURE_NORM_Compute_32f", oneNormal},
    {"DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I", oneNormal},
};

}  // namespace
}  // namespace dax::hostile
