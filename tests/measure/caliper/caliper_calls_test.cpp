// The members of calipers: checks and their order, impossible regions, that all forms give the same, many regions at once.
#include <gtest/gtest.h>

#include <limits>

#include "daxi.h"
#include "measure/caliper/caliper_call.h"
#include "tests/measure/caliper/caliper_scene.h"
#include "tests/support/check_order.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();

CaliperEdgePairCfg pairConfig(const CaliperEdgeCfg& from) {
  CaliperEdgePairCfg cfg = {};
  cfg.projection = from.projection, cfg.polarity = from.polarity, cfg.filterHalfWidth = from.filterHalfWidth;
  cfg.maxPairs = from.maxEdges, cfg.threshold = from.threshold, cfg.scoreFlags = 1, cfg.expectedWidth = 5;
  for (CaliperCriterion* c = &cfg.contrast; c <= &cfg.gray; ++c) *c = kAnything;
  return cfg;
}

struct Arguments {
  const uint8_t* src;
  int32_t step;
  const uint8_t* mask;
  int32_t maskStep;
  DaxiSize size;
  CaliperBox box;
  CaliperEdgeCfg cfg;
  CaliperEdgeResult* result;
  CaliperProfile* profile;
  void* buffer;
  bool noCfg, noBox;
};
using A = Arguments;

#define DAX_CRITERION_CLAUSES(NAME)                                               \
  {#NAME " mode", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.mode = 2; }},          \
      {#NAME " x0", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.x0 = kInf; }},       \
      {#NAME " x1", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.x1 = kNan; }},       \
      {#NAME " x2", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.x2 = -2e6f; }},      \
      {#NAME " y0", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.y0 = -0.1f; }},      \
      {#NAME " y0 above y1", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.y0 = 2; }}, \
      {#NAME " y1", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.NAME.y1 = 1.1f; }}, {     \
#NAME " y1 nothing", DAX_STS_BAD_PARAM, [](A & a) { a.cfg.NAME.y1 = 1e-7f; }  \
  }

const std::vector<CheckClause<A>> kClauses = {
    {"source", DAX_STS_NULL_POINTER, [](A& a) { a.src = nullptr; }},
    {"mask", DAX_STS_NULL_POINTER, [](A& a) { a.mask = nullptr; }},
    {"box", DAX_STS_NULL_POINTER, [](A& a) { a.noBox = true; }},
    {"cfg", DAX_STS_NULL_POINTER, [](A& a) { a.noCfg = true; }},
    {"result", DAX_STS_NULL_POINTER, [](A& a) { a.result = nullptr; }},
    {"profile", DAX_STS_NULL_POINTER, [](A& a) { a.profile = nullptr; }},
    {"buffer", DAX_STS_NULL_POINTER, [](A& a) { a.buffer = nullptr; }},
    {"width", DAX_STS_BAD_SIZE, [](A& a) { a.size.width = 0; }},
    {"height", DAX_STS_BAD_SIZE, [](A& a) { a.size.height = -1; }},
    {"step", DAX_STS_BAD_STEP, [](A& a) { a.step = 39; }},
    {"mask step", DAX_STS_BAD_STEP, [](A& a) { a.maskStep = 39; }},
    {"count", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.maxEdges = 0; }},
    {"threshold", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.threshold = -1e-6f; }},
    {"threshold NaN", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.threshold = kNan; }},
    {"no half width", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.filterHalfWidth = 0; }},
    {"half width", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.filterHalfWidth = 51; }},
    {"no polarity", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.polarity = 0; }},
    {"polarity", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.polarity = 4; }},
    {"projection", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.projection = 2; }},
    DAX_CRITERION_CLAUSES(contrast),
    DAX_CRITERION_CLAUSES(gray),
    DAX_CRITERION_CLAUSES(distance),
    DAX_CRITERION_CLAUSES(offset),
    {"no flag", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.scoreFlags = 0; }},
    {"flag of pairs", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.scoreFlags |= 0x100; }},
    {"flags", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.scoreFlags |= 1024; }},
    {"least score", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.minScore = -1; }},
    {"no width", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.width = 0.99f; }},
    {"no height", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.height = 0.49f; }},
    {"height NaN", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.height = kNan; }},
    {"far too wide", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.width = 1e9f; }},
    {"infinite", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.width = kInf; }},
    {"centre left", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.x = -0.1f; }},
    {"centre right", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.x = 39.1f; }},
    {"centre below", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.y = 29.1f; }},
    {"centre NaN", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.y = kNan; }},
    {"angle", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.angle = 3.15f; }},
    {"angle NaN", DAX_STS_BAD_ROTATED_RECT, [](A& a) { a.box.angle = kNan; }},
    {"room", DAX_STS_BAD_PARAM, [](A& a) { a.profile->capacity = 19; }},
    {"isa", DAX_STS_BAD_ISA, [](A& a) { a.cfg.isa = -1; }},
};
#undef DAX_CRITERION_CLAUSES

