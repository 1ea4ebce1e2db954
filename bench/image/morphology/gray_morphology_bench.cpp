#include "daxi/gray_morphology.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

template <class T>
using Filter = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, const DaxiGrayMorphologyCfg*, void*);
using Query = DaxStatus (*)(DaxiSize, const DaxiGrayMorphologyCfg*, uint64_t*);

template <class T>
bench::Task prepare(Query query, Filter<T> filter, int32_t side) {
  const DaxiGrayMorphologyCfg cfg = {{side, side}, side / 2, side / 2, 1, DAXI_BORDER_CLIP, 0};
  uint64_t bytes = 0;
  bench::require(query(kSize, &cfg, &bytes));
  const auto buffer = std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {
      [=] { bench::require(filter(from.data(), kSize.width, to.data(), kSize.width, kSize, &cfg, buffer->data())); },
      [=] { return bench::digest(to); }};
}

template <class T>
bench::Task prepare3x3(DaxStatus (*filter)(const T*, int32_t, T*, int32_t, DaxiSize)) {
  const Image<T> from = bench::noise<T>();
  const Image<T> to(kSize);
  return {[=] { bench::require(filter(from.data(), kSize.width, to.data(), kSize.width, kSize)); },
          [=] { return bench::digest(to); }};
}

template <int32_t side>
bench::Task erode8() {
  return prepare(DAXI_GrayErodeRectBufferSize_8u, DAXI_GrayErodeRect_8u_C1R, side);
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"gray erosion 3 x 3, 8u", kBytes, [] { return prepare3x3(DAXI_GrayErode3x3_8u_C1R); }},
    {"gray erosion 3 x 3, 32f", 4 * kBytes, [] { return prepare3x3(DAXI_GrayErode3x3_32f_C1R); }},
    {"gray erosion 15 x 15, 8u", kBytes, erode8<15>},
    {"gray erosion 61 x 61, 8u", kBytes, erode8<61>},
    {"gray erosion 255 x 255, 8u", kBytes, erode8<255>},
    {"gray erosion 15 x 15, 16u", 2 * kBytes,
     [] { return prepare(DAXI_GrayErodeRectBufferSize_16u, DAXI_GrayErodeRect_16u_C1R, 15); }},
    {"gray erosion 15 x 15, 32f", 4 * kBytes,
     [] { return prepare(DAXI_GrayErodeRectBufferSize_32f, DAXI_GrayErodeRect_32f_C1R, 15); }},
    {"gray top-hat 15 x 15, 8u", kBytes,
     [] { return prepare(DAXI_GrayTopHatBufferSize_8u, DAXI_GrayTopHat_8u_C1R, 15); }},
};

}  // namespace
