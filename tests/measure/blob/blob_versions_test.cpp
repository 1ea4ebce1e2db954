// The later versions of selection, the host's pool, and drawing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "daxi/blob_draw.h"
#include "measure/blob/blob_check.h"
#include "measure/region/domain_runs.h"
#include "tests/measure/blob/blob_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

// Arguments that all versions share, on a scene.
struct Trial {
  const Scene& scene;
  std::vector<BlobInfo> array = std::vector<BlobInfo>(DAXI_BLOB_MAX_COUNT);
  BlobSelectResult result{array.data(), 0, nullptr};

  const uint8_t* image() const { return scene.mask().data(); }
  int32_t step() const { return scene.mask().step(); }
  DaxiSize size() const { return scene.mask().size(); }
  int32_t count() const { return static_cast<int32_t>(scene.list().domainCount); }
  std::vector<BlobInfo> blobs() const { return {array.begin(), array.begin() + result.count}; }
};

template <class Query>
GuardedBuffer<uint8_t> workBuffer(Query query) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(&bytes), DAX_STS_OK);
  return GuardedBuffer<uint8_t>(bytes);
}

std::vector<BlobInfo> selectV3(const Scene& scene, const BlobSelectCfg& cfg) {
  Trial run{scene};
  auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectV3BufferSize_8u(run.size(), bytes); });
  EXPECT_EQ(DAXI_BlobSelectV3_8u_C1R(run.image(), run.step(), run.image(), run.step(), run.size(), &scene.list(),
                                     run.count(), &run.result, &cfg, buffer.data()),
            DAX_STS_OK);
  return run.blobs();
}

std::vector<BlobInfo> selectV4(const Scene& scene, const BlobSelectV4Cfg& cfg) {
  Trial run{scene};
  auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectV3BufferSize_8u(run.size(), bytes); });
  EXPECT_EQ(DAXI_BlobSelectV4_8u_C1R(run.image(), run.step(), run.image(), run.step(), run.size(), &scene.list(),
                                     run.count(), &run.result, &cfg, buffer.data()),
            DAX_STS_OK);
  return run.blobs();
}

// Pixels of each blob that are outside, by definition: at the border of the region, or where the mask is zero. A pixel
// that is both the start and the end of a run in the one column of an image counts twice.
uint32_t outsidePixels(const Scene& scene, const BlobInfo& blob, const Image* mask) {
  uint32_t count = 0;
  const DaxiSize size = scene.mask().size();
  forEachRun(viewDomain(scene.list(), scene.list().domains[blob.label], size), [&](RunSpan run) {
    for (int32_t x = run.start; x <= run.end; ++x) {
      if (mask) {
        count += mask->at(x, run.row) == 0;
      } else if (run.row == 0 || run.row == size.height - 1) {
        ++count;
      } else {
        count += uint32_t{x == 0} + uint32_t{x == size.width - 1};
      }
    }
  });
  return count;
}

TEST(BlobSelectV3, OutsidePixels) {
  const Image image = randomMask({70, 45}, 8, 30), outside = randomMask({70, 45}, 9, 50);
  const Scene scene(image);
  const std::vector<BlobInfo> all = Scene(image).select(config(0, DAXI_BLOB_KEY_AREA, DAXI_BLOB_UNSORTED));
  for (const Image* mask : {static_cast<const Image*>(nullptr), &outside}) {
    for (const int32_t limit : {0, 1, 2, 5, 1000}) {
      BlobSelectCfg cfg = config(DAXI_BLOB_BY_OUTSIDE_PIXELS, DAXI_BLOB_KEY_AREA, DAXI_BLOB_UNSORTED);
      cfg.outsideLimit = limit;
      cfg.mask = mask ? mask->data() : nullptr;
      cfg.maskStep = 70;
      std::vector<uint32_t> expected;
      for (const BlobInfo& blob : all) {
        if (outsidePixels(scene, blob, mask) <= static_cast<uint32_t>(limit)) expected.push_back(blob.label);
      }
      std::vector<uint32_t> got;
      for (const BlobInfo& blob : selectV3(scene, cfg)) {
        got.push_back(blob.label);
        EXPECT_EQ(blob.borderPixels, outsidePixels(scene, blob, mask));
      }
      EXPECT_EQ(got, expected) << limit;
      EXPECT_EQ(scene.list().domainCount, Scene(image).select(cfg).size());  // the first version ignores the flag
    }
  }
  const Image column = picture({".", "#", "#", "."});
  EXPECT_EQ(selectV3(Scene(column), config(DAXI_BLOB_BY_OUTSIDE_PIXELS)).size(), 0u);
  BlobSelectCfg cfg = config(DAXI_BLOB_BY_OUTSIDE_PIXELS);
  cfg.outsideLimit = 4;
  EXPECT_EQ(selectV3(Scene(column), cfg)[0].borderPixels, 4u);
}