TEST(CaliperChecks, OrderAndCodes) {
  Gray image({40, 30});
  image.randomize(1);
  std::vector<CaliperEdge> edges(100);
  std::vector<float> profile(40, 7), response(40, 7);
  CaliperEdgeResult result{edges.data(), nullptr, -7};
  CaliperProfile plot{profile.data(), response.data(), 20, -7, -7};
  std::vector<double> buffer(8000);
  CaliperEdgeCfg cfg = edgeConfig();
  cfg.scoreFlags = 0x207;
  const Arguments good{image.data(), 40,    image.data(),  40,    {40, 30}, {20, 15, 20, 10, 0.3f}, cfg,
                       &result,      &plot, buffer.data(), false, false};
  const auto call = [](const A& a) {
    const DaxStatus status =
        DAXI_CalipEdgeDetectV1_8u_C1RM_IS(a.src, a.step, a.mask, a.maskStep, a.size, a.noBox ? nullptr : &a.box,
                                          a.noCfg ? nullptr : &a.cfg, a.result, a.profile, a.buffer);
    if (a.profile) a.profile->capacity = 20;
    return status;
  };
  const auto untouched = [&] { return result.count == -7 && plot.length == -7 && profile[0] == 7 && response[0] == 7; };
  // Members without a mask, profile or code of their own share the body.
  expectCheckOrder<A>(good, kClauses, call, untouched);
  result.edges = nullptr;
  EXPECT_EQ(call(good), DAX_STS_NULL_POINTER);
  result.edges = edges.data();
  plot.response = nullptr;
  EXPECT_EQ(call(good), DAX_STS_NULL_POINTER);
  // Where no _IS is in the name, the code is nobody's.
  Arguments other = good;
  other.cfg.isa = -1;
  EXPECT_EQ(DAXI_CalipEdgeDetect_8u_C1R(other.src, 40, other.size, &other.box, &other.cfg, &result, buffer.data()),
            DAX_STS_OK);
  // Ramps of criteria that are off may be anything.
  other.cfg.scoreFlags = 1;
  other.cfg.gray = {9, 1, 0, kNan, 5, -1};
  EXPECT_EQ(DAXI_CalipEdgeDetect_cfg_check(&other.cfg), DAX_STS_OK);
}

TEST(CaliperChecks, PairConfiguration) {
  const CaliperEdgePairCfg good = [] {
    CaliperEdgePairCfg cfg = pairConfig(edgeConfig());
    cfg.scoreFlags = 1023;
    return cfg;
  }();
  ASSERT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&good), DAX_STS_OK);
  using Spoil = void (*)(CaliperEdgePairCfg&);
  for (const Spoil spoil : std::initializer_list<Spoil>{
           [](auto& c) { c.maxPairs = 0; }, [](auto& c) { c.threshold = -1; }, [](auto& c) { c.filterHalfWidth = 0; },
           [](auto& c) { c.polarity = 4; }, [](auto& c) { c.projection = 2; }, [](auto& c) { c.scoreFlags = 0; },
           [](auto& c) { c.scoreFlags = 1024; }, [](auto& c) { c.expectedWidth = 0; },
           [](auto& c) { c.expectedWidth = kNan; }, [](auto& c) { c.minScore = kNan; }}) {
    CaliperEdgePairCfg bad = good;
    spoil(bad);
    EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&bad), DAX_STS_BAD_PARAM);
  }
  // Every criterion is looked at where its flag is set, and only there.
  const uint32_t flags[] = {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80, 0x80, 0x100, 0x200};
  for (size_t i = 0; i < std::size(flags); ++i) {
    CaliperEdgePairCfg bad = good;
    (&bad.contrast)[i].mode = 2;
    EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&bad), DAX_STS_BAD_PARAM) << i;
    bad.scoreFlags &= ~flags[i];
    EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&bad), DAX_STS_OK) << i;
  }
  CaliperEdgePairCfg plain = good;
  plain.scoreFlags = 0x307, plain.expectedWidth = 0;
  EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&plain), DAX_STS_OK);
}

