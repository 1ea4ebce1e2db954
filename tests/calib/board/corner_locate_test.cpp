// Single corners, drawn around the centre of an image from a formula.
#include <gtest/gtest.h>

#include <numbers>

#include "calib/board/corner_ring.h"
#include "calib/board/hessian_locate.h"
#include "calib/board/local_maxima.h"
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

// Half a percent of the strongest response, in whichever column that lies: 16 grey levels of 226.
TEST(HessianLocate, FaintCornersByTheStrongest) {
  constexpr CheckerboardHessianParam kPlain{DAXI_CHECKERBOARD_PLAIN, 1, 3, 300, 0, 180};
  const DaxiSize size{160, 64};
  GuardedBuffer<uint8_t> buffer(LocateBuffer(size).layout.total());
  const auto sign = [](int32_t v) { return (v > 0) - (v < 0); };
  for (int32_t shift = 0; shift < 4; ++shift) {
    for (const auto& [strong, found] : {std::pair{116, false}, {112, true}}) {
      Image image(size);
      image.fill([&, half = strong](int32_t x, int32_t y) {
        return 128 + sign(y - 32) * (x < 80 ? half * sign(x - 40 - shift) : 8 * sign(x - 120));
      });
      CheckerboardCorner corners[16];
      const int32_t count = _DAXI_CheckerboardCornerHessian_Loc_8u_C1R(image.data(), image.step(), size, corners, 16,
                                                                       buffer.data(), &kPlain, 0);
      EXPECT_EQ(std::any_of(corners, corners + count, [](auto& c) { return c.point.x > 100; }), found) << shift;
      EXPECT_EQ(std::count_if(corners, corners + count, [](auto& c) { return c.point.x < 60; }), 1) << shift;
    }
  }
}

// A saddle of the response 100, its edges along the diagonals, and a neighbour that expects it somewhere.
TEST(HessianLocate, ProbedCornerContinuesItsNeighbour) {
  const DaxiSize size{32, 30};
  const int32_t x = 16, y = 15;
  TestImage<float> smooth(size);
  smooth.fill([=](int32_t u, int32_t v) { return 5 * ((u - x) * (u - x) - (v - y) * (v - y)); });
  const auto turned = [](DaxiPoint32f d, double degrees) {
    const auto c = static_cast<float>(std::cos(degrees * std::numbers::pi / 180)),
               s = static_cast<float>(std::sin(degrees * std::numbers::pi / 180));
    return DaxiPoint32f{c * d.x - s * d.y, s * d.x + c * d.y};
  };
  const struct {
    const char* name;
    float response, offset;
    double turnedDark, turnedLight;
    int32_t contrast;
    bool found;
  } cases[] = {
      {"as expected", 100, 0, 0, 0, 100, true},
      {"a tenth of the neighbour's response", 1000, 0, 0, 0, 100, true},
      {"less than a tenth", 1001, 0, 0, 0, 100, false},
      {"0.29 of the spacing away", 100, 2.9f, 0, 0, 100, true},
      {"0.31 of the spacing away", 100, 3.1f, 0, 0, 100, false},
      {"edges turned by 19 degrees", 100, 0, 19, -19, 100, true},
      {"one edge turned by 21 degrees", 100, 0, 21, 0, 100, false},
      {"the other edge", 100, 0, 0, -21, 100, false},
      {"dark for light", 100, 0, 90, 90, 100, false},
      {"faint", 100, 0, 0, 0, 9, true},
      {"too faint", 100, 0, 0, 0, 5, false},
  };
  for (const auto& c : cases) {
    Image grey(size);
    grey.fill([&](int32_t u, int32_t v) { return std::abs(u - x) > std::abs(v - y) ? 100 + c.contrast : 100; });
    const HessianPlanes planes{grey.data(), smooth.data(), size};
    CheckerboardCorner corner{};
    ASSERT_TRUE(DAXI_CBL_Hessian_subpixel(&planes, x, y, &corner));
    CheckerboardCorner neighbour = corner;
    neighbour.response = c.response;
    neighbour.intoDark = turned(corner.intoLight, c.turnedDark);
    neighbour.intoLight = turned(corner.intoDark, c.turnedLight);
    EXPECT_EQ(probeSaddle(&planes, {x + c.offset, y}, 10, neighbour, &corner), c.found) << c.name;
  }
}

