// Any bytes as the truth of a scene: a failure, or parts that have an area and a period.
#include "fuzz/memory_file.h"
#include "tools/dax/base/failure.h"
#include "tools/dax/io/truth.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const dax::fuzz::MemoryFile file(data, size);
  try {
    const dax::tool::Truth truth = dax::tool::readTruth(file.path());
    for (const dax::tool::TruePart& part : truth.parts) dax::fuzz::require(part.area > 0 && part.anglePeriod > 0);
  } catch (const dax::tool::Failure&) {
  }
  return 0;
}
