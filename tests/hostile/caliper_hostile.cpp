// Calipers, and line fits through points.
#include <cmath>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

float unit(Call& c) {
  return static_cast<float>(c.random.below(1001)) / 1000.0f;
}

// --- Regions, about as large as the images are ---

struct Centre {
  float x, y, angle;
};

Centre centre(Call& c) {
  const DaxiSize size = c.has("size") ? c.size("size") : DaxiSize{50, 50};
  const auto inside = [&](int32_t side) { return unit(c) * static_cast<float>(std::clamp(side, 1, 1000) - 1); };
  return {inside(size.width), inside(size.height), -3.14f + 6.28f * unit(c)};
}

void draw(Call& c, CaliperBox& box) {
  const Centre at = centre(c);
  box = {at.x, at.y, 1 + 40 * unit(c), 1 + 30 * unit(c), at.angle};
}

void draw(Call& c, CaliperRhomboid& rhomboid) {
  const Centre at = centre(c);
  const float turn = 0.05f + 3 * unit(c);
  const float side = at.angle > 0 ? at.angle - turn : at.angle + turn;
  rhomboid = {at.x, at.y, 1 + 40 * unit(c), 1 + 30 * unit(c), at.angle, side};
}

void draw(Call& c, CaliperAnnulus& annulus) {
  const Centre at = centre(c);
  const float inner = 1 + 20 * unit(c);
  annulus = {at.x, at.y, inner, inner + 1 + 20 * unit(c), at.angle, 1 + 5.2f * unit(c)};
}

// One region, or `count` of them.
template <class Region>
const Region* regions(Call& c, const char* name) {
  const int64_t count = c.has("count") ? c.number("count", 1, 4) : 1;
  auto* const all = static_cast<Region*>(c.array(name, count < 1 ? -1 : count));
  const Block* const made = c.block(all);
  for (size_t i = 0; made && i < made->bytes / sizeof(Region); ++i) {
    draw(c, all[i]);
    c.spoilWord(name, all + i, 0, sizeof(Region));
  }
  return all;
}

// --- Configurations ---

CaliperCriterion criterion(Call& c) {
  const float x0 = -5 + 10 * unit(c), x1 = x0 + 30 * unit(c), y0 = unit(c) * 0.5f;
  return {static_cast<uint32_t>(c.random.below(2)), x0, x1, x1 + 100 * unit(c), y0, 0.5f + 0.5f * unit(c)};
}

template <class Cfg>
void fillCommon(Call& c, Cfg& cfg) {
  cfg.projection = static_cast<uint32_t>(c.random.below(2));
  cfg.polarity = static_cast<uint32_t>(c.between(1, 3));
  cfg.filterHalfWidth = static_cast<uint32_t>(c.chance(70) ? c.between(1, 5) : c.between(1, 50));
  cfg.threshold = c.pick({0.0f, 0.0f, 1.0f, 20.0f}) * unit(c);
  cfg.isa = c.pick<int32_t>({DAX_ISA_PORTABLE, DAX_ISA_NEON, 1, 99});
  cfg.reserved = static_cast<uint32_t>(c.random.next());
  cfg.minScore = c.chance(50) ? 0 : unit(c);
}

struct Edges {
  using Cfg = CaliperEdgeCfg;
  using Result = CaliperEdgeResult;
  using Found = CaliperEdge;
  static constexpr int32_t kPoints = 1;
  static int32_t& most(Cfg& cfg) { return cfg.maxEdges; }
  static Found*& found(Result& result) { return result.edges; }
  static void fill(Call& c, Cfg& cfg) {
    fillCommon(c, cfg);
    cfg.edgeChoice = c.chance(80) ? 0 : static_cast<int32_t>(c.between(-1, 5));
    cfg.scoreFlags = static_cast<uint32_t>(c.random.next()) & 0x207;
    if (cfg.scoreFlags == 0) cfg.scoreFlags = 0x207;
    for (CaliperCriterion* each : {&cfg.contrast, &cfg.distance, &cfg.offset, &cfg.gray}) *each = criterion(c);
  }
};

struct Pairs {
  using Cfg = CaliperEdgePairCfg;
  using Result = CaliperEdgePairResult;
  using Found = CaliperEdgePair;
  static constexpr int32_t kPoints = 2;
  static int32_t& most(Cfg& cfg) { return cfg.maxPairs; }
  static Found*& found(Result& result) { return result.pairs; }
  static void fill(Call& c, Cfg& cfg) {
    fillCommon(c, cfg);
    cfg.pairChoice = c.chance(80) ? 0 : static_cast<int32_t>(c.between(-1, 5));
    cfg.scoreFlags = static_cast<uint32_t>(c.between(1, 0x3FF));
    cfg.expectedWidth = 1 + 20 * unit(c);
    for (CaliperCriterion* each = &cfg.contrast; each <= &cfg.gray; ++each) *each = criterion(c);
  }
};

