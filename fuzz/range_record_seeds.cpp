#include "fuzz/seeds.h"
#include "tests/pcl/record/range_sample.h"

// What the target takes: which pointers are set, and the record.
std::vector<dax::fuzz::Seed> dax::fuzz::seeds() {
  std::vector<Seed> all;
  for (const uint32_t type : {0u, 1u}) {
    for (const uint32_t colour : {0u, 200u, 201u}) {
      const test::RangeSample sample(5, 3, type, colour);
      std::string bytes = {1, 1, static_cast<char>(colour == 200 ? 7 : 1)};
      bytes.append(reinterpret_cast<const char*>(&sample.record), sizeof sample.record);
      all.push_back({"type" + std::to_string(type) + "-colour" + std::to_string(colour), bytes});
    }
  }
  return all;
}
