// Features beside the records of selection, against their definitions over pixels and pairs of pixels.
#include "daxi/blob_shape.h"

#include <numbers>

#include "daxi/blob_draw.h"
#include "tests/measure/blob/blob_scene.h"

namespace dax::test {
namespace {

// Regions of the background within a frame, without the outer one, joined by the other connectivity.
int32_t holesOf(const oracle::Labels& labels, int32_t label, DaxiSize size, int32_t connectivity) {
  oracle::Mask outside{size.width + 2, size.height + 2, {}};
  for (int32_t y = -1; y <= size.height; ++y) {
    for (int32_t x = -1; x <= size.width; ++x) {
      const bool inside = x >= 0 && y >= 0 && x < size.width && y < size.height;
      outside.pixels.push_back(!inside || labels.of[static_cast<size_t>(y) * size.width + x] != label);
    }
  }
  return oracle::floodFill(outside, connectivity == 4 ? 8 : 4).count - 1;
}

using Vector = std::pair<double, double>;

double cross(Vector a, Vector b, Vector c) {
  return (b.first - a.first) * (c.second - a.second) - (b.second - a.second) * (c.first - a.first);
}

// Edges of the hull: pairs of pixels with no pixel to their right.
std::vector<std::pair<Vector, Vector>> hullEdges(const oracle::Points& points) {
  std::vector<std::pair<Vector, Vector>> edges;
  for (const Vector& a : points) {
    for (const Vector& b : points) {
      if (a != b && std::ranges::all_of(points, [&](Vector c) { return cross(a, b, c) >= 0; })) edges.push_back({a, b});
    }
  }
  return edges;
}

double distance(Vector a, Vector b) {
  return std::hypot(a.first - b.first, a.second - b.second);
}

struct Expected {
  double inHull = 0, maxFeret = 0, minFeret = 0, eccentricity = 0;
};

Expected measure(const oracle::Points& points, DaxiSize size) {
  Expected expected;
  for (const Vector& a : points) {
    for (const Vector& b : points) expected.maxFeret = std::max(expected.maxFeret, distance(a, b));
  }
  const auto edges = hullEdges(points);
  expected.minFeret = edges.empty() ? 0 : HUGE_VAL;
  for (const auto& [a, b] : edges) {
    double reach = 0;
    for (const Vector& c : points) reach = std::max(reach, cross(a, b, c) / distance(a, b));
    expected.minFeret = std::min(expected.minFeret, reach);
  }
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) {
      const Vector p = {x, y};
      bool in = std::ranges::find(points, p) != points.end();
      // A line of pixels has edges both ways: between its ends.
      if (!edges.empty() && !in) {
        in = std::ranges::all_of(edges, [&](const auto& e) { return cross(e.first, e.second, p) >= 0; }) &&
             std::ranges::all_of(points, [&](Vector q) { return distance(q, p) <= expected.maxFeret; });
      }
      expected.inHull += in;
    }
  }
  const oracle::Moments m = oracle::moments(points, [](double, double) { return 1.0; });
  const double difference = std::hypot(m.xx - m.yy, 2 * m.xy), larger = (m.xx + m.yy + difference) / 2;
  expected.eccentricity = larger > 0 ? std::sqrt(difference / larger) : 0;
  return expected;
}