template <class Kind>
const typename Kind::Cfg* configuration(Call& c) {
  auto* const cfg = c.record<typename Kind::Cfg>("cfg");
  if (!cfg) return nullptr;
  Kind::fill(c, *cfg);
  Kind::most(*cfg) = c.chance(50) ? 1 + c.random.below(3) : 200;
  c.spoilWord("cfg", cfg, 0, sizeof *cfg);
  return cfg;
}

// Room for as many as the configuration says. Only what was found means something.
template <class Kind>
void results(Call& c, const char* name, typename Kind::Cfg* cfg) {
  const int64_t count = c.has("count") ? c.number("count", 1, 4) : 1;
  const int64_t most = cfg && Kind::most(*cfg) >= 1 ? Kind::most(*cfg) : -1;
  auto* const all = static_cast<typename Kind::Result*>(c.array(name, count < 1 ? -1 : count));
  const Block* const made = c.block(all);
  for (size_t i = 0; made && i < made->bytes / sizeof *all; ++i) {
    auto* const result = all + i;
    *result = {};
    if (c.isSpoiled(name) && c.chance(50)) continue;
    auto*& found = Kind::found(*result);
    found = c.elements<typename Kind::Found>("found", most, Role::output);
    if (c.chance(70)) result->points = c.elements<DaxiPoint32f>("points", most * Kind::kPoints, Role::output);
    const auto meaningful = [result](size_t each) { return [=] { return static_cast<size_t>(result->count) * each; }; };
    if (Block* const block = c.block(found)) block->meaningful = meaningful(sizeof(typename Kind::Found));
    if (Block* const block = c.block(result->points))
      block->meaningful = meaningful(sizeof(DaxiPoint32f) * Kind::kPoints);
  }
}

void profile(Call& c) {
  auto* const record = c.record<CaliperProfile>("profile");
  if (!record) return;
  record->capacity = c.chance(85) ? 300 : static_cast<int32_t>(c.between(1, 40));
  if (c.isSpoiled("profile") && c.chance(50)) record->capacity = -record->capacity;
  for (float** const each : {&record->profile, &record->response}) {
    const bool missing = c.isSpoiled("profile") && c.chance(50);
    *each = missing ? nullptr : c.elements<float>("profile->", record->capacity, Role::output);
    if (Block* const made = c.block(*each)) {
      made->meaningful = [record] { return static_cast<size_t>(record->length) * sizeof(float); };
    }
  }
}

// --- Calls ---

template <class Region>
using RegionQuery = DaxStatus (*)(const Region*, uint64_t*);
template <class Region>
using RegionsQuery = DaxStatus (*)(const Region*, int32_t, uint32_t, uint64_t*);

// Edges and long stripes, or noise.
void scene(Call& c) {
  c.image("src", "srcStep", c.size("size"));
  Block* const src = c.blockOf("src");
  if (src && c.chance(70)) c.fillMask(src->data, src->bytes);
}

template <class Kind, class Region, RegionQuery<Region> query>
void detect(Call& c) {
  const char* const name = c.has("box") ? "box" : c.has("annulus") ? "annulus" : "rhomboid";
  scene(c);
  const Region* const region = regions<Region>(c, name);
  results<Kind>(c, "result", const_cast<typename Kind::Cfg*>(configuration<Kind>(c)));
  if (c.has("profile")) profile(c);
  c.work("buffer", [&](uint64_t* bytes) { return query(region, bytes); });
  c.worksBeforeFailing = true;
}

template <class Kind, class Region, RegionsQuery<Region> query>
void detectMany(Call& c) {
  const char* const name = c.has("boxes") ? "boxes" : c.has("annuli") ? "annuli" : "rhomboids";
  scene(c);
  c.pool();
  const Region* const all = regions<Region>(c, name);
  results<Kind>(c, "results", const_cast<typename Kind::Cfg*>(configuration<Kind>(c)));
  const auto count = c.get<int32_t>("count");
  c.work("buffer", [&](uint64_t* bytes) { return query(all, count, c.get<uint32_t>("threads"), bytes); });
  c.worksBeforeFailing = true;
}

template <class Region>
void need(Call& c) {
  for (const char* name : {"box", "boxes", "rhomboid", "rhomboids", "annulus", "annuli"}) {
    if (c.has(name)) regions<Region>(c, name);
  }
  if (c.has("threads")) c.number("threads", 0, 70);
}

// --- Lines ---

