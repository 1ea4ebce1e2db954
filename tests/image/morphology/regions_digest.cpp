// Distances, reconstructions, watersheds, thinning, windows of any shape.
#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

TEST(Digests, RegionsOfMasks) {
  Digest digest;
  Image mask = hills({150, 90}, 3), dst(mask.size());
  mask.fill([&](int32_t x, int32_t y) { return mask.at(x, y) > 110 ? 255 : 0; });
  TestImage<float> distances(mask.size());
  TestImage<int32_t> labels(mask.size());
  std::vector<double> buffer(1 << 16);
  DaxiFlatMaskCfg cfg;
  EXPECT_EQ(DAXI_FlatMaskDefaultCfg(&cfg), DAX_STS_OK);
  const uint8_t element[] = {0, 1, 1, 1, 1, 0};
  const auto run = [&](auto function, auto& to, auto... parameters) {
    EXPECT_EQ(function(mask.data(), 150, to.data(), 150, mask.size(), parameters..., buffer.data()), DAX_STS_OK);
    digest.add(to);
  };
  for (int32_t metric = 0; metric < 3; ++metric) run(DAXI_DistanceTransform_8u32f_C1R, distances, metric);
  run(DAXI_Thin_8u_C1R, dst, 0);
  run(DAXI_PruneBranches_8u_C1R, dst, 9);
  run(DAXI_FillHoles_8u_C1R, dst, 8);
  run(DAXI_DilateMask_8u_C1R, dst, element, 3, DaxiSize{3, 2}, &cfg);
  labels.fill([&](int32_t x, int32_t y) { return x % 37 == 5 && y % 23 == 7 ? x + y : 0; });
  EXPECT_EQ(DAXI_Watershed_32f32s_C1R(distances.data(), 150, labels.data(), 150, mask.size(), 8, buffer.data()),
            DAX_STS_OK);
  digest.add(labels);
  EXPECT_EQ(digest.value(), 0x4758B529F79A00E9u);
}

TEST(Digests, HillsOfFloats) {
  Digest digest;
  TestImage<float> src({120, 70}), dst(src.size()), result(src.size());
  src.randomize(8);
  std::vector<double> buffer(1 << 16);
  const DaxiFlatLineCfg cfg = {9, -5, 2, DAXI_BORDER_MIRROR, 0};
  EXPECT_EQ(DAXI_GrayDilateLine_32f_C1R(src.data(), 120, dst.data(), 120, src.size(), &cfg, buffer.data()), DAX_STS_OK);
  digest.add(dst);
  EXPECT_EQ(
      DAXI_ReconstructErode_32f_C1R(dst.data(), 120, src.data(), 120, result.data(), 120, src.size(), 4, buffer.data()),
      DAX_STS_OK);
  digest.add(result);
  EXPECT_EQ(digest.value(), 0xC1E62C1E0A464C4Eu);
}

}  // namespace
}  // namespace dax::test
