#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <string>

#include "dax.h"
#include "daxi/check_data.h"
#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "tests/support/guarded_buffer.h"
#include "zur/clock.h"

namespace dax::test {
namespace {

TEST(Status, PlatformCodesMap) {
  EXPECT_EQ(DAX_ZurStatusToDaxAlgStatus(0), 0u);
  EXPECT_EQ(DAX_ZurStatusToDaxAlgStatus(1), 0x1000001du);
  for (int32_t k = 1; k <= 29; ++k)
    EXPECT_EQ(DAX_ZurStatusToDaxAlgStatus(-k), 0x10000000u + static_cast<uint32_t>(k) - 1);
  for (const int32_t s : {2, 40, -30, -1000, INT32_MIN, INT32_MAX})
    EXPECT_EQ(DAX_ZurStatusToDaxAlgStatus(s), 0x10000000u) << s;
}

TEST(Status, TextsAndVersion) {
  const std::string unknown = DAX_GetStatusText(0x12345678);
  for (const DaxStatus code : {DaxStatus{0}, DaxStatus{DAX_STS_FAILURE}, DaxStatus{DAX_STS_LU}, DaxStatus{0x10000103},
                               DaxStatus{0x10000204}, DaxStatus{0x1000030e}}) {
    EXPECT_NE(DAX_GetStatusText(code), unknown) << code;
  }
  for (uint32_t code = 0x10000000; code <= 0x1000001d; ++code) EXPECT_NE(DAX_GetStatusText(code), unknown) << code;
  for (int32_t code = -32; code < 0; ++code)
    EXPECT_NE(DAX_GetStatusText(static_cast<DaxStatus>(code)), unknown) << code;
  // Ranges of codes, and what lies beside them.
  const std::pair<DaxStatus, DaxStatus> ranges[] = {
      {0x10000102, 0x10000114}, {0x10000200, 0x10000204}, {0x10000300, 0x1000030e}, {DaxStatus(-32), DaxStatus(-1)}};
  for (const auto& [first, last] : ranges) {
    for (const DaxStatus code : {first, last}) EXPECT_NE(DAX_GetStatusText(code), unknown) << code;
    EXPECT_EQ(DAX_GetStatusText(first - 1), unknown) << first;
    EXPECT_EQ(last == UINT32_MAX ? unknown : DAX_GetStatusText(last + 1), unknown) << last;
  }
  EXPECT_STREQ(DAX_GetStatusText(static_cast<DaxStatus>(-21)), DAX_GetStatusText(DAX_STS_NULL_POINTER));
  EXPECT_NE(DAX_GetStatusText(0x10000103), DAX_GetStatusText(0x10000104));
  EXPECT_EQ(DAX_GetVersion(), std::to_string(DAX_VERSION_MAJOR) + "." + std::to_string(DAX_VERSION_MINOR) + "." +
                                  std::to_string(DAX_VERSION_PATCH));
}

// Three times the width does not fit 32 bits.
TEST(CheckData, WideRows) {
  EXPECT_TRUE(rowFits(7, 7) && rowFits(7, 21, 3));
  EXPECT_FALSE(rowFits(7, 6) || rowFits(7, 20, 3));
  const uint8_t pixel = 0;
  for (const int32_t width : {1, 100, 715827882, 715827883, 1073741824, INT32_MAX}) {
    const int64_t row = int64_t{3} * width;
    for (const int64_t step : {row, row - 1, int64_t{INT32_MAX}, int64_t{-width}}) {
      if (step > INT32_MAX) continue;
      EXPECT_EQ(DAXI_CheckData_8u_C3R(&pixel, static_cast<int32_t>(step), {width, 1}),
                step >= row ? DAX_STS_OK : DAX_STS_BAD_STEP)
          << width << " " << step;
    }
  }
}

// The array of planes ends with its last element at a forbidden page: no further element may be read.
TEST(CheckData, Planes) {
  const uint8_t pixel = 0;
  GuardedBuffer<const uint8_t*> planes(3);
  std::fill_n(planes.begin(), 3, &pixel);
  EXPECT_EQ(DAXI_CheckData_8u_P3R(planes.data(), 9, {9, 1}), DAX_STS_OK);
  EXPECT_EQ(DAXI_CheckData_8u_P3R(planes.data(), 8, {9, 1}), DAX_STS_BAD_STEP);
  EXPECT_EQ(DAXI_CheckData_8u_P2R(planes.data() + 1, 9, {9, 1}), DAX_STS_OK);
  for (size_t i = 0; i < 3; ++i) {
    planes[i] = nullptr;
    EXPECT_EQ(DAXI_CheckData_8u_P3R(planes.data(), 1, {0, 1}), DAX_STS_NULL_POINTER);
    planes[i] = &pixel;
  }
}

TEST(CpuFeature, OnlyTheNeonFlag) {
  DaxCpuFeature feature;
  std::memset(&feature, 0xFF, sizeof(feature));
  const int32_t code = _DAX_GetCpuFeatureV2(&feature);
  EXPECT_EQ(code, feature.neon == 1 ? DAX_ISA_NEON : DAX_ISA_PORTABLE);
  for (const uint32_t flag : feature.reserved) EXPECT_EQ(flag, 0u);
}

TEST(Clock, RunsForwardInItsUnit) {
  EXPECT_EQ(ZUR_GetCpuClocks(), 0u);
  const double frequency = DAX_GetCpuFrequency();
#if defined(__aarch64__)
  EXPECT_GE(frequency, 1e6);
#else
  EXPECT_EQ(frequency, 1e9);
#endif
  const uint64_t start = DAX_GetCpuClocks();
  timespec pause = {0, 20000000};
  nanosleep(&pause, nullptr);
  const double seconds = static_cast<double>(DAX_GetCpuClocks() - start) / 1000 / frequency;
  EXPECT_GE(seconds, 0.0199);
  EXPECT_LT(seconds, 5);
}

}  // namespace
}  // namespace dax::test
