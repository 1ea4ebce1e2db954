#include "daxi/erode3x3.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

bench::Task prepare(int32_t iterations) {
  const Image<uint8_t> from = bench::smoothBlobMask();
  const Image<uint8_t> to(kSize);
  uint64_t bytes = 0;
  bench::require(DAXI_Erode3x3BufferSize_8u(kSize, &bytes));
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] {
            bench::require(DAXI_Erode3x3_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, iterations,
                                                buffer->data()));
          },
          [=] { return bench::digest(to); }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"erosion, 1 iteration", kBytes, [] { return prepare(1); }},
    {"erosion, 5 iterations", kBytes, [] { return prepare(5); }},
};

}  // namespace
