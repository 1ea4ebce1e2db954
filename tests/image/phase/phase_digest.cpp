#include <gtest/gtest.h>

#include <vector>

#include "daxi/phase_shift.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

template <class T>
TestImage<T> partOf(const Image& scene, int32_t x, int32_t y, bool isTurned) {
  const DaxiSize size = {117, 90};
  TestImage<T> part(size, 1);
  part.fill([&](int32_t u, int32_t v) {
    return isTurned ? scene.at(x + size.width - 1 - u, y + size.height - 1 - v) : scene.at(x + u, y + v);
  });
  return part;
}

template <class Result, class T, class Query, class Find>
void addFound(Digest& digest, Query query, Find find, bool isTurned) {
  const Image scene = hills({140, 110}, 11);
  const TestImage<T> a = partOf<T>(scene, 10, 9, false), b = partOf<T>(scene, 17, 5, isTurned);
  uint64_t bytes = 0;
  ASSERT_EQ(query(a.size(), &bytes), DAX_STS_OK);
  std::vector<double> buffer(bytes / sizeof(double));
  Result result;
  ASSERT_EQ(find(a.data(), a.step(), b.data(), b.step(), a.size(), &result, buffer.data()), DAX_STS_OK);
  digest.add(&result, sizeof result);
}

TEST(Digests, PhaseShift) {
  Digest digest;
  addFound<DaxiPhaseShift, uint8_t>(digest, DAXI_PhaseShiftBufferSize, DAXI_PhaseShift_8u_C1R, false);
  addFound<DaxiPhaseShift, uint16_t>(digest, DAXI_PhaseShiftBufferSize, DAXI_PhaseShift_16u_C1R, false);
  addFound<DaxiPhaseShift, float>(digest, DAXI_PhaseShiftBufferSize, DAXI_PhaseShift_32f_C1R, false);
  addFound<DaxiPhaseMotion, uint8_t>(digest, DAXI_PhaseRotationScaleBufferSize, DAXI_PhaseRotationScale_8u_C1R, true);
  addFound<DaxiPhaseMotion, float>(digest, DAXI_PhaseRotationScaleBufferSize, DAXI_PhaseRotationScale_32f_C1R, false);
  EXPECT_EQ(digest.value(), 2490206911480867976u);
}

}  // namespace
}  // namespace dax::test
