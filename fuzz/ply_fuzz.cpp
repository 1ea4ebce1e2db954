// Any bytes as a polygon file.
#include "fuzz/cloud_format.h"
#include "tools/dax/cloud/ply_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto write = [](const dax::tool::Cloud& cloud, bool text) {
    return dax::tool::writePly(cloud, {text, cloud.isShifted(), false});
  };
  dax::fuzz::expectRoundTrip(data, size, dax::tool::readPly, write);
  return 0;
}