std::vector<DaxiBlobShape> shapesOf(const Image& mask, const Image& gray, int32_t connectivity) {
  Labeller label(mask.size(), connectivity);
  const DaxiDomainList& list = label(mask, DAX_ISA_NEON);
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_BlobShapeBufferSize_8u(mask.size(), &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  std::vector<DaxiBlobShape> shapes(list.domainCount);
  EXPECT_EQ(DAXI_BlobShape_8u_C1R(gray.data(), gray.step(), gray.size(), &list, connectivity, nullptr,
                                  static_cast<int32_t>(list.domainCount), shapes.data(), buffer.data()),
            DAX_STS_OK);
  return shapes;
}

TEST(BlobShape, ByDefinition) {
  for (const int32_t percent : {30, 45, 60, 75}) {
    for (const int32_t connectivity : {4, 8}) {
      const Image mask = randomMask({15, 13}, static_cast<uint64_t>(percent), percent);
      Image gray(mask.size());
      gray.randomize(static_cast<uint64_t>(percent) + 1);
      const oracle::Labels labels = oracle::floodFill(toMask(mask), connectivity);
      const auto shapes = shapesOf(mask, gray, connectivity);
      ASSERT_EQ(static_cast<int32_t>(shapes.size()), labels.count);
      for (int32_t label = 0; label < labels.count; ++label) {
        SCOPED_TRACE(label);
        const DaxiBlobShape& shape = shapes[static_cast<size_t>(label)];
        const oracle::Points points = oracle::pixelsOf(toMask(mask), labels, label);
        const Expected expected = measure(points, mask.size());
        const double count = static_cast<double>(points.size());
        EXPECT_EQ(shape.holes, holesOf(labels, label, mask.size(), connectivity));
        EXPECT_EQ(shape.eulerNumber, 1 - shape.holes);
        EXPECT_FLOAT_EQ(shape.convexity, static_cast<float>(count / expected.inHull));
        EXPECT_FLOAT_EQ(shape.maxFeret, static_cast<float>(expected.maxFeret));
        EXPECT_NEAR(shape.minFeret, expected.minFeret, 1e-5);
        EXPECT_FLOAT_EQ(shape.equivalentDiameter, static_cast<float>(std::sqrt(4 * count / std::numbers::pi)));
        EXPECT_NEAR(shape.eccentricity, expected.eccentricity, 1e-6);
        double sum = 0;
        uint8_t min = 255, max = 0;
        for (const auto& [x, y] : points) {
          const uint8_t value = gray.row(static_cast<int32_t>(y))[static_cast<int32_t>(x)];
          sum += value, min = std::min(min, value), max = std::max(max, value);
        }
        EXPECT_FLOAT_EQ(shape.meanGray, static_cast<float>(sum / count));
        EXPECT_EQ(shape.minGray, min);
        EXPECT_EQ(shape.maxGray, max);
      }
    }
  }
}

TEST(BlobShape, SomeShapes) {
  const Image ring = picture({"#####", "#...#", "#.#.#", "#...#", "#####"});
  const DaxiBlobShape outer = shapesOf(ring, ring, 8)[0];
  EXPECT_EQ(outer.holes, 1);  // with a blob of its own in it
  EXPECT_FLOAT_EQ(outer.convexity, 16.0f / 25);
  const Image line = picture({"#....", ".#...", "..#..", "...#."});
  const DaxiBlobShape diagonal = shapesOf(line, line, 8)[0];
  EXPECT_FLOAT_EQ(diagonal.feretAngle, static_cast<float>(std::numbers::pi / 4));
  EXPECT_EQ(diagonal.minFeret, 0);
  EXPECT_EQ(diagonal.eccentricity, 1);
  EXPECT_EQ(diagonal.convexity, 1);
  const Image upright = picture({"#", "#", "#"});
  EXPECT_FLOAT_EQ(shapesOf(upright, upright, 4)[0].feretAngle, static_cast<float>(std::numbers::pi / 2));
  const DaxiBlobShape point = shapesOf(picture({"#"}), picture({"#"}), 4)[0];
  EXPECT_EQ(point.maxFeret + point.minFeret + point.feretAngle + point.eccentricity, 0);
}

// What else is refused, and in which order, is tried by the hostile calls.
TEST(BlobShape, OfChosenLabels) {
  const Image mask = picture({"##.#", "...#"});
  Labeller label(mask.size(), 8);
  const DaxiDomainList list = label(mask, DAX_ISA_NEON), none = {};
  std::vector<uint8_t> buffer(4096);
  DaxiBlobShape shape = {};
  const uint32_t second[] = {1}, wrong[] = {2};
  const auto run = [&](const uint32_t* labels, const DaxiDomainList& domains) {
    return DAXI_BlobShape_8u_C1R(mask.data(), 4, {4, 2}, &domains, 8, labels, 1, &shape, buffer.data());
  };
  EXPECT_EQ(run(second, list), DAX_STS_OK);
  EXPECT_EQ(shape.equivalentDiameter, static_cast<float>(2 * std::sqrt(2 / std::numbers::pi)));
  EXPECT_EQ(run(wrong, list), DAX_STS_BAD_PARAM);
  EXPECT_EQ(run(second, none), DAX_STS_NULL_POINTER);
  uint64_t bytes;
  EXPECT_EQ(DAXI_BlobShapeBufferSize_8u({4, 65536}, &bytes), DAX_STS_OK);
  EXPECT_EQ(DAXI_BlobShapeBufferSize_8u({4, 65537}, &bytes), DAX_STS_BAD_PARAM);
}

TEST(BlobLabelImage, EveryPixelOfTheRegion) {
  const Image mask = randomMask({37, 23}, 5, 50);
  Labeller label(mask.size(), 4);
  const DaxiDomainList& list = label(mask, DAX_ISA_NEON);
  const oracle::Labels labels = oracle::floodFill(toMask(mask), 4);
  for (const DaxiSize size : {mask.size(), DaxiSize{20, 9}, DaxiSize{50, 30}}) {
    TestImage<int32_t> image(size);
    ASSERT_EQ(DAXI_BlobLabelImage_32s_C1R(&list, -3, image.data(), image.step(), size), DAX_STS_OK);
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        const int32_t expected = x < 37 && y < 23 ? labels.of[static_cast<size_t>(y) * 37 + x] : -1;
        ASSERT_EQ(image.row(y)[x], expected < 0 ? -3 : expected) << x << " " << y;
      }
    }
  }
  // Of runs that are in no order nothing is written outside their rows.
  std::vector<DomainRun> runs(list.runs, list.runs + list.runCount);
  std::reverse(runs.begin(), runs.end());
  for (DomainRun& run : runs) run.row = 3;
  DaxiDomainList disordered = list;
  disordered.runs = runs.data();
  TestImage<int32_t> image(mask.size(), 4);
  image.remember();
  ASSERT_EQ(DAXI_BlobLabelImage_32s_C1R(&disordered, 0, image.data(), image.step(), mask.size()), DAX_STS_OK);
  EXPECT_TRUE(image.paddingUntouched());

  int32_t pixel;
  EXPECT_EQ(DAXI_BlobLabelImage_32s_C1R(nullptr, 0, &pixel, 1, {1, 1}), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_BlobLabelImage_32s_C1R(&list, 0, nullptr, 1, {1, 1}), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_BlobLabelImage_32s_C1R(&list, 0, &pixel, 1, {2, 1}), DAX_STS_BAD_STEP);
}

}  // namespace
}  // namespace dax::test