// Four sectors, of which one is wider, narrower or of another level.
TEST(CornerRing, OppositeSectorsAreAlike) {
  constexpr int32_t kCount = 360;
  DaxiPoint32f directions[kCount];
  ringDirections(directions, kCount);
  const struct {
    const char* name;
    int32_t ends[4];  // of the sectors, degrees; the first is light
    float levels[4];
    bool corner;
  } cases[] = {
      {"right angles", {90, 180, 270, 360}, {160, 100, 160, 100}, true},
      {"sectors of 26 degrees", {26, 180, 206, 360}, {160, 100, 160, 100}, true},
      {"sectors of 23 degrees", {23, 180, 203, 360}, {160, 100, 160, 100}, false},
      {"light sectors 38 degrees apart", {90, 199, 251, 360}, {160, 100, 160, 100}, true},
      {"light sectors 42 degrees apart", {90, 201, 249, 360}, {160, 100, 160, 100}, false},
      {"dark sectors 42 degrees apart", {90, 201, 291, 360}, {160, 100, 160, 100}, false},
      {"a light one brighter by 0.45 of the contrast", {90, 180, 270, 360}, {180, 100, 149, 100}, true},
      {"by 0.55", {90, 180, 270, 360}, {182, 100, 146, 100}, false},
      {"a dark one darker by 0.55", {90, 180, 270, 360}, {160, 117, 160, 80}, false},
      {"the least contrast", {90, 180, 270, 360}, {120, 100, 120, 100}, true},
      {"less contrast", {90, 180, 270, 360}, {119, 100, 119, 100}, false},
      {"an edge", {180, 180, 180, 360}, {160, 0, 0, 100}, false},
  };
  for (const auto& c : cases) {
    float samples[kCount];
    int32_t sector = 0;
    for (int32_t k = 0; k < kCount; ++k) {
      while (k >= c.ends[sector]) ++sector;
      samples[k] = c.levels[sector];
    }
    EXPECT_EQ(viewRing(samples, directions, kCount, 20).corner, c.corner) << c.name;
  }
}

// One corner to a block of 4 x 4 pixels, wherever the image ends: known within 3 pixels along both axes, and no further.
TEST(NearMap, KnowsCornersWithinThreePixels) {
  Random random(3);
  for (const DaxiSize size : {DaxiSize{64, 67}, {67, 65}, {66, 64}}) {
    std::vector<int32_t> blocks(NearMap::blocks(size));
    std::vector<CheckerboardCorner> corners;
    for (int32_t i = 0; i < size.width / 4 * (size.height / 4 + 1); ++i) {
      const auto x = static_cast<float>(4 * (i % (size.width / 4)) + 1);
      const auto y = static_cast<float>(4 * (i / (size.width / 4)) + random.below(2));
      if (y < static_cast<float>(size.height) && random.below(3) == 0) corners.push_back({{x, y}, {}, {}, 0, 0});
    }
    NearMap near(blocks.data(), size, corners.data());
    for (int32_t i = 0; i < static_cast<int32_t>(corners.size()); ++i) near.add(i);
    for (int32_t i = 0; i < size.width * size.height; ++i) {
      const DaxiPoint32f p{static_cast<float>(i % size.width), static_cast<float>(i / size.width)};
      const bool known = std::any_of(corners.begin(), corners.end(), [p](const CheckerboardCorner& c) {
        return std::fabs(c.point.x - p.x) <= 3 && std::fabs(c.point.y - p.y) <= 3;
      });
      ASSERT_EQ(near.holds(p), known) << p.x << ", " << p.y;
    }
  }
}

}  // namespace
}  // namespace dax::test
