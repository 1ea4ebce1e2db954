#include "tools/dax/cloud/pcd_format.h"

#include "fuzz/cloud_format.h"
#include "fuzz/seeds.h"

std::vector<dax::fuzz::Seed> dax::fuzz::seeds() {
  std::vector<Seed> all = cloudSeeds([](const tool::Cloud& cloud, bool text) {
    return tool::writePcd(cloud, {text, false, false});
  });
  all.push_back({"types",
                 "# .PCD v.7\nVERSION .7\nFIELDS x y z _ rgb\nSIZE 8 2 1 1 4\nTYPE F I U U F\n"
                 "COUNT 1 1 1 3 1\nWIDTH 2\nHEIGHT 1\nPOINTS 2\nDATA ascii\n"
                 "1.5 -2 3 0 0 0 4.2e-38\nnan 1 1 0 0 0 0\n"});
  return all;
}