template <class Point>
void fitLine(Call& c) {
  if (c.number("count", 2, 40) > 200) c.set("count", 200);  // time may grow with the cube
  const auto count = c.get<int32_t>("count");
  auto* const points = static_cast<Point*>(c.array("points", count < 2 ? -1 : count));
  const Block* const made = c.block(points);
  const float slope = -3 + 6 * unit(c);
  const int64_t strays = c.pick({0, 10, 30, 100});
  for (size_t i = 0; made && i < made->bytes / sizeof(Point); ++i) {
    const float x = 200 * unit(c), y = c.chance(static_cast<int32_t>(strays)) ? 300 * unit(c) : slope * x + 5 * unit(c);
    points[i].x = static_cast<decltype(points->x)>(x), points[i].y = static_cast<decltype(points->y)>(y);
    if (c.isSpoiled("points") && c.chance(30)) c.spoilWord("points", points + i, 0, sizeof(Point));
  }
  if (auto* const cfg = c.record<LineFitCfg>("cfg")) {
    const int32_t rejected = c.random.below(std::clamp(count, 2, 21) - 1);
    *cfg = {1 + c.random.below(3), 1 + c.random.below(3),  1 + c.random.below(40), c.chance(50) ? 0 : rejected,
            0.01f + 50 * unit(c),  c.chance(80) ? 0u : 1u, -3.1f + 6.2f * unit(c), 3.1f * unit(c)};
    c.spoilWord("cfg", cfg, 0, sizeof *cfg);
    cfg->maxIterations = std::min(cfg->maxIterations, 1000);  // all of which may be made
  }
  for (const char* name : {"line", "rms"}) c.array(name, 1);
  for (const char* name : {"inliers", "weights"}) c.array(name, count < 1 ? -1 : count);
  c.work(
      "buffer", [&](uint64_t* bytes) { return DAXI_LineFitRegreBufferSize_32f(c.get<int32_t>("count"), bytes); }, 8);
  c.worksBeforeFailing = true;
}

void lineNeed(Call& c) {
  c.number("count", 2, 100000);
}

#define CALIPER_ROWS(Kind, shape, Region)                                   \
  {"DAXI_Calip" #Kind "Detect" shape "BufferSize_*", need<Region>},         \
      {"DAXI_Calip" #Kind "Detect" shape "V1BufferSize_*", need<Region>}, { \
    "DAXI_Calip" #Kind "Detect" shape "V2BufferSize_*", need<Region>        \
  }

using Box = CaliperBox;
using Rhomboid = CaliperRhomboid;
using Annulus = CaliperAnnulus;
const Rows rows = {
    CALIPER_ROWS(Edge, "", Box),
    CALIPER_ROWS(Edge, "Rhomboid", Rhomboid),
    CALIPER_ROWS(Edge, "Annulus", Annulus),
    CALIPER_ROWS(EdgePair, "", Box),
    CALIPER_ROWS(EdgePair, "Rhomboid", Rhomboid),
    CALIPER_ROWS(EdgePair, "Annulus", Annulus),
    {"DAXI_CalipEdgeDetectV2_*", detectMany<Edges, Box, DAXI_CalipEdgeDetectV2BufferSize_8u>},
    {"DAXI_CalipEdgeDetectRhomboidV2_*", detectMany<Edges, Rhomboid, DAXI_CalipEdgeDetectRhomboidV2BufferSize_8u>},
    {"DAXI_CalipEdgeDetectAnnulusV2_*", detectMany<Edges, Annulus, DAXI_CalipEdgeDetectAnnulusV2BufferSize_8u>},
    {"DAXI_CalipEdgeDetectRhomboid*", detect<Edges, Rhomboid, DAXI_CalipEdgeDetectRhomboidBufferSize_8u>},
    {"DAXI_CalipEdgeDetectAnnulus*", detect<Edges, Annulus, DAXI_CalipEdgeDetectAnnulusBufferSize_8u>},
    {"DAXI_CalipEdgeDetect_16s_C1R", detect<Edges, Box, DAXI_CalipEdgeDetectBufferSize_16s>},
    {"DAXI_CalipEdgeDetect*", detect<Edges, Box, DAXI_CalipEdgeDetectBufferSize_8u>},
    {"DAXI_CalipEdgePairDetectV2_*", detectMany<Pairs, Box, DAXI_CalipEdgePairDetectV2BufferSize_8u>},
    {"DAXI_CalipEdgePairDetectRhomboidV2_*",
     detectMany<Pairs, Rhomboid, DAXI_CalipEdgePairDetectRhomboidV2BufferSize_8u>},
    {"DAXI_CalipEdgePairDetectAnnulusV2_*",
     detectMany<Pairs, Annulus, DAXI_CalipEdgePairDetectAnnulusV2BufferSize_8u>},
    {"DAXI_CalipEdgePairDetectRhomboid*", detect<Pairs, Rhomboid, DAXI_CalipEdgePairDetectRhomboidBufferSize_8u>},
    {"DAXI_CalipEdgePairDetectAnnulus*", detect<Pairs, Annulus, DAXI_CalipEdgePairDetectAnnulusBufferSize_8u>},
    {"DAXI_CalipEdgePairDetect_16s_C1R", detect<Pairs, Box, DAXI_CalipEdgePairDetectBufferSize_16s>},
    {"DAXI_CalipEdgePairDetect*", detect<Pairs, Box, DAXI_CalipEdgePairDetectBufferSize_8u>},
    {"DAXI_LineFitRegreBufferSize_*", lineNeed},
    {"DAXI_LineFitRegre_32f", fitLine<DaxiPoint32f>},
    {"DAXI_LineFitRegre_16s32f", fitLine<DaxiPoint16s>},
    {"DAXI_LineFitRegre_32s32f", fitLine<DaxiPoint32s>},
};

}  // namespace

}  // namespace dax::hostile
