#include "dax3dpcl/record_check.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include "dax3dpcl/cloud.h"

namespace dax::test {
namespace {

constexpr float kEps = 1.1920929e-7f;

template <size_t N>
struct Case {
  const char* name;
  size_t index;  // of the value that is replaced
  double value;
  DaxStatus narrow, wide;
};

// Replaces one value at a time. The check of doubles sees the same number, unless it is not a float.
template <size_t N>
void expectCases(const std::array<double, N>& good, const std::vector<Case<N>>& cases,
                 DaxStatus (*narrow)(const float*), DaxStatus (*wide)(const double*)) {
  const auto floats = [](const std::array<double, N>& values) {
    std::array<float, N> result;
    for (size_t i = 0; i < N; ++i) result[i] = static_cast<float>(values[i]);
    return result;
  };
  if (narrow) {
    EXPECT_EQ(narrow(floats(good).data()), DAX_STS_OK);
  }
  EXPECT_EQ(wide(good.data()), DAX_STS_OK);
  for (const Case<N>& c : cases) {
    std::array<double, N> values = good;
    values[c.index] = c.value;
    if (narrow) {
      EXPECT_EQ(narrow(floats(values).data()), c.narrow) << c.name;
    }
    EXPECT_EQ(wide(values.data()), c.wide) << c.name;
  }
  if (narrow) {
    EXPECT_EQ(narrow(nullptr), DAX_STS_NULL_POINTER);
  }
  EXPECT_EQ(wide(nullptr), DAX_STS_NULL_POINTER);
}

constexpr DaxStatus kBad = DAX_STS_BAD_PARAM, kFail = DAX_STS_FAILURE, kOk = DAX_STS_OK, kSkewed = 0x1000030e;

TEST(RecordCheck, Intrinsics) {
  expectCases<9>({500, -9, 320, -9, 500, 240, -9, -9, -9},
                 {{"fx", 0, kEps / 2, kBad, kBad},
                  {"fx at the limit", 0, kEps, kOk, kOk},
                  {"fy at the limit", 4, kEps, kOk, kOk},
                  {"cx at the limit", 2, kEps, kOk, kOk},
                  {"cy at the limit", 5, kEps, kOk, kOk},
                  {"fy", 4, -500, kBad, kBad},
                  {"cx", 2, 0, kBad, kBad},
                  {"cy", 5, NAN, kBad, kBad}},
                 DAX3DPCL_UTILS_Check_Intrins_32f, DAX3DPCL_UTILS_Check_Intrins_64f);
  expectCases<4>(
      {500, 500, 320, 240},
      {{"fx", 0, 1.19e-7, kOk, kBad}, {"fy", 1, 0, kOk, kBad}, {"cx", 2, NAN, kOk, kBad}, {"cy", 3, -1, kOk, kBad}},
      nullptr, DAX3DPCL_UTILS_Check_CamIntrins);
}

TEST(RecordCheck, DirectionsInTheHeader) {
  DAX3D_RANGE_V4 record = {};
  const auto check = [&](DAX3D_VECTOR_32F scale, float x, float y) {
    record.scale = scale;
    record.offset = {x, y, 5};
    return DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins(&record);
  };
  EXPECT_EQ(check({1, 1, kEps}, -1, -0.0f), kOk);
  EXPECT_EQ(check({1, 1, kEps}, -1, 0.0f), kBad);
  EXPECT_EQ(check({1, 1, kEps}, 1, -1), kBad);
  EXPECT_EQ(check({-1, 1, 1}, -1, -1), kBad);
  EXPECT_EQ(check({1, NAN, 1}, -1, -1), kBad);
  EXPECT_EQ(check({1, 1, 0}, -1, -1), kBad);
  EXPECT_EQ(check({1, 1, 1}, -NAN, -1), kOk);
}

TEST(RecordCheck, Boxes) {
  expectCases<9>({1e30, -5, NAN, 1, 2, 3, 0, 6.283185307179586, -6.283185307179586},
                 {{"thin", 3, 1e-8, kBad, kOk},
                  {"thinner", 4, 1e-16, kBad, kBad},
                  {"negative", 5, -1, kBad, kBad},
                  {"no number", 4, NAN, kBad, kBad},
                  {"a turn in float", 6, static_cast<double>(6.2831855f), kOk, kBad},
                  {"more", 7, 6.28319, kBad, kBad},
                  {"less", 8, -6.28319, kBad, kBad},
                  {"no angle", 6, NAN, kBad, kBad}},
                 DAX3DPCL_UTILS_Check_Box3d_32f, DAX3DPCL_UTILS_Check_Box3d_64f);
}

TEST(RecordCheck, Transforms) {
  // A rotation by 30 degrees, mirrored.
  const double c = std::sqrt(0.75), s = 0.5;
  const std::array<double, 16> mirrored = {c, -s, 0, 100, s, c, 0, -7, 0, 0, -1, 1e9, 0, 0, 0, 0};
  expectCases<16>(mirrored,
                  {{"long column", 10, -1.0011, kSkewed, kFail},
                   {"short column", 10, -0.9989, kSkewed, kFail},
                   {"just right", 10, -1.00049, kOk, kOk},
                   {"skewed", 2, 0.002, kSkewed, kFail},
                   {"no number", 9, NAN, kSkewed, kFail},
                   {"any translation", 3, NAN, kOk, kOk}},
                  DAX3DPCL_UTILS_Check_SE3_32f, DAX3DPCL_UTILS_Check_SE3_64f);
  const std::array<double, 16> unit = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  expectCases<16>(unit,
                  {{"mirrored", 10, -1, kFail, kFail},
                   {"scaled", 5, 1.01, kSkewed, kFail},
                   {"shifted", 3, 0.0011, kFail, kFail},
                   {"shifted by the float limit", 7, 0.001, kOk, kOk},
                   {"shifted back", 11, -0.0011, kFail, kFail},
                   {"not homogeneous", 15, 1.0011, kFail, kFail},
                   {"no translation", 7, NAN, kFail, kFail}},
                  DAX3DPCL_UTILS_Check_EyeSE3_32f, DAX3DPCL_UTILS_Check_EyeSE3_64f);
}

TEST(RecordCheck, Quaternions) {
  const double limit = 1.00000011920928955;
  expectCases<4>({1, 0, 0, 0},
                 {{"w at the limit", 0, limit, kOk, kOk},
                  {"w beyond", 0, 1.0000003, kFail, kFail},
                  {"w below", 0, -1.0000003, kFail, kFail},
                  {"w a double beyond", 0, 1.00000012, kOk, kFail},
                  {"no w", 0, NAN, kFail, kFail},
                  {"long vector", 2, 1.01, kFail, kFail},
                  {"unit vector beside w", 3, -1, kOk, kOk},
                  {"no vector", 1, NAN, kFail, kFail}},
                 DAX3DPCL_UTILS_Check_Quat_32f, DAX3DPCL_UTILS_Check_Quat_64f);
}

TEST(RecordCheck, Normals) {
  EXPECT_EQ(DAX3DPCL_UTILS_Check_Normal_32f(kEps, -kEps, 0), kBad);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_Normal_32f(0, 0, -2e-7f), kOk);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_Normal_32f(NAN, 0, 0), kOk);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_Normal_64f(kEps, 0, 0), kBad);
  EXPECT_EQ(DAX3DPCL_UTILS_Check_Normal_64f(0, 1.2e-7, 0), kOk);
}

TEST(RecordCheck, Clouds) {
  float points[3] = {};
  const auto check = [&](int32_t capacity, int32_t count, float* data, int32_t maxCount) {
    const DAX3DPCL_CLOUD3D cloud = {capacity, count, data};
    return DAX3DPCL_UTILS_Check_Cloud3D_32f(&cloud, maxCount);
  };
  EXPECT_EQ(check(5, 5, points, 5), kOk);
  EXPECT_EQ(check(5, 0, points, 5), kBad);
  EXPECT_EQ(check(5, 5, points, 4), kBad);
  EXPECT_EQ(check(4, 5, points, 5), kBad);
  EXPECT_EQ(check(-1, 5, points, 5), kBad);
}

}  // namespace
}  // namespace dax::test
