// Shares of 0..1.
#include <cmath>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Each thread has tables of a megabyte.
void fewThreads(Call& c) {
  if (c.has("threads")) c.number("threads", 1, 2);
}

// Whether there is any pixel to choose from is found while they are counted.
void median(Call& c) {
  fewThreads(c);
  c.worksBeforeFailing = true;
}

void percentiles(Call& c) {
  fewThreads(c);
  c.worksBeforeFailing = true;
  const int64_t count = c.number("count", 1, 256, 8);
  const bool valid = count >= 1 && count <= 256;
  auto* const shares = static_cast<double*>(c.array("shares", valid ? count : -1));
  c.array("values", valid ? count : -1);
  if (!shares || !valid) return;
  for (int64_t i = 0; i < count; ++i) shares[i] = static_cast<double>(c.between(0, 1000)) / 1000;
  if (c.isSpoiled("shares")) shares[c.between(0, count - 1)] = c.chance(50) ? NAN : 1.5;
}

const Rows rows = {{"DAXI_Median_*", median},
                   {"DAXI_Percentiles_*", percentiles},
                   {"DAXI_MedianBufferSize_*", fewThreads},
                   {"DAXI_PercentilesBufferSize_*", fewThreads}};

}  // namespace
}  // namespace dax::hostile
