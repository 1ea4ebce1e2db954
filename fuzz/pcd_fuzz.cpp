// Any bytes as a point-cloud file.
#include "fuzz/cloud_format.h"
#include "tools/dax/cloud/pcd_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  dax::fuzz::expectRoundTrip(data, size, dax::tool::readPcd, dax::tool::writePcd);
  return 0;
}