// What no image can have, by the operation and by its size query.
TEST(CaliperChecks, ImpossibleRegions) {
  const Gray image({50, 50});
  const auto refused = [&](const auto& region) {
    uint64_t bytes = 0;
    return bufferSize(region, &bytes) == DAX_STS_BAD_ROTATED_RECT;
  };
  EXPECT_FALSE(refused(CaliperRhomboid{20, 20, 10, 10, 0.5f, 2}));
  for (const CaliperRhomboid& bad : {CaliperRhomboid{20, 20, 0, 10, 0, 1.5f},
                                     {20, 20, 10, kNan, 0, 1.5f},
                                     {20, 20, 10, 10, 4, 1.5f},
                                     {20, 20, 10, 10, 0, kNan},
                                     {20, 20, 10, 10, 1, 1},
                                     {20, 20, 10, 10, 1.5f, -1.6415927f},
                                     {20, 20, 10, 10, 0, 0.005f}}) {
    EXPECT_TRUE(refused(bad));
  }
  EXPECT_FALSE(refused(CaliperAnnulus{20, 20, 0, 10, 0, 6.2831855f}));
  for (const CaliperAnnulus& bad : {CaliperAnnulus{20, 20, -1, 10, 0, 1},
                                    {20, 20, 10, 10.5f, 0, 1},
                                    {20, 20, 10, 5, 0, 1},
                                    {20, 20, 5, kInf, 0, 1},
                                    {20, 20, kNan, 10, 0, 1},
                                    {20, 20, 5, 10, 4, 1},
                                    {20, 20, 5, 10, 0, 0},
                                    {20, 20, 5, 10, 0, -1},
                                    {20, 20, 5, 10, 0, 6.3f},
                                    {20, 20, 5, 10, 0, kNan},
                                    {20, 20, 5, 10, 0, 0.01f},
                                    {20, 20, 1e20f, 3e38f, 0, 1}}) {
    EXPECT_TRUE(refused(bad));
  }
  EXPECT_EQ(measure(image, CaliperAnnulus{50, 20, 5, 10, 0, 1}, edgeConfig()).status, DAX_STS_BAD_ROTATED_RECT);
  EXPECT_EQ(measure(image, CaliperRhomboid{20, -1, 9, 9, 0, 1}, edgeConfig()).status, DAX_STS_BAD_ROTATED_RECT);
  uint64_t bytes = 0;
  const CaliperBox boxes[2] = {{1, 1, 10, 10, 0}, {1, 1, 0, 10, 0}};
  EXPECT_EQ(DAXI_CalipEdgeDetectBufferSize_8u(nullptr, &bytes), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_CalipEdgeDetectBufferSize_8u(boxes, nullptr), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(nullptr, 1, 1, &bytes), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes, 1, 1, nullptr), DAX_STS_NULL_POINTER);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes, 0, 1, &bytes), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes, 2, 1, &bytes), DAX_STS_BAD_ROTATED_RECT);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes, 1, 0, &bytes), DAX_STS_OK);
  uint64_t four = 0;
  EXPECT_EQ(DAXI_CalipEdgePairDetectV2BufferSize_8u(boxes, 1, 4, &four), DAX_STS_OK);
  EXPECT_EQ(four, 4 * bytes);
}

