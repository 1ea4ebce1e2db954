#include "measure/blob_select.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/blob_scene.h"
#include "tests/support/check_order.h"

namespace dax::test {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

BlobInfo only(const Image& mask) {
  const std::vector<BlobInfo> blobs = Scene(mask).select(config());
  EXPECT_EQ(blobs.size(), 1u);
  return blobs.empty() ? BlobInfo{} : blobs[0];
}

// Angles of lines are equal up to half turns.
double lineDifference(double a, double b) {
  return std::fabs(std::remainder(a - b, std::numbers::pi));
}

void expectFeatures(const BlobInfo& blob, const oracle::Points& points, const Image& gray, bool grayMode) {
  const oracle::Moments m = oracle::moments(points, [&](double x, double y) {
    return grayMode ? gray.at(static_cast<int32_t>(x), static_cast<int32_t>(y)) / 255.0 : 1.0;
  });
  const auto [left, right] = std::minmax_element(points.begin(), points.end());
  EXPECT_NEAR(blob.area, m.mass, 1e-5 * m.mass);
  EXPECT_NEAR(blob.centroidX, m.x, 1e-3);
  EXPECT_NEAR(blob.centroidY, m.y, 1e-3);
  EXPECT_EQ(blob.rectX, left->first);
  EXPECT_EQ(blob.rectX + blob.rectWidth - 1, right->first);
  EXPECT_EQ(blob.rectY, points.front().second);
  EXPECT_EQ(blob.rectY + blob.rectHeight - 1, points.back().second);
  EXPECT_NEAR(blob.boxWidth * blob.boxHeight, oracle::leastBoxArea(points), 1e-3);
  EXPECT_LE(blob.boxHeight, blob.boxWidth);
  EXPECT_NEAR(blob.centralBias, std::hypot(blob.boxX - m.x, blob.boxY - m.y), 1e-3);
  if (blob.area <= 1) return;
  const double radius2 = oracle::largestDistance2(points, blob.centroidX, blob.centroidY);
  EXPECT_NEAR(blob.circularity, std::min(1.0, m.mass / std::numbers::pi / radius2), 1e-4);
  if (!grayMode && std::hypot(2 * m.xy, m.xx - m.yy) > 1e-3 * m.mass) {
    EXPECT_LT(lineDifference(blob.principalAngle, 0.5 * std::atan2(2 * m.xy, m.xx - m.yy)), 1e-3);
  }
}

// Every feature of the blobs of random masks, against sums over pixels and a brute-force rectangle.
TEST(BlobFeatures, MatchDefinitions) {
  for (int32_t percent = 10; percent <= 60; percent += 10) {
    const Image mask = randomMask({41, 23}, static_cast<uint64_t>(percent), percent);
    Image gray(mask.size());
    gray.randomize(3);
    gray.fill([&](int32_t x, int32_t y) { return std::max<uint8_t>(gray.at(x, y), 1); });
    const oracle::Labels labels = oracle::floodFill(toMask(mask), 8);
    for (const uint32_t grayMode : {0u, 1u}) {
      BlobSelectCfg cfg = config();
      cfg.grayMode = grayMode;
      Scene scene(mask);
      for (const BlobInfo& blob : scene.select(cfg, gray)) {
        const oracle::Points points = oracle::pixelsOf(toMask(mask), labels, static_cast<int32_t>(blob.label));
        if (points.size() > 150) continue;  // the rectangle takes cubic time
        expectFeatures(blob, points, gray, grayMode != 0);
        EXPECT_EQ(blob.domain, &scene.list().domains[blob.label]);
      }
    }
  }
}

TEST(BlobFeatures, KnownContours) {
  struct Case {
    Image mask;
    int32_t axial, diagonal;
  };
  const Case cases[] = {
      {picture({"......", ".####.", ".####.", ".####.", "......"}), 10, 0},
      {picture({"#####"}), 8, 0},
      {picture({"#", "#", "#"}), 4, 0},
      {picture({"#..", ".#.", "..#"}), 0, 4},
      {picture({"..#..", ".###.", "#####", ".###.", "..#.."}), 0, 8},
      {picture({"#####", "#...#", "#...#", "#####"}), 14, 0},  // a hole adds nothing
      {picture({".#.", "###", ".#."}), 0, 4},
      {picture({"#..#", "####"}), 6, 2},                      // corners of the notch are cut
      {picture({"#.#", "#.#", "###"}), 8, 2},                 // into the notch, up the arm and down again
      {picture({"##...", "##...", "..##.", "..##."}), 8, 2},  // both passages of the shared corner
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    EXPECT_FLOAT_EQ(only(c.mask).perimeter, static_cast<float>(c.diagonal) * 1.4142135f + static_cast<float>(c.axial))
        << "case " << i;
  }
}

// With 4-connectivity a neighbour that touches at a corner is another blob, and its pixels are not followed.
TEST(BlobFeatures, ContourKeepsToItsDomain) {
  const Image mask = picture({"##..", "##..", "..##", "..##"});
  Scene scene(mask, 4);
  const std::vector<BlobInfo> blobs = scene.select(config());
  ASSERT_EQ(blobs.size(), 2u);
  for (const BlobInfo& blob : blobs) EXPECT_EQ(blob.perimeter, 4);
}

TEST(BlobFeatures, OnePixel) {
  const BlobInfo blob = only(picture({"...", ".#.", "..."}));
  EXPECT_EQ(blob.area, 1);
  EXPECT_EQ(blob.perimeter, 1);
  EXPECT_EQ(blob.circularity, 1);
  EXPECT_EQ(blob.rectangularity, 1);
  EXPECT_EQ(blob.axisRatio, 1);
  EXPECT_EQ(blob.principalAngle, 0);
  EXPECT_EQ(blob.boxX, 1);
  EXPECT_EQ(blob.boxWidth, 0);
  EXPECT_EQ(blob.centralBias, 0);
}

// A bar at every angle: the long side first, the angle in its range, along the bar.
TEST(BlobFeatures, BoxOfRotatedBars) {
  for (int32_t degrees = -90; degrees <= 90; ++degrees) {
    const double a = degrees * std::numbers::pi / 180, c = std::cos(a), s = std::sin(a);
    Image mask({121, 121});
    mask.fill([&](int32_t x, int32_t y) {
      const double u = (x - 60) * c + (y - 60) * s, v = (y - 60) * c - (x - 60) * s;
      return std::fabs(u) <= 40 && std::fabs(v) <= 8 ? 1 : 0;
    });
    const BlobInfo blob = only(mask);
    EXPECT_NEAR(blob.boxX, 60, 0.75) << degrees;
    EXPECT_NEAR(blob.boxY, 60, 0.75) << degrees;
    EXPECT_NEAR(blob.boxWidth, 80, 1.5) << degrees;
    EXPECT_NEAR(blob.boxHeight, 16, 1.5) << degrees;
    EXPECT_GT(blob.boxAngle, -kPi / 2) << degrees;
    EXPECT_LE(blob.boxAngle, kPi / 2) << degrees;
    EXPECT_LT(lineDifference(blob.boxAngle, a), 0.02) << degrees;
    EXPECT_LT(lineDifference(blob.principalAngle, a), 0.02) << degrees;
  }
}

// Squares have no long side: the angle stays within an eighth of a turn, whatever the edge it came from.
TEST(BlobFeatures, BoxOfSquares) {
  EXPECT_EQ(only(picture({"###", "###", "###"})).boxAngle, 0);
  const BlobInfo diamond = only(picture({"..#..", ".###.", "#####", ".###.", "..#.."}));
  EXPECT_FLOAT_EQ(diamond.boxAngle, kPi / 4);
  EXPECT_FLOAT_EQ(diamond.boxWidth, std::sqrt(8.0f));
  EXPECT_EQ(diamond.boxWidth, diamond.boxHeight);
}

// Translation moves positions only; exchanging x and y exchanges them; a filled hole changes neither outline nor box.
TEST(BlobFeatures, Invariance) {
  const Image small = randomMask({9, 7}, 5, 70);
  Image moved({30, 40}), turned({7, 9});
  moved.fill(
      [&](int32_t x, int32_t y) { return x >= 11 && x < 20 && y >= 23 && y < 30 ? small.at(x - 11, y - 23) : 0; });
  turned.fill([&](int32_t x, int32_t y) { return small.at(y, x); });
  const auto largest = [](const Image& image) { return Scene(image).select(config())[0]; };
  const BlobInfo a = largest(small), b = largest(moved), c = largest(turned);
  EXPECT_EQ(b.rectX, a.rectX + 11);
  EXPECT_EQ(b.rectY, a.rectY + 23);
  EXPECT_NEAR(b.centroidX, a.centroidX + 11, 1e-4);
  EXPECT_NEAR(b.boxY, a.boxY + 23, 1e-4);
  EXPECT_EQ(b.perimeter, a.perimeter);
  EXPECT_EQ(b.boxAngle, a.boxAngle);
  EXPECT_NEAR(b.circularity, a.circularity, 1e-5);
  EXPECT_EQ(c.area, a.area);
  EXPECT_EQ(c.perimeter, a.perimeter);
  EXPECT_NEAR(c.centroidX, a.centroidY, 1e-4);
  EXPECT_EQ(c.rectWidth, a.rectHeight);
  EXPECT_NEAR(c.boxWidth, a.boxWidth, 1e-4);

  const BlobInfo ring = only(picture({"####", "#..#", "####"})), full = only(picture({"####", "####", "####"}));
  EXPECT_EQ(ring.perimeter, full.perimeter);
  EXPECT_EQ(ring.boxWidth, full.boxWidth);
  EXPECT_EQ(full.area, ring.area + 2);
}

// A region smaller than the labelled image: what lies outside is neither measured nor read.
TEST(BlobFeatures, RegionCutsDomains) {
  const Image mask = picture({"#####...", "#####...", "#####..#", ".......#"});
  Scene scene(mask);
  Image gray({4, 2}, 0, Guard::after);
  gray.fill([](int32_t, int32_t) { return 255; });
  for (const uint32_t grayMode : {0u, 1u}) {
    BlobSelectCfg cfg = config();
    cfg.grayMode = grayMode;
    const std::vector<BlobInfo> blobs = scene.select(cfg, gray);
    ASSERT_EQ(blobs.size(), 2u);
    EXPECT_FLOAT_EQ(blobs[0].area, 8);
    EXPECT_EQ(blobs[0].rectWidth, 4);
    EXPECT_EQ(blobs[0].perimeter, 8);
    EXPECT_EQ(blobs[1].area, 0);
    EXPECT_EQ(blobs[1].rectWidth, 0);
    EXPECT_EQ(blobs[1].circularity, 1);
  }
}

// --- Filters, ranks, order ---

float keyOf(const BlobInfo& b, uint32_t key) {
  const float keys[] = {0,
                        b.area,
                        b.perimeter,
                        b.circularity,
                        b.rectangularity,
                        b.centroidX,
                        b.centroidY,
                        b.boxAngle,
                        b.boxWidth,
                        b.boxHeight,
                        static_cast<float>(b.rectX),
                        static_cast<float>(b.rectY),
                        b.principalAngle,
                        b.axisRatio};
  return keys[key];
}

// Ranges that some blobs of the scene meet and some do not.
void setRanges(BlobSelectCfg& cfg) {
  cfg.area = {3, 30};
  cfg.perimeter = {2, 25};
  cfg.shortAxis = {0, 4};
  cfg.longAxis = {1, 9};
  cfg.axisRatio = {0, 0.8f};
  cfg.circularity = {0.1f, 0.9f};
  cfg.rectangularity = {0.2f, 1};
  cfg.centralBias = {0, 0.7f};
  cfg.boxAngle = {-1.2f, 1.4f, 0};
  cfg.rectWidth = {2, 9, 0};
  cfg.rectHeight = {1, 8, 0};
}

bool within(float value, float min, float max) {
  return value >= min - 1e-5f && value <= max + 1e-5f;
}

bool passes(const BlobSelectCfg& c, const BlobInfo& b) {
  const auto ok = [&](uint32_t flag, float value, float min, float max) {
    return !(c.flags & flag) || within(value, min, max);
  };
  return ok(0x1, b.area, c.area.min, c.area.max) && ok(0x2, b.perimeter, c.perimeter.min, c.perimeter.max) &&
         ok(0x4, b.shortAxis, c.shortAxis.min, c.shortAxis.max) &&
         ok(0x8, b.longAxis, c.longAxis.min, c.longAxis.max) &&
         ok(0x10, b.circularity, c.circularity.min, c.circularity.max) &&
         ok(0x20, b.rectangularity, c.rectangularity.min, c.rectangularity.max) &&
         ok(0x40, b.centralBias, c.centralBias.min, c.centralBias.max) &&
         ok(0x80, b.axisRatio, c.axisRatio.min, c.axisRatio.max) &&
         ok(0x100, b.boxAngle, c.boxAngle.min, c.boxAngle.max) &&
         ok(0x200, static_cast<float>(b.rectWidth), c.rectWidth.min, c.rectWidth.max) &&
         ok(0x400, static_cast<float>(b.rectHeight), c.rectHeight.min, c.rectHeight.max);
}

// Whether a configuration takes circularity from run ends rather than from the contour.
bool circularityFromRuns(uint32_t flags, uint32_t key) {
  const bool perimeter = flags & DAXI_BLOB_BY_PERIMETER, circularity = flags & DAXI_BLOB_BY_CIRCULARITY;
  if (perimeter && circularity) return false;
  if (perimeter || circularity) return key != DAXI_BLOB_KEY_PERIMETER;
  return key == DAXI_BLOB_KEY_CIRCULARITY || key == DAXI_BLOB_KEY_PERIMETER;
}

// The kept set by definition: filter all blobs, rank them, cut.
std::vector<uint32_t> expectedLabels(const BlobSelectCfg& cfg, std::vector<BlobInfo> all) {
  std::erase_if(all, [&](const BlobInfo& b) { return !passes(cfg, b); });
  const bool unsorted = cfg.sortOrder == DAXI_BLOB_UNSORTED;
  const uint32_t key = unsorted ? uint32_t{DAXI_BLOB_KEY_AREA} : cfg.sortKey;
  const bool descending = cfg.sortOrder != DAXI_BLOB_ASCENDING;
  std::stable_sort(all.begin(), all.end(), [&](const BlobInfo& a, const BlobInfo& b) {
    return descending ? keyOf(a, key) > keyOf(b, key) : keyOf(a, key) < keyOf(b, key);
  });
  std::vector<uint32_t> labels;
  for (const BlobInfo& b : all) labels.push_back(b.label);
  labels.resize(std::min<size_t>(labels.size(), static_cast<size_t>(cfg.maxCount)));
  return labels;
}

std::vector<uint32_t> labelsOf(const std::vector<BlobInfo>& blobs) {
  std::vector<uint32_t> labels;
  for (const BlobInfo& b : blobs) labels.push_back(b.label);
  return labels;
}

class SelectionTest : public testing::Test {
 protected:
  SelectionTest() : mask_(randomMask({90, 60}, 77, 33)), scene_(mask_) {
    // Both circularities of every blob, in label order.
    fromRuns_ = fromContour_ = scene_.select(config(0, DAXI_BLOB_KEY_CIRCULARITY, DAXI_BLOB_UNSORTED));
    const std::vector<BlobInfo> contour = scene_.select(config(0, DAXI_BLOB_KEY_AREA, DAXI_BLOB_UNSORTED));
    for (size_t i = 0; i < contour.size(); ++i) fromContour_[i].circularity = contour[i].circularity;
  }

