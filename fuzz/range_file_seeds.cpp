#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"
#include "fuzz/seeds.h"
#include "tests/pcl/record/range_sample.h"

namespace dax::fuzz {
namespace {

// A file that `write` writes.
template <class Write>
std::string written(Write write, const DAX3D_RANGE_V4& record) {
  const std::string path = "/tmp/dax-fuzz-seed-" + std::to_string(getpid());
  require(write(path.c_str(), &record) == DAX_STS_OK);
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  std::remove(path.c_str());
  return bytes;
}

}  // namespace

std::vector<Seed> seeds() {
  std::vector<Seed> all;
  for (const uint32_t type : {0u, 1u}) {
    for (const uint32_t colour : {0u, 200u, 201u}) {
      const test::RangeSample sample(5, 3, type, colour);
      all.push_back({"type" + std::to_string(type) + "-colour" + std::to_string(colour),
                     written(DAX3DPCL_UTILS_WRITE_RANGE_V4_V2, sample.record)});
    }
  }
  const test::RangeSample sample(4, 4, DAX3D_RANGE_WITH_MASK, 0);
  all.push_back({"plain", written(DAX3DPCL_UTILS_WRITE_RANGE_V4, sample.record)});
  // Two files behind each other: every chunk twice.
  const std::string twice = all[1].bytes + all[2].bytes;
  all.push_back({"twice", twice});
  all.push_back({"truncated", twice.substr(twice.size() - 60)});
  all.push_back({"empty", ""});
  return all;
}

}  // namespace dax::fuzz
