#include "dax3dpcl/speckle.h"

#include "bench/pcl/filter/speckle_bench.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

bench::Task prepare(const Image<int16_t>& from) {
  const Image<int16_t> to(kSize);
  uint64_t bytes = 0;
  bench::require(DAX3DPCL_PREP_FILTER_Speckle_BufferSize(kSize, &bytes));
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] {
            bench::require(DAX3DPCL_PREP_FILTER_Speckle_S16(kSize, from.data(), to.data(), {0, 0},
                                                            {kSize.width, kSize.height}, bench::kMaxDifference,
                                                            bench::kMaxSpeckle, bench::kInvalid, buffer->data()));
          },
          [=] { return bench::digest(to); }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * sizeof(int16_t);

const bench::Own operations[] = {
    {"speckle filter, 16s, speckled surface", kBytes, [] { return prepare(bench::speckledSurface()); }},
    {"speckle filter, 16s, noise", kBytes, [] { return prepare(bench::noiseSurface()); }},
};

}  // namespace
