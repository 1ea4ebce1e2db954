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
#include "tools/dax/pcd_format.h"
#include "tools/dax/ply_format.h"

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

Bytes bytesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

void saveClouds(const std::string& ply, const std::string& pcd) {
  dax::tool::Cloud cloud = {{1, 2, 3, -4.5f, 0, 1e-7f, 7, 8, 9e9f}, {}, 0};
  for (const bool normals : {false, true}) {
    if (normals) cloud.normals = {0, 0, 1, 0, 1, 0, 0, 0.5f, 0, -1, 0, 0.25f};
    for (const bool text : {false, true}) {
      const std::string name = std::string(normals ? "/normals" : "/points") + (text ? "-text" : "-binary");
      save(ply + name, bytesOf(dax::tool::writePly(cloud, text)));
      save(pcd + name, bytesOf(dax::tool::writePcd(cloud, text)));
    }
  }
  save(ply + "/types",
       bytesOf("ply\r\nformat ascii 1.0\ncomment c\nelement vertex 2\nproperty uchar red\n"
               "property double x\nproperty short y\nproperty int z\nelement face 1\n"
               "property list uchar int vertex_indices\nend_header\n255 1e3 -2 +3\n0 nan 2 3\n3 0 1 1\n"));
  save(pcd + "/types", bytesOf("# .PCD v.7\nVERSION .7\nFIELDS x y z _ rgb\nSIZE 8 2 1 1 4\nTYPE F I U U F\n"
                               "COUNT 1 1 1 3 1\nWIDTH 2\nHEIGHT 1\nPOINTS 2\nDATA ascii\n"
                               "1.5 -2 3 0 0 0 4.2e-38\nnan 1 1 0 0 0 0\n"));
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

// What the tree target takes: points in no order, of every dimension and kind of coordinate.
void saveTrees(const std::string& directory) {
  for (const int floats : {0, 0x80}) {
    for (int d = 0; d < 5; ++d) {
      Bytes bytes = {static_cast<char>(floats + d), static_cast<char>(d), static_cast<char>(20 * d), 12};
      for (int i = 0; i < 100; ++i) {
        const auto x = static_cast<float>(i * 37 % 101 - 50) / 8;
        const auto* const from = reinterpret_cast<const char*>(&x);
        bytes.insert(bytes.end(), from, from + (floats ? sizeof x : 0));
        if (!floats) bytes.push_back(static_cast<char>(i * 37 % 101));
      }
      save(directory + "/dimension" + std::to_string(d + 1) + (floats ? "-floats" : "-bytes"), bytes);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string files = std::string(argv[1]) + "/range_file", records = std::string(argv[1]) + "/range_record";
  std::filesystem::create_directories(files);
  std::filesystem::create_directories(records);
  const std::string ply = std::string(argv[1]) + "/ply", pcd = std::string(argv[1]) + "/pcd";
  std::filesystem::create_directories(ply);
  std::filesystem::create_directories(pcd);
  saveClouds(ply, pcd);
  saveText(argv[1]);
  const std::string trees = std::string(argv[1]) + "/kdtree";
  std::filesystem::create_directories(trees);
  saveTrees(trees);
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
