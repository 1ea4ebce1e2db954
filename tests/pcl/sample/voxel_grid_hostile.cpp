// Clouds and voxels.
#include <cstddef>

#include "dax3dpcl.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void checkCloud(Call& c) {
  const int64_t max = c.number("maxCount", 1, 100);
  auto* const cloud = c.record<DAX3DPCL_CLOUD3D>("cloud");
  if (!cloud) return;
  *cloud = {200, static_cast<int32_t>(std::clamp<int64_t>(max, 1, 100)), c.elements<float>("points", -1, Role::input)};
  c.spoilWord("cloud", cloud, 0, offsetof(DAX3DPCL_CLOUD3D, points));
  if (c.isSpoiled("cloud", 30)) cloud->points = nullptr;
}

int32_t cloud(Call& c) {
  const int32_t n = 1 + c.random.below(120);
  auto* const given = c.record<DAX3DPCL_CLOUD3D>("cloud");
  if (!given) return n;
  *given = {n, n, c.elements<float>("points", 3 * n, Role::input)};
  c.fillReals(given->points, static_cast<size_t>(3 * n));
  if (c.isSpoiled("cloud", 60)) given->count = c.pick({0, -1, INT32_MIN});
  if (c.isSpoiled("cloud", 60)) given->points = nullptr;
  return n;
}

// The cloud at the start of the result and its points; between them there is nothing, and any NaN is as good as another.
void compareCloud(Call& c) {
  Block* const result = c.blockOf("result");
  if (!result) return;
  result->realBytes = sizeof(float);
  result->meaningful = [] { return sizeof(DAX3DPCL_CLOUD3D); };
  c.settle = [result](uint64_t status) -> uint64_t {
    const auto* const found = reinterpret_cast<const DAX3DPCL_CLOUD3D*>(result->data);
    const auto* const words = reinterpret_cast<const uint32_t*>(result->data + 128);
    uint64_t sum = status;
    for (int32_t i = 0; status == DAX_STS_OK && i < 3 * found->count; ++i) {
      const bool isNan = (words[i] & 0x7FFFFFFF) > 0x7F800000;
      sum = sum * 31 + (isNan ? 1 : words[i]);
    }
    return sum;
  };
}

void voxels(Call& c) {
  const int32_t n = cloud(c);
  const auto low = static_cast<double>(c.between(-50, 0)), high = static_cast<double>(c.between(1, 50));
  void* const box = c.around("box", {low, low, low, high, high, high}, 1);
  if (const Block* const made = c.block(box); made && made->bytes) c.spoilWord("box", box, 0, made->bytes);
  for (const char* name : {"leafX", "leafY", "leafZ"}) c.real(name, 0.5, 10);
  c.array("out", 1);
  const auto memory = [&](const char* name, auto* query, size_t alignment, Role role) {
    uint64_t bytes = 0;
    query(n, &bytes);
    c.set(name, c.isSpoiled(name) ? nullptr : c.memory(name, static_cast<int64_t>(bytes), role, alignment));
  };
  memory("work", DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize, 4, Role::work);
  memory("result", DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize, 8, Role::output);
  compareCloud(c);
}

const Rows rows = {
    {"DAX3DPCL_UTILS_Check_Cloud3D_32f", checkCloud},
    {"DAX3DPCL_PREP_SAMPLE_VoxelGrid", voxels},
};

}  // namespace
}  // namespace dax::hostile