// All forms of the box give what the first gives, for single edges and for pairs.
template <class Result, class Record, class Cfg, class... Members>
void expectSame(const Gray& image, const CaliperBox& box, const Cfg& cfg, Record* Result::*array, Members... members) {
  std::vector<std::vector<Record>> found;
  const Gray mask = [&] {
    Gray all(image.size(), 3);
    all.fill([](int32_t, int32_t) { return 1; });
    return all;
  }();
  std::vector<double> buffer(20000);
  std::vector<float> profile(200), response(200);
  const auto run = [&](auto* member) {
    std::vector<Record> records(100);
    Result result = {};
    result.*array = records.data();
    CaliperProfile plot{profile.data(), response.data(), 200, 0, 0};
    DaxStatus status;
    if constexpr (std::is_invocable_v<decltype(member), const uint8_t*, int32_t, DaxiSize, const CaliperBox*,
                                      const Cfg*, Result*, void*>) {
      status = member(image.data(), image.step(), image.size(), &box, &cfg, &result, buffer.data());
    } else if constexpr (std::is_invocable_v<decltype(member), const uint8_t*, int32_t, DaxiSize, const CaliperBox*,
                                             const Cfg*, Result*, CaliperProfile*, void*>) {
      status = member(image.data(), image.step(), image.size(), &box, &cfg, &result, &plot, buffer.data());
    } else if constexpr (std::is_invocable_v<decltype(member), const uint8_t*, int32_t, const uint8_t*, int32_t,
                                             DaxiSize, const CaliperBox*, const Cfg*, Result*, void*>) {
      status = member(image.data(), image.step(), mask.data(), mask.step(), image.size(), &box, &cfg, &result,
                      buffer.data());
    } else if constexpr (std::is_invocable_v<decltype(member), const uint8_t*, int32_t, const uint8_t*, int32_t,
                                             DaxiSize, const CaliperBox*, const Cfg*, Result*, CaliperProfile*,
                                             void*>) {
      status = member(image.data(), image.step(), mask.data(), mask.step(), image.size(), &box, &cfg, &result, &plot,
                      buffer.data());
    } else {
      status = member(image.data(), image.step(), image.size(), &box, 1, &cfg, &result, buffer.data(), 1, nullptr);
    }
    EXPECT_EQ(status, DAX_STS_OK);
    records.resize(static_cast<size_t>(result.count));
    found.push_back(records);
  };
  (run(members), ...);
  ASSERT_GT(found[0].size(), 2u);
  for (const auto& records : found) {
    ASSERT_EQ(records.size(), found[0].size());
    EXPECT_EQ(std::memcmp(records.data(), found[0].data(), records.size() * sizeof(Record)), 0);
  }
}

TEST(CaliperMembers, GiveTheSame) {
  Gray image({90, 70});
  image.randomize(12);
  for (const uint32_t projection : {0u, 1u}) {
    const CaliperBox box{44.3f, 31.9f, 60, 23, 0.9f};
    const CaliperEdgeCfg cfg = edgeConfig(projection);
    expectSame<CaliperEdgeResult>(
        image, box, cfg, &CaliperEdgeResult::edges, DAXI_CalipEdgeDetect_8u_C1R, DAXI_CalipEdgeDetect_8u_C1R_IS,
        DAXI_CalipEdgeDetect_8u_C1R_NEON, DAXI_CalipEdgeDetect_8u_C1RM, DAXI_CalipEdgeDetect_8u_C1RM_IS,
        DAXI_CalipEdgeDetect_8u_C1RM_NEON, DAXI_CalipEdgeDetectV1_8u_C1R, DAXI_CalipEdgeDetectV1_8u_C1R_IS,
        DAXI_CalipEdgeDetectV1_8u_C1R_NEON, DAXI_CalipEdgeDetectV1_8u_C1RM, DAXI_CalipEdgeDetectV1_8u_C1RM_IS,
        DAXI_CalipEdgeDetectV1_8u_C1RM_NEON, DAXI_CalipEdgeDetectV2_8u_C1R, DAXI_CalipEdgeDetectV2_8u_C1R_NEON);
    expectSame<CaliperEdgePairResult>(image, box, pairConfig(cfg), &CaliperEdgePairResult::pairs,
                                      DAXI_CalipEdgePairDetect_8u_C1R, DAXI_CalipEdgePairDetect_8u_C1R_IS,
                                      DAXI_CalipEdgePairDetect_8u_C1R_NEON, DAXI_CalipEdgePairDetect_8u_C1RM,
                                      DAXI_CalipEdgePairDetect_8u_C1RM_IS, DAXI_CalipEdgePairDetect_8u_C1RM_NEON,
                                      DAXI_CalipEdgePairDetectV1_8u_C1R, DAXI_CalipEdgePairDetectV1_8u_C1R_IS,
                                      DAXI_CalipEdgePairDetectV1_8u_C1R_NEON, DAXI_CalipEdgePairDetectV1_8u_C1RM,
                                      DAXI_CalipEdgePairDetectV1_8u_C1RM_IS, DAXI_CalipEdgePairDetectV1_8u_C1RM_NEON,
                                      DAXI_CalipEdgePairDetectV2_8u_C1R, DAXI_CalipEdgePairDetectV2_8u_C1R_NEON);
  }
}

