#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using RankFunction = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, int32_t, int32_t, T, void*);

template <class T>
void addRanks(Digest& digest, RankFunction<T> filter) {
  TestImage<T> src({203, 41}), dst(src.size());
  std::vector<double> buffer(1 << 16);
  const auto add = [&](DaxiSize window, int32_t rank, int32_t border) {
    EXPECT_EQ(filter(src.randomize(6).data(), src.step(), dst.data(), dst.step(), src.size(), window, rank, border,
                     T(9), buffer.data()),
              DAX_STS_OK);
    digest.add(dst);
  };
  add({7, 7}, 24, DAXI_BORDER_MIRROR);
  add({14, 6}, 33, DAXI_BORDER_CLIP);
  add({5, 21}, 100, DAXI_BORDER_CONSTANT);
}

template <class T, class Weighted, class Hybrid>
void addShaped(Digest& digest, Weighted weighted, Hybrid hybrid) {
  const uint8_t weights[9] = {1, 2, 0, 4, 7, 3, 1, 5, 200};
  TestImage<T> src({203, 41}), dst(src.size());
  src.randomize(6);
  EXPECT_EQ(weighted(src.data(), src.step(), dst.data(), dst.step(), src.size(), weights, DAXI_BORDER_CLIP, T(0)),
            DAX_STS_OK);
  digest.add(dst);
  EXPECT_EQ(hybrid(src.data(), src.step(), dst.data(), dst.step(), src.size(), DAXI_BORDER_CLIP, T(0)), DAX_STS_OK);
  digest.add(dst);
}

TEST(Digests, FilterMedianShaped) {
  Digest digest;
  addShaped<uint8_t>(digest, DAXI_FilterMedianWeighted3x3_8u_C1R, DAXI_FilterMedianHybrid5x5_8u_C1R);
  addShaped<uint16_t>(digest, DAXI_FilterMedianWeighted3x3_16u_C1R, DAXI_FilterMedianHybrid5x5_16u_C1R);
  addShaped<int16_t>(digest, DAXI_FilterMedianWeighted3x3_16s_C1R, DAXI_FilterMedianHybrid5x5_16s_C1R);
  addShaped<float>(digest, DAXI_FilterMedianWeighted3x3_32f_C1R, DAXI_FilterMedianHybrid5x5_32f_C1R);
  EXPECT_EQ(digest.value(), 0x951C8CB38C6D059Au);
}

TEST(Digests, FilterRank) {
  Digest digest;
  addRanks<uint8_t>(digest, DAXI_FilterRank_8u_C1R);
  addRanks<uint16_t>(digest, DAXI_FilterRank_16u_C1R);
  addRanks<int16_t>(digest, DAXI_FilterRank_16s_C1R);
  addRanks<float>(digest, DAXI_FilterRank_32f_C1R);
  EXPECT_EQ(digest.value(), 0xB0D2B43E85338Au);
}

}  // namespace
}  // namespace dax::test
