#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/image/transform/fourier_exports.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

template <class T>
uint64_t transformed(DaxiSize size, bool isCosine) {
  using F = Dft<T>;
  const DaxiSize half = {size.width / 2 + 1, size.height};
  TestImage<T> src(size), back(size);
  TestImage<typename F::Complex> spectrum(half);
  Random random(4);
  src.fill([&](int32_t, int32_t) { return static_cast<T>(random.below(1 << 20)) / 37; });
  PlanMemory plan(size, isCosine ? F::kCosinePlanBytes : F::kPlanBytes, isCosine ? F::kCosinePlan : F::kPlan);
  uint64_t bytes = 0;
  EXPECT_EQ((isCosine ? F::kCosineBufferBytes : F::kBufferBytes)(size, &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes);
  const auto run = [&](auto function, const auto& from, auto& to, auto... scale) {
    EXPECT_EQ(function(nullptr, 1, from.data(), from.step(), to.data(), to.step(), size, scale..., plan.data(),
                       plan.bytes(), buffer.data()),
              DAX_STS_OK);
  };
  Digest digest;
  if (isCosine) {
    run(F::kCosine, src, back);
    digest.add(back);
    run(F::kCosineBackward, src, back);
  } else {
    run(F::kReal, src, spectrum, DAXI_DFT_UNSCALED);
    digest.add(spectrum);
    run(F::kRealBackward, spectrum, back, DAXI_DFT_BACKWARD);
  }
  return digest.add(plan.data(), plan.bytes()).add(back).value();
}

TEST(Digests, Fourier) {
  EXPECT_EQ(transformed<float>({210, 92}, false), 0x458E7CFFE9644F5Fu);
  EXPECT_EQ(transformed<double>({101, 64}, false), 0x20F00A8E6D705BD7u);
  EXPECT_EQ(transformed<float>({4099, 1}, false), 0xC2E70D7C3B7EDAB7u);
  EXPECT_EQ(transformed<float>({105, 66}, true), 0x408E085476B69110u);
  EXPECT_EQ(transformed<double>({44, 31}, true), 0x7EE2E346E9B3D4D6u);
}

}  // namespace
}  // namespace dax::test
