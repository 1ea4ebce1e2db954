// Writes the seed corpora of the fuzz targets into DIRECTORY/<target>/.
//
// usage: fuzz_seeds DIRECTORY
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
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

void saveText(const std::string& folder) {
  std::filesystem::create_directories(folder + "/points");
  std::filesystem::create_directories(folder + "/truth");
  const auto text = [&](const std::string& name, std::string_view content) {
    save(folder + name, Bytes(content.begin(), content.end()));
  };
  text("/points/commas", "x,y\n1,2.5\n-3e-4,0x10\n\n# end\n");
  text("/points/marked", "\xEF\xBB\xBF\"a\";\"b\"\r\n1;2;3\r\n");
  text("/points/blanks", "1 2  3 4 5\n6 7 nan 9 1e999\n");
  text("/truth/two", R"({"width": 9, "height": 8, "parts": [{"kind": "disc", "x": 1, "y": 2.5, "area": 30},
    {"kind": "bar", "x": 1, "y": 2, "area": 3, "angle": -30, "angle_period": 180}]})");
  text("/truth/none", R"({"width": 1e99, "height": [], "parts": [[[[{}]]]]})");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string files = std::string(argv[1]) + "/range_file", records = std::string(argv[1]) + "/range_record";
  std::filesystem::create_directories(files);
  std::filesystem::create_directories(records);
  saveText(argv[1]);
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
