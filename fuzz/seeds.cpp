// Writes the seed corpora of the fuzz targets into DIRECTORY/<target>/.
//
// usage: fuzz_seeds DIRECTORY
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "dax3dpcl.h"
#include "tests/support/range_sample.h"

namespace {

using Bytes = std::vector<char>;
using dax::test::RangeSample;

void save(const std::string& path, const Bytes& bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

Bytes load(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// What the record target takes: which pointers are set, and the record.
void saveRecord(const std::string& path, const RangeSample& sample, char range, char mask, char colour) {
  Bytes bytes = {mask, range, colour};
  const auto* const record = reinterpret_cast<const char*>(&sample.record);
  bytes.insert(bytes.end(), record, record + sizeof(sample.record));
  save(path, bytes);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string files = std::string(argv[1]) + "/range_file", records = std::string(argv[1]) + "/range_record";
  std::filesystem::create_directories(files);
  std::filesystem::create_directories(records);
  int failed = 0;
  for (const uint32_t type : {0u, 1u}) {
    for (const uint32_t colour : {0u, 200u, 201u}) {
      const RangeSample sample(5, 3, type, colour);
      const std::string name = "/type" + std::to_string(type) + "-colour" + std::to_string(colour);
      failed |= DAX3DPCL_UTILS_WRITE_RANGE_V4_V2((files + name).c_str(), &sample.record) != DAX_STS_OK;
      saveRecord(records + name, sample, 1, 1, colour == 200 ? 7 : 1);
    }
  }
  const RangeSample sample(4, 4, DAX3D_RANGE_WITH_MASK, 0);
  failed |= DAX3DPCL_UTILS_WRITE_RANGE_V4((files + "/plain").c_str(), &sample.record) != DAX_STS_OK;
  // Two files behind each other: every chunk twice.
  Bytes twice = load(files + "/type0-colour200");
  const Bytes other = load(files + "/type0-colour201");
  twice.insert(twice.end(), other.begin(), other.end());
  save(files + "/twice", twice);
  save(files + "/truncated", Bytes(twice.end() - 60, twice.end()));
  save(files + "/empty", {});
  return failed;
}