TEST(CaliperMembers, ManyRegionsOnAPool) {
  Gray image({120, 100});
  image.randomize(13);
  Random random(1);
  std::vector<CaliperBox> boxes;
  for (int i = 0; i < 37; ++i) {
    boxes.push_back({static_cast<float>(random.below(120)), static_cast<float>(random.below(100)),
                     static_cast<float>(4 + random.below(60)), static_cast<float>(1 + random.below(30)),
                     static_cast<float>(random.below(600) - 300) / 100});
  }
  const CaliperEdgeCfg cfg = edgeConfig();
  const auto n = static_cast<int32_t>(boxes.size());
  const auto run = [&](uint32_t threads, void* pool) {
    uint64_t bytes = 0;
    EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes.data(), n, threads, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    std::vector<CaliperEdge> edges(boxes.size() * 100);
    std::vector<CaliperEdgeResult> results;
    for (size_t i = 0; i < boxes.size(); ++i) results.push_back({edges.data() + 100 * i, nullptr, 0});
    EXPECT_EQ(DAXI_CalipEdgeDetectV2_8u_C1R(image.data(), image.step(), image.size(), boxes.data(), n, &cfg,
                                            results.data(), buffer.data(), threads, pool),
              DAX_STS_OK);
    std::vector<std::vector<CaliperEdge>> all;
    for (const CaliperEdgeResult& r : results) all.emplace_back(r.edges, r.edges + r.count);
    return all;
  };
  const auto single = run(1, nullptr);
  for (size_t i = 0; i < boxes.size(); ++i) {
    const auto alone = measure(image, boxes[i], cfg).edges;
    ASSERT_EQ(alone.size(), single[i].size());
    EXPECT_TRUE(std::equal(alone.begin(), alone.end(), single[i].begin(), sameBits<CaliperEdge>));
  }
  for (const bool concurrent : {false, true}) {
    MockPool pool;
    pool.threads = 6, pool.concurrent = concurrent;  // more than announced
    const auto pooled = run(4, &pool);
    EXPECT_GT(pool.tiles, 1);
    for (size_t i = 0; i < boxes.size(); ++i) {
      ASSERT_EQ(pooled[i].size(), single[i].size());
      EXPECT_TRUE(std::equal(pooled[i].begin(), pooled[i].end(), single[i].begin(), sameBits<CaliperEdge>));
    }
  }
  MockPool failing;
  failing.failingTile = 1;
  std::vector<CaliperEdge> edges(300);
  std::vector<CaliperEdgeResult> results = {{edges.data(), nullptr, 0}, {edges.data() + 100, nullptr, 0}};
  std::vector<double> buffer(100000);
  const auto call = [&](int32_t count) {
    return DAXI_CalipEdgeDetectV2_8u_C1R(image.data(), image.step(), image.size(), boxes.data(), count, &cfg,
                                         results.data(), buffer.data(), 2, &failing);
  };
  EXPECT_EQ(call(2), failing.failure);
  EXPECT_EQ(call(0), DAX_STS_BAD_PARAM);
  EXPECT_EQ(call(-3), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