// Areas in whole pixels, upright and inverted ranges, by class.
TEST(BlobSelectV4, AreaRanges) {
  const Image image = randomMask({60, 40}, 12, 35);
  const Scene scene(image);
  const std::vector<BlobInfo> all = Scene(image).select(config());
  for (const auto& [min, max] : {std::pair{2, 5}, {3, 3}, {5, 2}, {4, 3}, {-7, 1000}, {INT32_MAX, INT32_MIN}}) {
    BlobSelectV4Cfg cfg = {};
    cfg.common = config(DAXI_BLOB_BY_AREA);
    cfg.areaMin = min, cfg.areaMax = max;
    size_t expected = 0;
    for (const BlobInfo& blob : all) {
      const auto area = static_cast<int64_t>(blob.area);
      expected += min <= max ? area >= min && area <= max : area > min || area < max;
    }
    EXPECT_EQ(selectV4(scene, cfg).size(), expected) << min << ".." << max;
  }

  Image classes({12, 3});
  classes.fill([](int32_t x, int32_t y) { return y == 1 ? 0 : 1 + x / (y == 0 ? 4 : 3); });
  uint64_t modelBytes = 0, bufferBytes = 0;
  ASSERT_EQ(DAXI_BlobFindMultiClsModelSize_8u(classes.size(), &modelBytes), DAX_STS_OK);
  ASSERT_EQ(DAXI_BlobFindMultiClsBufferSize_8u(classes.size(), &bufferBytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> model(modelBytes), findBuffer(bufferBytes);
  const DaxiDomainList* list = nullptr;
  ASSERT_EQ(DAXI_BlobFindMultiCls_8u_C1R(classes.data(), 12, classes.size(), 4, model.data(), &list, findBuffer.data()),
            DAX_STS_OK);
  ASSERT_EQ(list->domainCount, 7u);  // three of four pixels, four of three
  BlobSelectV4Cfg cfg = {};
  cfg.common = config(DAXI_BLOB_BY_AREA, DAXI_BLOB_KEY_RECT_X, DAXI_BLOB_ASCENDING);
  cfg.common.areaWeight = 1;
  cfg.perClass = 1;
  cfg.classAreaMin[1] = 4, cfg.classAreaMax[1] = 4;
  cfg.classAreaMin[3] = 3, cfg.classAreaMax[3] = 2;  // inverted: both areas but 2 and 3
  cfg.classAreaMin[4] = 1, cfg.classAreaMax[4] = 9;
  auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectV3BufferSize_8u(classes.size(), bytes); });
  BlobInfo blobs[7];
  BlobSelectResult result{blobs, 0, nullptr};
  cfg.common.maxCount = 7;
  ASSERT_EQ(DAXI_BlobSelectV4_8u_C1R(classes.data(), 12, classes.data(), 12, classes.size(), list, 7, &result, &cfg,
                                     buffer.data()),
            DAX_STS_OK);
  ASSERT_EQ(result.count, 3u);
  EXPECT_EQ(blobs[0].cls, 1u);
  EXPECT_FLOAT_EQ(blobs[0].score, 1);  // in the middle of its class's range
  EXPECT_EQ(blobs[1].cls, 3u);
  EXPECT_EQ(blobs[1].area, 4);
  EXPECT_EQ(blobs[2].cls, 4u);
  EXPECT_NEAR(blobs[2].score, 0.6, 1e-6);

  cfg.perClass = 0, cfg.common.flags = 0x2, cfg.common.perimeter = {5, 1};
  EXPECT_EQ(DAXI_BlobSelectV4_check_cfg(&cfg), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAXI_BlobSelectV4_8u_C1R(classes.data(), 12, classes.data(), 12, classes.size(), list, 7, &result, nullptr,
                                     buffer.data()),
            DAX_STS_NULL_POINTER);
}

