// Any bytes as a table of points: a failure, or as many finite x as y.
#include <cmath>

#include "fuzz/memory_file.h"
#include "tools/dax/base/failure.h"
#include "tools/dax/io/points_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const dax::fuzz::MemoryFile file(data, size);
  for (const int yColumn : {1, 2, 5}) {
    try {
      const dax::tool::Points points = dax::tool::readPoints(file.path(), 1, yColumn);
      dax::fuzz::require(points.x.size() == points.y.size());
      for (const double x : points.x) dax::fuzz::require(std::isfinite(x));
    } catch (const dax::tool::Failure&) {
    }
  }
  return 0;
}
