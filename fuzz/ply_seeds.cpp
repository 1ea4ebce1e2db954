#include "tools/dax/cloud/ply_format.h"

#include "fuzz/cloud_format.h"
#include "fuzz/seeds.h"

std::vector<dax::fuzz::Seed> dax::fuzz::seeds() {
  std::vector<Seed> all = cloudSeeds([](const tool::Cloud& cloud, bool text) {
    return tool::writePly(cloud, {text, false, false});
  });
  all.push_back({"types",
                 "ply\r\nformat ascii 1.0\ncomment c\nelement vertex 2\nproperty uchar red\n"
                 "property double x\nproperty short y\nproperty int z\nelement face 1\n"
                 "property list uchar int vertex_indices\nend_header\n255 1e3 -2 +3\n0 nan 2 3\n3 0 1 1\n"});
  return all;
}