// All domains without the second image; nothing in a list without domains; basic features alone, the same where they
// apply.
TEST(BlobSelectV2AndFast, AgreeWithTheFirst) {
  const Image image = randomMask({60, 40}, 30, 30), empty = randomMask({9, 9}, 1, 0);
  for (const uint32_t key : {1u, 5u, 6u, 10u, 11u}) {
    for (const int32_t max : {3, DAXI_BLOB_MAX_COUNT}) {
      BlobSelectCfg cfg = config(0x601, key, DAXI_BLOB_ASCENDING);
      cfg.area = {2, 30}, cfg.rectWidth = {1, 6, 0.5f}, cfg.rectHeight = {1, 7, 1}, cfg.maxCount = max;
      Scene scene(image);
      const std::vector<BlobInfo> first = scene.select(cfg);
      Trial second{scene}, fast{scene};
      auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectBufferSize_8u(image.size(), bytes); });
      ASSERT_EQ(DAXI_BlobSelectV2_8u_C1R(image.data(), image.step(), image.size(), &scene.list(), &second.result, &cfg,
                                         buffer.data()),
                DAX_STS_OK);
      ASSERT_EQ(DAXI_FastBlobSelect_8u_C1R(image.data(), image.step(), image.size(), &scene.list(), fast.count(),
                                           &fast.result, &cfg, buffer.data()),
                DAX_STS_OK);
      ASSERT_EQ(second.result.count, first.size());
      ASSERT_EQ(fast.result.count, first.size());
      for (size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(std::memcmp(&second.array[i], &first[i], offsetof(BlobInfo, borderPixels)), 0);
        EXPECT_EQ(fast.array[i].label, first[i].label);
        EXPECT_EQ(std::memcmp(&fast.array[i], &first[i], offsetof(BlobInfo, perimeter)), 0);
        EXPECT_EQ(fast.array[i].score, first[i].score);
        EXPECT_EQ(fast.array[i].boxWidth, 0);  // not written
      }
    }
  }
  const Scene nothing(empty);
  Trial run{nothing};
  run.result.count = 9;
  auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectBufferSize_8u(empty.size(), bytes); });
  const BlobSelectCfg cfg = config();
  EXPECT_EQ(DAXI_BlobSelectV2_8u_C1R(empty.data(), 9, empty.size(), &nothing.list(), &run.result, &cfg, buffer.data()),
            DAX_STS_OK);
  EXPECT_EQ(run.result.count, 0u);
  const Image dot = picture({"#"});
  const Scene one(dot);
  Trial fast{one};
  for (const auto& [flags, key] :
       {std::pair{0x1, DAXI_BLOB_KEY_AREA}, {0x2, DAXI_BLOB_KEY_AREA}, {0x1, DAXI_BLOB_KEY_BOX_WIDTH}}) {
    const BlobSelectCfg basic = config(static_cast<uint32_t>(flags), static_cast<uint32_t>(key));
    EXPECT_EQ(
        DAXI_FastBlobSelect_8u_C1R(dot.data(), 1, dot.size(), &one.list(), 1, &fast.result, &basic, buffer.data()),
        flags == 0x1 && key == DAXI_BLOB_KEY_AREA ? DAX_STS_OK : DAX_STS_BAD_PARAM);
  }
}

// On a pool the bytes of the single-threaded result, reserved fields included.
TEST(BlobSelectPool, SameBytesAsOneThread) {
  const Image image = randomMask({400, 300}, 6, 38);
  const Scene scene(image);
  ASSERT_GT(scene.list().domainCount, 2000u);
  const auto filled = [] {
    std::vector<BlobInfo> array(DAXI_BLOB_MAX_COUNT);
    std::memset(static_cast<void*>(array.data()), 0x3C, array.size() * sizeof(BlobInfo));
    return array;
  };
  for (const auto& [key, max] : {std::pair{1u, DAXI_BLOB_MAX_COUNT}, {2u, 150}, {8u, 1}, {8u, 700}}) {
    BlobSelectCfg cfg = config(0x5, key, 1 + key % 2);
    cfg.maxCount = max;
    cfg.area = {1, 40}, cfg.shortAxis = {0, 9}, cfg.areaWeight = 1;
    Trial one{scene, filled()}, many{scene, filled()};
    auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectV3BufferSize_8u_MT(one.size(), 5, bytes); });
    const auto select = [&](Trial& run, uint32_t threads, MockPool* pool) {
      return DAXI_BlobSelectV3_8u_C1R_MT(run.image(), run.step(), run.image(), run.step(), run.size(), &scene.list(),
                                         run.count(), &run.result, &cfg, buffer.data(), threads, pool);
    };
    MockPool pool;
    ASSERT_EQ(select(one, 1, nullptr), DAX_STS_OK);
    ASSERT_EQ(select(many, 5, &pool), DAX_STS_OK);
    ASSERT_EQ(many.result.count, one.result.count);
    EXPECT_EQ(std::memcmp(many.array.data(), one.array.data(), one.result.count * sizeof(BlobInfo)), 0) << key;
    EXPECT_GT(pool.calls, 0);
  }
}

