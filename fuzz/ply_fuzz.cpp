// Any bytes as a polygon file.
#include "fuzz/cloud_format.h"
#include "tools/dax/cloud/ply_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  dax::fuzz::expectRoundTrip(data, size, dax::tool::readPly, dax::tool::writePly);
  return 0;
}
