#include "dax3dpcl/range_to_xyz.h"

#include <algorithm>

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

using Convert = DaxStatus (*)(const DAX3DPCL_RANGE_MAP*, void*, int32_t, float**, DAX3DPCL_CLOUD_SIZE*);

// Drop-outs: the smooth blobs of the other benchmarks are the valid pixels; or all pixels are valid.
template <class T>
bench::Task prepare(Convert convert, bool grid, bool dropOuts, int32_t organized) {
  const Image<T> values = bench::noise<T>();
  const Image<uint8_t> mask = bench::smoothBlobMask();
  if (!dropOuts) std::fill(mask.pixels->begin(), mask.pixels->end(), uint8_t{255});
  uint64_t bytes = 0;
  bench::require(DAX3DPCL_PREP_CONVERT_Range2XYZ_ResultSize_16s32f(kSize, &bytes));
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  DAX3DPCL_RANGE_MAP map = {kSize.height, kSize.width, {0.1f, 0.1f, 0.01f, -96, -54, 200},
                            nullptr,      mask.data(), values.data()};
  if (!grid) map = {kSize.height, kSize.width, {0.01f, 200, 1500, 1500, 960, 540}, nullptr, mask.data(), values.data()};
  return {[=] {
            float* points = nullptr;
            DAX3DPCL_CLOUD_SIZE size;
            bench::require(convert(&map, buffer->data(), organized, &points, &size));
          },
          [=] { return values.data() && mask.data() ? bench::digest(buffer->data(), buffer->size()) : 0; }};
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize) * 12;

const bench::Own operations[] = {
    {"range to XYZ, organized, 16s", kBytes,
     [] { return prepare<int16_t>(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f, true, false, 1); }},
    {"range to XYZ, organized, 32f", kBytes,
     [] { return prepare<float>(DAX3DPCL_PREP_CONVERT_Range2XYZ_32f32f, true, false, 1); }},
    {"range to XYZ, organized, 16s, half valid", kBytes,
     [] { return prepare<int16_t>(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f, true, true, 1); }},
    {"range to XYZ, packed, 16s", kBytes,
     [] { return prepare<int16_t>(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f, true, false, 0); }},
    {"range to XYZ, packed, 16s, half valid", kBytes / 2,
     [] { return prepare<int16_t>(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f, true, true, 0); }},
    {"depth to XYZ, organized, 16s", kBytes,
     [] { return prepare<int16_t>(DAX3DPCL_PREP_CONVERT_Depth2XYZ_16s32f, false, false, 1); }},
};

}  // namespace