TEST(BlobSelectPool, FailureOfTheHostComesBack) {
  const Image image = randomMask({100, 60}, 6, 30);
  const Scene scene(image);
  Trial run{scene};
  MockPool pool;
  pool.failingTile = 0;
  auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectBufferSize_8u_MT(image.size(), 4, bytes); });
  const BlobSelectCfg cfg = config();
  BlobSelectV4Cfg v4 = {};
  v4.common = cfg;
  EXPECT_EQ(DAXI_BlobSelect_8u_C1R_MT(image.data(), 100, image.data(), 100, image.size(), &scene.list(), run.count(),
                                      &run.result, &cfg, buffer.data(), 4, &pool),
            pool.failure);
  EXPECT_EQ(DAXI_BlobSelectV4_8u_C1R_MT(image.data(), 100, image.data(), 100, image.size(), &scene.list(), run.count(),
                                        &run.result, &v4, buffer.data(), 4, &pool),
            pool.failure);
  EXPECT_EQ(run.result.count, 0u);
  EXPECT_EQ(run.result.domains, nullptr);
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_BlobSelectBufferSize_8u_MT({65536, 65536}, UINT32_MAX, &bytes), DAX_STS_OK);
  EXPECT_GT(bytes, uint64_t{1} << 60);
}

TEST(BlobSort, AnyRecords) {
  std::vector<BlobInfo> blobs(50);
  Random random(3);
  for (BlobInfo& blob : blobs) {
    blob.label = static_cast<uint32_t>(random.below(100));
    blob.area = random.below(5) ? static_cast<float>(random.below(6)) : NAN;
  }
  for (const bool descending : {false, true}) {
    ASSERT_EQ(
        DAXI_BlobSort(blobs.data(), 50, DAXI_BLOB_KEY_AREA, descending ? DAXI_BLOB_DESCENDING : DAXI_BLOB_ASCENDING),
        DAX_STS_OK);
    for (size_t i = 1; i < blobs.size(); ++i) {
      const BlobInfo &a = blobs[i - 1], &b = blobs[i];
      const bool tied = a.area == b.area || (std::isnan(a.area) && std::isnan(b.area));
      EXPECT_TRUE(tied ? a.label <= b.label : std::isnan(b.area) || (descending ? a.area > b.area : a.area < b.area))
          << i;
    }
  }
}

TEST(BlobSort, KeysAndOrdersThatThereAre) {
  BlobInfo blob = {};
  for (const auto& [key, order] : {std::pair{1, 1}, {13, 3}, {0, 1}, {14, 1}, {1, 0}, {1, 4}}) {
    EXPECT_EQ(DAXI_BlobSort(&blob, 1, static_cast<uint32_t>(key), static_cast<uint32_t>(order)),
              key % 13 <= 1 && key > 0 && key < 14 && order % 4 > 0 ? DAX_STS_OK : DAX_STS_BAD_PARAM)
        << key << ", " << order;
  }
  EXPECT_EQ(DAXI_BlobSort(&blob, -1, 1, 1), DAX_STS_BAD_PARAM);
}

TEST(BlobDraw, LabelsAndContours) {
  const Image image = picture({"####.#", "#..#..", "####.#", ".....#"});
  const Scene scene(image, 4);
  Image drawn(image.size(), 2);
  drawn.fill([](int32_t, int32_t) { return 99; });
  ASSERT_EQ(DAXI_DrawBlobLabel_8u_C1IR(drawn.data(), drawn.step(), drawn.size(), &scene.list(), nullptr, 0),
            DAX_STS_OK);
  const auto rows = [&] {
    std::vector<std::string> result;
    for (int32_t y = 0; y < 4; ++y) {
      std::string row;
      for (int32_t x = 0; x < 6; ++x) row += drawn.at(x, y) == 99 ? '.' : static_cast<char>('0' + drawn.at(x, y));
      result.push_back(row);
    }
    return result;
  };
  EXPECT_EQ(rows(), (std::vector<std::string>{"1111.2", "1..1..", "1111.3", ".....3"}));

  Image solid = picture({"#....", ".###.", ".###.", ".###.", "....#"});
  const Scene both(solid, 4);
  auto buffer = workBuffer([&](uint64_t* bytes) { return DAXI_BlobSelectBufferSize_8u(solid.size(), bytes); });
  const std::vector<BlobInfo> blobs = selectV3(both, config());
  ASSERT_EQ(
      DAXI_BlobSelect_draw_blob_contour(solid.data(), 5, solid.size(), &both.list(), blobs.data(), 3, 7, buffer.data()),
      DAX_STS_OK);
  for (int32_t y = 0; y < 5; ++y) {
    for (int32_t x = 0; x < 5; ++x) {
      const bool inSquare = x >= 1 && x <= 3 && y >= 1 && y <= 3, centre = x == 2 && y == 2, dot = x == y && x % 4 == 0;
      EXPECT_EQ(solid.at(x, y), centre ? 255 : inSquare || dot ? 7 : 0);
    }
  }
  EXPECT_EQ(DAXI_BlobSelect_draw_blob_contour(solid.data(), 5, {5, 0}, &both.list(), nullptr, 0, 7, buffer.data()),
            DAX_STS_BAD_SIZE);
}

}  // namespace
}  // namespace dax::test
