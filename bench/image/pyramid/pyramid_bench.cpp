#include "daxi/pyramid.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

const DaxiSize half = {(kSize.width + 1) / 2, (kSize.height + 1) / 2};

template <class Call>
bench::Task prepare(DaxiSize from, DaxiSize to, uint64_t bytes, Call call) {
  const Image<uint8_t> src = bench::noise<uint8_t>(from);
  const Image<uint8_t> result(to);
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] { bench::require(call(src.data(), from.width, result.data(), to.width, from, buffer->data())); },
          [=] { return bench::digest(result); }};
}

bench::Task prepareDown() {
  uint64_t bytes = 0;
  bench::require(DAXI_PyrDownBufferSize_8u(kSize, &bytes));
  return prepare(kSize, half, bytes, DAXI_PyrDown_8u_C1R);
}

bench::Task prepareUp() {
  uint64_t bytes = 0;
  bench::require(DAXI_PyrUpBufferSize_8u(half, kSize, &bytes));
  return prepare(half, kSize, bytes,
                 [](const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, void* buffer) {
                   return DAXI_PyrUp_8u_C1R(src, srcStep, dst, dstStep, size, kSize, buffer);
                 });
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"pyramid down, 8u", kBytes, prepareDown},
    {"pyramid up, 8u", kBytes, prepareUp},
};

}  // namespace
