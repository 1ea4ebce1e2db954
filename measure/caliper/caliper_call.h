// The exports of calipers: checks, then the worker, for one region or for many on the host's pool. One template for all
// regions, pixel types, single edges and pairs.
#pragma once

#include <algorithm>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/tiles.h"
#include "measure/caliper/caliper_detect.h"

namespace dax {

// Where an export takes its instruction-set code from.
enum class CaliperIsa { kProcessor, kCfg, kNeon };

inline DaxStatus checkCfg(const CaliperEdgeCfg* cfg) {
  return DAXI_CalipEdgeDetect_cfg_check(cfg);
}
inline DaxStatus checkCfg(const CaliperEdgePairCfg* cfg) {
  return DAXI_CalipEdgePairDetect_cfg_check(cfg);
}
inline bool hasArray(const CaliperEdgeResult& result) {
  return result.edges;
}
inline bool hasArray(const CaliperEdgePairResult& result) {
  return result.pairs;
}

template <class Region>
CaliperBuffer bufferFor(const Region& region, uint64_t sampleBytes) {
  const CaliperGrid grid = gridOf(region, DAXI_CALIPER_VERTICAL);
  return {grid.columns, grid.rows, sampleBytes};
}

template <class Region>
DaxStatus caliperBufferSize(const Region* region, uint64_t sampleBytes, uint64_t* bytes) {
  DAX_REQUIRE(region && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(possible(*region), DAX_STS_BAD_ROTATED_RECT);
  return bufferFor(*region, sampleBytes).layout.store(bytes);
}

// Bytes of a thread's slice: the need of the largest region.
template <class Region>
uint64_t sliceBytes(const Region* regions, int32_t count) {
  uint64_t bytes = 0;
  for (int32_t i = 0; i < count; ++i) {
    bytes = std::max(bytes, bufferFor(regions[i], sizeof(CaliperSample<uint8_t>)).layout.total());
  }
  return bytes;
}

template <class Region>
DaxStatus caliperBufferSizeOfMany(const Region* regions, int32_t count, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(regions && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::all_of(regions, regions + count, [](const Region& r) { return possible(r); }),
              DAX_STS_BAD_ROTATED_RECT);
  BufferLayout layout;
  layout.addSlices(sliceBytes(regions, count), std::max(threads, 1u));
  return layout.store(bytes);
}

template <class T, class Region, class Cfg, class Result>
struct CaliperCall {
  CaliperImage<T> image;
  bool masked;  // whether the mask is an argument; if so it must not be null
  const Region* regions;
  int32_t count;
  const Cfg* cfg;
  Result* results;
  bool plotted;  // the same for the profile
  CaliperProfile* profile;
  void* buffer;
  CaliperIsa isaFrom;

  int32_t isa() const {
    if (isaFrom == CaliperIsa::kNeon) return DAX_ISA_NEON;
    return isaFrom == CaliperIsa::kCfg ? cfg->isa : currentIsa();
  }
};

template <class Call>
DaxStatus checkPointers(const Call& call) {
  DAX_REQUIRE(call.image.pixels && (call.image.mask || !call.masked), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(call.regions && call.cfg && call.results && call.buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(std::all_of(call.results, call.results + std::max(call.count, 0), [](auto& r) { return hasArray(r); }),
              DAX_STS_NULL_POINTER);
  const bool hasPlot = call.profile && call.profile->profile && call.profile->response;
  DAX_REQUIRE(hasPlot || !call.plotted, DAX_STS_NULL_POINTER);
  return DAX_STS_OK;
}

template <class Call>
DaxStatus checkCall(const Call& call) {
  DAX_REQUIRE_OK(checkPointers(call));
  const auto& image = call.image;
  DAX_REQUIRE(atLeast(image.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(image.size.width <= image.step, DAX_STS_BAD_STEP);
  DAX_REQUIRE(!call.masked || image.size.width <= image.maskStep, DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkCfg(call.cfg));
  DAX_REQUIRE(call.count >= 1, DAX_STS_BAD_PARAM);
  for (int32_t i = 0; i < call.count; ++i) {
    const auto& region = call.regions[i];
    DAX_REQUIRE(possible(region) && hasCentreIn(image.size, region.x, region.y), DAX_STS_BAD_ROTATED_RECT);
  }
  if (call.plotted) {
    DAX_REQUIRE(call.profile->capacity >= gridOf(*call.regions, call.cfg->projection).length(), DAX_STS_BAD_PARAM);
  }
  DAX_REQUIRE(call.isaFrom != CaliperIsa::kCfg || call.cfg->isa >= 0, DAX_STS_BAD_ISA);
  return DAX_STS_OK;
}

template <class Call>
DaxStatus detectOne(const Call& call) {
  DAX_REQUIRE_OK(checkCall(call));
  const CaliperGrid grid = gridOf(*call.regions, call.cfg->projection);
  runWorker(call.image, grid, *call.cfg, *call.results, call.profile, call.buffer, call.isa());
  return DAX_STS_OK;
}

template <class Call>
DaxStatus detectMany(const Call& call, uint32_t threads, void* pool) {
  DAX_REQUIRE_OK(checkCall(call));
  const int32_t isa = call.isa();
  const auto run = [&](int32_t first, int32_t end, void* slice) {
    for (int32_t i = first; i < end; ++i) {
      const CaliperGrid grid = gridOf(call.regions[i], call.cfg->projection);
      runWorker(call.image, grid, *call.cfg, call.results[i], nullptr, slice, isa);
    }
  };
  if (!hasPool(pool, threads) || call.count < 2) {
    run(0, call.count, call.buffer);
    return DAX_STS_OK;
  }
  const uint64_t slice = sliceBytes(call.regions, call.count);
  return runTiles(pool, threads, call.count, 1, [&](int32_t first, int32_t end, uint32_t tile) {
    run(first, end, static_cast<char*>(call.buffer) + tile * slice);
    return DaxStatus{DAX_STS_OK};
  });
}

}  // namespace dax

// The exports for one kind of region: without and with a mask, with a profile, for one region and for many. CFG and
// RESULT are those of single edges or of pairs.
#define DAX_CALIPER(NAME, T, REGION, CFG, RESULT, ISA)                                                               \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, const REGION* region, const CFG* cfg, RESULT* result, \
                 void* buffer) {                                                                                     \
    return dax::detectOne(dax::CaliperCall<T, REGION, CFG, RESULT>{                                                  \
        {src, srcStep, nullptr, 0, size}, false, region, 1, cfg, result, false, nullptr, buffer, ISA});              \
  }
#define DAX_CALIPER_MASKED(NAME, REGION, CFG, RESULT, ISA)                                                  \
  DaxStatus NAME(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, \
                 const REGION* region, const CFG* cfg, RESULT* result, void* buffer) {                      \
    return dax::detectOne(dax::CaliperCall<uint8_t, REGION, CFG, RESULT>{                                   \
        {src, srcStep, mask, maskStep, size}, true, region, 1, cfg, result, false, nullptr, buffer, ISA});  \
  }
#define DAX_CALIPER_V1(NAME, REGION, CFG, RESULT, ISA)                                                     \
  DaxStatus NAME(const uint8_t* src, int32_t srcStep, DaxiSize size, const REGION* region, const CFG* cfg, \
                 RESULT* result, CaliperProfile* profile, void* buffer) {                                  \
    return dax::detectOne(dax::CaliperCall<uint8_t, REGION, CFG, RESULT>{                                  \
        {src, srcStep, nullptr, 0, size}, false, region, 1, cfg, result, true, profile, buffer, ISA});     \
  }
#define DAX_CALIPER_V1_MASKED(NAME, REGION, CFG, RESULT, ISA)                                                   \
  DaxStatus NAME(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,     \
                 const REGION* region, const CFG* cfg, RESULT* result, CaliperProfile* profile, void* buffer) { \
    return dax::detectOne(dax::CaliperCall<uint8_t, REGION, CFG, RESULT>{                                       \
        {src, srcStep, mask, maskStep, size}, true, region, 1, cfg, result, true, profile, buffer, ISA});       \
  }
#define DAX_CALIPER_V2(NAME, REGION, CFG, RESULT, ISA)                                                           \
  DaxStatus NAME(const uint8_t* src, int32_t srcStep, DaxiSize size, const REGION* regions, int32_t count,       \
                 const CFG* cfg, RESULT* results, void* buffer, uint32_t threads, void* pool) {                  \
    return dax::detectMany(                                                                                      \
        dax::CaliperCall<uint8_t, REGION, CFG, RESULT>{                                                          \
            {src, srcStep, nullptr, 0, size}, false, regions, count, cfg, results, false, nullptr, buffer, ISA}, \
        threads, pool);                                                                                          \
  }
#define DAX_CALIPER_BUFFER_SIZE(NAME, REGION, SAMPLE)             \
  DaxStatus NAME(const REGION* region, uint64_t* bytes) {         \
    return dax::caliperBufferSize(region, sizeof(SAMPLE), bytes); \
  }
#define DAX_CALIPER_BUFFER_SIZE_V2(NAME, REGION)                                            \
  DaxStatus NAME(const REGION* regions, int32_t count, uint32_t threads, uint64_t* bytes) { \
    return dax::caliperBufferSizeOfMany(regions, count, threads, bytes);                    \
  }

// All exports for a kind of region, and those for boxes only.
#define DAX_CALIPER_ANY_REGION(PREFIX, REGION, CFG, RESULT)                                   \
  DAX_CALIPER_BUFFER_SIZE(PREFIX##BufferSize_8u, REGION, uint16_t)                            \
  DAX_CALIPER_BUFFER_SIZE(PREFIX##V1BufferSize_8u, REGION, uint16_t)                          \
  DAX_CALIPER_BUFFER_SIZE_V2(PREFIX##V2BufferSize_8u, REGION)                                 \
  DAX_CALIPER(PREFIX##_8u_C1R, uint8_t, REGION, CFG, RESULT, dax::CaliperIsa::kProcessor)     \
  DAX_CALIPER_MASKED(PREFIX##_8u_C1RM, REGION, CFG, RESULT, dax::CaliperIsa::kProcessor)      \
  DAX_CALIPER_V1(PREFIX##V1_8u_C1R, REGION, CFG, RESULT, dax::CaliperIsa::kProcessor)         \
  DAX_CALIPER_V1_MASKED(PREFIX##V1_8u_C1RM, REGION, CFG, RESULT, dax::CaliperIsa::kProcessor) \
  DAX_CALIPER_V2(PREFIX##V2_8u_C1R, REGION, CFG, RESULT, dax::CaliperIsa::kProcessor)
#define DAX_CALIPER_BOX_ONLY(PREFIX, CFG, RESULT)                                                 \
  DAX_CALIPER_BUFFER_SIZE(PREFIX##BufferSize_16s, CaliperBox, int32_t)                            \
  DAX_CALIPER(PREFIX##_16s_C1R, int16_t, CaliperBox, CFG, RESULT, dax::CaliperIsa::kProcessor)    \
  DAX_CALIPER(PREFIX##_8u_C1R_IS, uint8_t, CaliperBox, CFG, RESULT, dax::CaliperIsa::kCfg)        \
  DAX_CALIPER(PREFIX##_8u_C1R_NEON, uint8_t, CaliperBox, CFG, RESULT, dax::CaliperIsa::kNeon)     \
  DAX_CALIPER_MASKED(PREFIX##_8u_C1RM_IS, CaliperBox, CFG, RESULT, dax::CaliperIsa::kCfg)         \
  DAX_CALIPER_MASKED(PREFIX##_8u_C1RM_NEON, CaliperBox, CFG, RESULT, dax::CaliperIsa::kNeon)      \
  DAX_CALIPER_V1(PREFIX##V1_8u_C1R_IS, CaliperBox, CFG, RESULT, dax::CaliperIsa::kCfg)            \
  DAX_CALIPER_V1(PREFIX##V1_8u_C1R_NEON, CaliperBox, CFG, RESULT, dax::CaliperIsa::kNeon)         \
  DAX_CALIPER_V1_MASKED(PREFIX##V1_8u_C1RM_IS, CaliperBox, CFG, RESULT, dax::CaliperIsa::kCfg)    \
  DAX_CALIPER_V1_MASKED(PREFIX##V1_8u_C1RM_NEON, CaliperBox, CFG, RESULT, dax::CaliperIsa::kNeon) \
  DAX_CALIPER_V2(PREFIX##V2_8u_C1R_NEON, CaliperBox, CFG, RESULT, dax::CaliperIsa::kNeon)
