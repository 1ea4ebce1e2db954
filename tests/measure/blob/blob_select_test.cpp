#include "daxi/blob_select.h"

#include <gtest/gtest.h>

#include <cmath>

#include "measure/blob/blob_check.h"
#include "tests/measure/blob/blob_scene.h"

namespace dax::test {
namespace {

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

// Ranges are looked at where their flags are set; all else always.
TEST(BlobSelectChecks, Configuration) {
  const auto check = [](auto change) {
    BlobSelectCfg cfg = config(0);
    change(cfg);
    return DAXI_BlobSelect_check_cfg(&cfg) == DAX_STS_OK;
  };
  const auto accepts = [&](uint32_t flag, auto member, auto range) {
    EXPECT_TRUE(check([&](BlobSelectCfg& c) { c.*member = range; }));
    return check([&](BlobSelectCfg& c) { c.flags = flag, c.*member = range; });
  };
  using Cfg = BlobSelectCfg;
  EXPECT_TRUE(accepts(0x1, &Cfg::area, DaxiRange{0, INFINITY}));
  EXPECT_FALSE(accepts(0x1, &Cfg::area, DaxiRange{9, 1}));
  EXPECT_FALSE(accepts(0x1, &Cfg::area, DaxiRange{-1, 1}));
  EXPECT_FALSE(accepts(0x2, &Cfg::perimeter, DaxiRange{-1, 1}));
  EXPECT_FALSE(accepts(0x4, &Cfg::shortAxis, DaxiRange{-1, 1}));
  EXPECT_FALSE(accepts(0x8, &Cfg::longAxis, DaxiRange{2, 1}));
  EXPECT_FALSE(accepts(0x10, &Cfg::circularity, DaxiRange{0, 1.01f}));
  EXPECT_FALSE(accepts(0x20, &Cfg::rectangularity, DaxiRange{0, 1.01f}));
  EXPECT_FALSE(accepts(0x80, &Cfg::axisRatio, DaxiRange{0, 1.01f}));
  EXPECT_FALSE(accepts(0x40, &Cfg::centralBias, DaxiRange{-1, 5}));
  EXPECT_TRUE(accepts(0x100, &Cfg::boxAngle, DaxiWeightedRange{-3, -2, 0}));
  EXPECT_FALSE(accepts(0x200, &Cfg::rectWidth, DaxiWeightedRange{2, 1, 0}));
  EXPECT_TRUE(accepts(0x400, &Cfg::rectHeight, DaxiWeightedRange{-2, 1, 0}));
  EXPECT_FALSE(accepts(0x800, &Cfg::outsideLimit, -1));
  EXPECT_FALSE(check([](Cfg& c) { c.rectHeight.weight = -0.1f; }));
  EXPECT_FALSE(check([](Cfg& c) { c.sortOrder = 4; }));
  EXPECT_FALSE(check([](Cfg& c) { c.sortKey = 14; }));
  EXPECT_TRUE(check([](Cfg& c) { c.maskStep = -1; }));
  EXPECT_FALSE(check([](Cfg& c) { c.mask = reinterpret_cast<const uint8_t*>(&c), c.maskStep = -1; }));
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
