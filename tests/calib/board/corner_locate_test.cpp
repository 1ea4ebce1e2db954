// Single corners, drawn around the centre of an image from a formula.
#include <gtest/gtest.h>

#include <numbers>

#include "calib/board/hessian_locate.h"
#include "calib/board/symmetry_locate.h"
#include "tests/calib/board/checkerboard_search.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;
constexpr double kRadius = 15, kMiddleX = 48.3, kMiddleY = 47.8;
constexpr CheckerboardSymCfg kOneScale{3, 300, 150, 6, 15, DAXI_CHECKERBOARD_PLAIN, DAXI_CHECKERBOARD_ONE_SCALE};

std::vector<CheckerboardCorner> locate(const Image& image) {
  const DaxiSize size = image.size();
  GuardedBuffer<uint8_t> buffer(SymmetryBuffer(size).layout.total());
  const SymmetryBuffer at(size);
  for (int32_t y = 0; y < size.height; ++y)
    std::copy_n(image.row(y), size.width, at.grey.in(buffer.data()) + y * size.width);
  const SymmetryCall call{image.data(), image.step(), nullptr, 0, size, &kOneScale, buffer.data(), nullptr};
  int32_t count = 0;
  EXPECT_EQ(_DAXI_CheckerboardLocSym_8u_C1R_mt(&call, &count), DAX_STS_OK);
  const CheckerboardCorner* const corners = at.corners.in(buffer.data());
  return {corners, corners + count};
}

// level(x, y): -1..1, from the middle.
template <class Level>
Image draw(Level level) {
  Image image({96, 96});
  image.fill([level](int32_t x, int32_t y) {
    return std::floor(128.5 + 100 * std::clamp<double>(level(x - kMiddleX, y - kMiddleY), -1, 1));
  });
  return image;
}

// Edges that turn by so many degrees between 0.6 and all of the radius.
Image twisted(double degrees, double between = 90) {
  return draw([=](double x, double y) {
    const double r = std::hypot(x, y), turn = degrees / 180 * std::numbers::pi * (r / kRadius - 1) / 0.4;
    const double a = std::atan2(y, x) - turn - 0.3, b = a - between / 180 * std::numbers::pi;
    return std::tanh(r * std::sin(a)) * std::tanh(r * std::sin(b));
  });
}

TEST(SymmetryLocate, OneCorner) {
  for (const double between : {50.0, 70.0, 90.0, 110.0, 130.0}) {
    const std::vector<CheckerboardCorner> corners = locate(twisted(0, between));
    ASSERT_EQ(corners.size(), 1u) << between;
    EXPECT_NEAR(corners[0].point.x, kMiddleX, 0.05);
    EXPECT_NEAR(corners[0].point.y, kMiddleY, 0.05);
    EXPECT_EQ(corners[0].radius, 15);
    // From the first line to the second one it is dark.
    const double b = between / 180 * std::numbers::pi + 0.3;
    EXPECT_NEAR(std::fabs(corners[0].intoDark.x * std::sin(0.3) - corners[0].intoDark.y * std::cos(0.3)), 0, 0.05);
    EXPECT_NEAR(std::fabs(corners[0].intoLight.x * std::sin(b) - corners[0].intoLight.y * std::cos(b)), 0, 0.05);
  }
}

// The edges of a corner are straight from the centre on: those of spirals are not, nor those of bars with a waist.
TEST(SymmetryLocate, EdgesMustBeStraight) {
  for (const double sense : {-1.0, 1.0}) {
    EXPECT_EQ(locate(twisted(sense * 21)).size(), 1u);
    EXPECT_EQ(locate(twisted(sense * 31)).size(), 0u);
  }
  for (const double degrees : {0.0, 12.0, 40.0}) {
    const double c = std::cos(degrees * std::numbers::pi / 180), s = std::sin(degrees * std::numbers::pi / 180);
    for (const double width : {7.5, 10.0}) {
      const auto waist = [=](double x, double y) {
        const double along = c * x + s * y, across = c * y - s * x;
        return 2 * (std::fabs(across) - width / 2 - 0.3 * width * std::sin(along / width / 1.5));
      };
      EXPECT_EQ(locate(draw(waist)).size(), 0u) << degrees << ' ' << width;
    }
  }
}

// Fainter in the middle of a corner: of the contrast of 150 on the circle, the inner one must have 0.3.
TEST(SymmetryLocate, MiddleMustShowTheCorner) {
  const auto faded = [](double middle) {
    return draw([=](double x, double y) {
      const double r = std::hypot(x, y), share = std::clamp(r - 13.3, 0.0, 1.0);
      return std::tanh(x) * std::tanh(y) * (share + (1 - share) * middle / 200);
    });
  };
  EXPECT_EQ(locate(faded(56)).size(), 1u);
  EXPECT_EQ(locate(faded(43)).size(), 0u);
}

TEST(SymmetryLocate, LadderOfRadii) {
  const struct {
    DaxiSize size;
    uint32_t largest;
    std::vector<int32_t> radii;
  } cases[] = {{{64, 64}, 100, {3, 5, 7, 10, 15, 23, 34, 51, 77, 100}},  // 3, 4.5, 6.75, 10.125, ...
               {{640, 480}, 5, {16, 11, 7, 5}},
               {{640, 480}, 16, {16}},
               {{640, 480}, 17, {16, 17}},
               {{64, 64}, 3, {3}}};
  for (const auto& c : cases) {
    int32_t radii[kMaxScales];
    const int32_t count = DAXI_CheckerboardCornerSym_cfg_cal(c.size, c.largest, radii);
    EXPECT_EQ(std::vector<int32_t>(radii, radii + count), c.radii) << c.size.width << ' ' << c.largest;
  }
}

// The search for a saddle moves on to the pixel that holds it: it ends with the same bits from anywhere around.
TEST(HessianLocate, SaddleFromAnyPixelAround) {
  const DaxiSize size{32, 30};
  TestImage<float> smooth(size);
  const double x = 14.3, y = 13.6;
  smooth.fill([=](int32_t u, int32_t v) {
    const double a = u - x, b = v - y;
    return 100 + 9 * std::sin(0.3 * a + 0.1 * b) * std::sin(0.28 * b - 0.05 * a);
  });
  const HessianPlanes planes{nullptr, smooth.data(), size};
  CheckerboardCorner first{};
  ASSERT_TRUE(DAXI_CBL_Hessian_subpixel(&planes, 14, 14, &first));
  EXPECT_NEAR(first.point.x, x, 0.02);
  EXPECT_NEAR(first.point.y, y, 0.02);
  for (int32_t i = 0; i < 12; ++i) {
    CheckerboardCorner corner{};
    ASSERT_TRUE(DAXI_CBL_Hessian_subpixel(&planes, 13 + i % 3, 12 + i / 3, &corner)) << i;
    EXPECT_TRUE(sameBits(corner.point, first.point) && corner.response == first.response) << i;
  }
  // Further off than three pixels, or without the 5 x 5 around it.
  for (const auto& [u, v] : {std::pair{18, 14}, {14, 10}, {1, 14}, {14, 28}}) {
    EXPECT_FALSE(DAXI_CBL_Hessian_subpixel(&planes, u, v, &first)) << u << ", " << v;
  }
}

}  // namespace
}  // namespace dax::test
