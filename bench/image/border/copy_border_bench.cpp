#include "bench/image/border/copy_border_bench.h"

#include "bench/support/operation.h"
#include "daxi/copy_border.h"

namespace {

using bench::Image;
using bench::kBorder;
using bench::kBorderedSize;
using bench::kBorderValue;
using bench::kSize;

template <class T, class... Value>
using Function = DaxStatus (*)(const T*, int32_t, DaxiSize, T*, int32_t, DaxiSize, int32_t, uint32_t, Value...);

template <class T, class... Value>
bench::Task prepare(Function<T, Value...> copy, Value... value) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kBorderedSize);
  return {[=] {
            bench::require(copy(from.data(), kSize.width, kSize, to.data(), kBorderedSize.width, kBorderedSize, kBorder,
                                kBorder, value...));
          },
          [=] { return bench::digest(to); }};
}

template <class T>
constexpr size_t kBytes = bench::pixelCount(bench::bordered(bench::kUsualSize)) * sizeof(T);

const bench::Own operations[] = {
    {"replicate border of 16, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_CopyReplicateBorder_8u_C1R); }},
    {"replicate border of 16, 32f", kBytes<float>, [] { return prepare(DAXI_CopyReplicateBorder_32f_C1R); }},
    {"mirror border of 16, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_CopyMirrorBorder_8u_C1R); }},
    {"symmetric border of 16, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_CopySymmetricBorder_8u_C1R); }},
    {"circular border of 16, 8u", kBytes<uint8_t>, [] { return prepare(DAXI_CopyCircularBorder_8u_C1R); }},
    {"constant border of 16, 8u", kBytes<uint8_t>,
     [] { return prepare(DAXI_CopyConstBorder_8u_C1R, uint8_t{kBorderValue}); }},
};

}  // namespace