  void check(const BlobSelectCfg& cfg) {
    const auto& all = circularityFromRuns(cfg.flags, cfg.sortKey) ? fromRuns_ : fromContour_;
    std::vector<uint32_t> got = labelsOf(scene_.select(cfg)), expected = expectedLabels(cfg, all);
    if (cfg.sortOrder == DAXI_BLOB_UNSORTED) {
      std::sort(got.begin(), got.end());
      std::sort(expected.begin(), expected.end());
    }
    ASSERT_EQ(got, expected) << "flags " << cfg.flags << " key " << cfg.sortKey << " order " << cfg.sortOrder
                             << " count " << cfg.maxCount;
  }

  Image mask_;
  Scene scene_;
  std::vector<BlobInfo> fromRuns_, fromContour_;
};

// Every single filter and many mixtures, with every key and order, kept whole and cut short.
TEST_F(SelectionTest, FilterThenSortThenCut) {
  ASSERT_GT(fromRuns_.size(), 150u);
  std::vector<uint32_t> flagSets = {0x2, 0x10, 0x12, 0x7FF};
  for (uint32_t bit = 1; bit <= 0x400; bit <<= 1) flagSets.push_back(bit), flagSets.push_back(bit | 0x3);
  for (const uint32_t flags : flagSets) {
    for (uint32_t key = 1; key <= 13; ++key) {
      for (uint32_t order = 1; order <= 3; ++order) {
        for (const int32_t count : {2, 11, DAXI_BLOB_MAX_COUNT}) {
          BlobSelectCfg cfg = config(flags, key, order);
          setRanges(cfg);
          cfg.maxCount = count;
          check(cfg);
        }
      }
    }
  }
}

TEST_F(SelectionTest, EveryCount) {
  for (int32_t count = 1; count <= static_cast<int32_t>(fromRuns_.size()) + 1; ++count) {
    BlobSelectCfg cfg = config(DAXI_BLOB_BY_AREA, DAXI_BLOB_KEY_RECT_Y, 1 + static_cast<uint32_t>(count) % 3);
    cfg.area = {0, 1000};
    cfg.maxCount = count;
    check(cfg);
  }
}

TEST_F(SelectionTest, NoFilterKeepsTheFirst) {
  BlobSelectCfg cfg = config(0, DAXI_BLOB_KEY_AREA, DAXI_BLOB_DESCENDING);
  cfg.maxCount = 5;
  std::vector<uint32_t> labels = labelsOf(scene_.select(cfg));
  std::sort(labels.begin(), labels.end());
  EXPECT_EQ(labels, (std::vector<uint32_t>{0, 1, 2, 3, 4}));
}

// A completed record does not depend on which features the cascade had computed, circularity's two rules aside.
TEST_F(SelectionTest, RecordsAreComplete) {
  for (uint32_t key = 1; key <= 13; ++key) {
    for (const uint32_t flags : {0u, 0x2u, 0x10u, 0x100u}) {
      BlobSelectCfg cfg = config(flags, key, DAXI_BLOB_UNSORTED);
      cfg.perimeter = {0, 1e9f}, cfg.circularity = {0, 1}, cfg.boxAngle = {-9, 9, 0};
      const auto& all = circularityFromRuns(flags, key) ? fromRuns_ : fromContour_;
      const std::vector<BlobInfo> blobs = scene_.select(cfg);
      ASSERT_EQ(blobs.size(), all.size());
      for (size_t i = 0; i < all.size(); ++i) {
        ASSERT_EQ(std::memcmp(&blobs[i], &all[i], offsetof(BlobInfo, borderPixels)), 0)
            << "flags " << flags << " key " << key;
      }
    }
  }
}

TEST(BlobScore, WeightedClosenessToTheMiddle) {
  const Image mask = picture({"####", "####"});
  Scene scene(mask);
  BlobSelectCfg cfg = config(DAXI_BLOB_BY_AREA | DAXI_BLOB_BY_RECT_WIDTH | DAXI_BLOB_BY_BOX_ANGLE);
  cfg.area = {6, 14};  // the middle is 10, the area 8
  cfg.areaWeight = 0.5f;
  cfg.rectWidth = {2, 6, 1};
  cfg.boxAngle = {-1, 1, 0.25f};
  EXPECT_NEAR(scene.select(cfg)[0].score, (0.5 * 0.8 + 1 + 0.25) / 1.75, 1e-6);

  cfg.areaWeight = cfg.rectWidth.weight = cfg.boxAngle.weight = 0;
  BlobInfo record;
  std::memset(static_cast<void*>(&record), 0x3C, sizeof(record));
  const BlobInfo before = record;
  BlobSelectResult result{&record, 0, nullptr};
  ASSERT_EQ(scene.trySelect(cfg, result, mask), DAX_STS_OK);
  EXPECT_EQ(record.score, before.score);  // no weight, no score
  EXPECT_EQ(std::memcmp(record.reserved2, before.reserved2, sizeof(before.reserved2)), 0);
}

// A domain of many runs, and one that spans the widest image.
TEST(BlobSelect, LargeDomains) {
  Image comb({3, 65536}), row({65536, 2});
  comb.fill([](int32_t x, int32_t y) { return x == 0 || y % 2 == 0; });
  row.fill([](int32_t, int32_t) { return 1; });
  const BlobInfo a = only(comb), b = only(row);
  EXPECT_EQ(a.area, 131072);
  EXPECT_EQ(a.rectHeight, 65536);
  EXPECT_EQ(b.area, 131072);
  EXPECT_FLOAT_EQ(b.centroidX, 32767.5f);
  EXPECT_FLOAT_EQ(b.boxWidth, 65535);
  EXPECT_FLOAT_EQ(b.perimeter, 131072);
}

// --- Checks ---

struct Arguments {
  const uint8_t* gray;
  int32_t grayStep;
  const uint8_t* image2;
  int32_t step2;
  DaxiSize size;
  DaxiDomainList list;
  bool hasList;
  int32_t count;
  BlobSelectResult result;
  bool hasResult;
  BlobSelectCfg cfg;
  bool hasCfg;
  void* buffer;
};

TEST(BlobSelectChecks, OrderAndCodes) {
  const Image mask = picture({"##.#", "##.."});
  Scene scene(mask);
  BlobInfo record;
  std::memset(static_cast<void*>(&record), 0x3C, sizeof(record));
  const BlobInfo before = record;
  GuardedBuffer<uint8_t> buffer(1 << 20);
  BlobSelectCfg cfg = config(DAXI_BLOB_BY_AREA | DAXI_BLOB_BY_CIRCULARITY);
  cfg.maxCount = 1;
  cfg.area = {0, 9};
  cfg.circularity = {0, 1};
  const Arguments good{mask.data(),           4,    mask.data(), 4,    mask.size(),  scene.list(), true, 2,
                       {&record, 0, nullptr}, true, cfg,         true, buffer.data()};
  using Clauses = std::vector<CheckClause<Arguments>>;
  const Clauses clauses = {
      {"list null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.hasList = false; }},
      {"domains null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.list.domains = nullptr; }},
      {"result null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.hasResult = false; }},
      {"array null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.result.array = nullptr; }},
      {"cfg null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.hasCfg = false; }},
      {"buffer null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.buffer = nullptr; }},
      {"gray null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.gray = nullptr; }},
      {"size", DAX_STS_BAD_SIZE, [](Arguments& a) { a.size.width = 0; }},
      {"gray step", DAX_STS_BAD_STEP, [](Arguments& a) { a.grayStep = 3; }},
      {"second image null", DAX_STS_NULL_POINTER, [](Arguments& a) { a.image2 = nullptr; }},
      {"second image step", DAX_STS_BAD_STEP, [](Arguments& a) { a.step2 = 3; }},
      {"max count", DAX_STS_BAD_PARAM, [](Arguments& a) { a.cfg.maxCount = 20001; }},
      {"domain count", DAX_STS_BAD_PARAM, [](Arguments& a) { a.count = 3; }},
  };
  BlobSelectResult last = good.result;
  expectCheckOrder<Arguments>(
      good, clauses,
      [&](const Arguments& a) {
        last = a.result;
        return DAXI_BlobSelect_8u_C1R(a.gray, a.grayStep, a.image2, a.step2, a.size, a.hasList ? &a.list : nullptr,
                                      a.count, a.hasResult ? &last : nullptr, a.hasCfg ? &a.cfg : nullptr, a.buffer);
      },
      [&] { return std::memcmp(&record, &before, sizeof(record)) == 0 && !last.domains && last.count == 0; });
}

TEST(BlobSelectChecks, Configuration) {
  struct Case {
    void (*change)(BlobSelectCfg&);
    bool accepted;
  };
  const Case cases[] = {
      {[](BlobSelectCfg&) {}, true},
      {[](BlobSelectCfg& c) { c.maxCount = 0; }, false},
      {[](BlobSelectCfg& c) { c.flags = 0x20000; }, false},
      {[](BlobSelectCfg& c) { c.flags = 0x1F000; }, true},
      {[](BlobSelectCfg& c) {
         c.area = {9, 1};
       },
       true},  // its flag is off
      {[](BlobSelectCfg& c) {
         c.flags = 0x1, c.area = {9, 1};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x1, c.area = {-1, 1};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x1, c.area = {0, INFINITY};
       },
       true},
      {[](BlobSelectCfg& c) {
         c.flags = 0x2, c.perimeter = {-1, 1};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x4, c.shortAxis = {-1, 1};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x8, c.longAxis = {2, 1};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x10, c.circularity = {0, 1.01f};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x20, c.rectangularity = {0, 1.01f};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x80, c.axisRatio = {0, 1.01f};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x40, c.centralBias = {-1, 5};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x100, c.boxAngle = {-3, -2, 0};
       },
       true},
      {[](BlobSelectCfg& c) {
         c.flags = 0x200, c.rectWidth = {2, 1, 0};
       },
       false},
      {[](BlobSelectCfg& c) {
         c.flags = 0x400, c.rectHeight = {-2, 1, 0};
       },
       true},
      {[](BlobSelectCfg& c) { c.flags = 0x800, c.outsideLimit = -1; }, false},
      {[](BlobSelectCfg& c) { c.outsideLimit = -1; }, true},
      {[](BlobSelectCfg& c) { c.areaWeight = 1.5f; }, false},
      {[](BlobSelectCfg& c) { c.rectHeight.weight = -0.1f; }, false},
      {[](BlobSelectCfg& c) { c.sortOrder = 0; }, false},
      {[](BlobSelectCfg& c) { c.sortOrder = 4; }, false},
      {[](BlobSelectCfg& c) { c.sortKey = 0; }, false},
      {[](BlobSelectCfg& c) { c.sortKey = 14; }, false},
      {[](BlobSelectCfg& c) { c.maskStep = -1; }, true},
      {[](BlobSelectCfg& c) { c.mask = reinterpret_cast<const uint8_t*>(&c), c.maskStep = -1; }, false},
  };
  for (const Case& c : cases) {
    BlobSelectCfg cfg = config();
    c.change(cfg);
    EXPECT_EQ(DAXI_BlobSelect_check_cfg(&cfg), c.accepted ? DAX_STS_OK : DAX_STS_BAD_PARAM) << "case " << &c - cases;
  }
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_BlobSelectBufferSize_8u({1, 1}, nullptr), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_BlobSelectBufferSize_8u({0, 1}, &bytes), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAXI_BlobSelectBufferSize_8u({65537, 1}, &bytes), DAX_STS_BAD_PARAM);
}

// A NaN in any range or weight is refused, and no other special value does harm.
TEST(BlobSelectChecks, SpecialValuesInEveryField) {
  const Image mask = randomMask({30, 20}, 4, 40);
  Scene scene(mask);
  BlobInfo record;
  BlobSelectResult result{&record, 0, nullptr};
  const size_t floats[][2] = {{offsetof(BlobSelectCfg, area), 24}, {offsetof(BlobSelectCfg, boxAngle), 9}};
  for (const auto& [offset, count] : floats) {
    for (size_t i = 0; i < count; ++i) {
      for (const float value : {NAN, -NAN, INFINITY, -INFINITY, 3e38f, -3e38f, 1e-40f}) {
        BlobSelectCfg cfg = config(0x7FF);
        cfg.maxCount = 1;
        setRanges(cfg);
        std::memcpy(reinterpret_cast<char*>(&cfg) + offset + i * sizeof(float), &value, sizeof(float));
        const DaxStatus status = scene.trySelect(cfg, result, mask);
        EXPECT_TRUE(status == DAX_STS_BAD_PARAM || (status == DAX_STS_OK && !std::isnan(value))) << offset << " " << i;
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
