// Any bytes as a point-cloud file.
#include "fuzz/cloud_format.h"
#include "tools/dax/cloud/pcd_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto write = [](const dax::tool::Cloud& cloud, bool text) {
    return dax::tool::writePcd(cloud, {text, cloud.isShifted(), false});
  };
  dax::fuzz::expectRoundTrip(data, size, dax::tool::readPcd, write);
  return 0;
}
