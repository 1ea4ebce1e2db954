// Regions, configurations and calls of calipers for tests.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "measure/caliper/caliper_region.h"
#include "tests/support/test_image.h"

namespace dax::test {

using Gray = TestImage<uint8_t>;

// A criterion that is 1 for everything above -1e6.
constexpr CaliperCriterion kAnything = {0, -1e6f, -1e6f, -1e6f, 0, 1};

inline CaliperEdgeCfg edgeConfig(uint32_t projection = 1, uint32_t polarity = 3, uint32_t halfWidth = 2,
                                 float threshold = 10) {
  CaliperEdgeCfg cfg = {};
  cfg.projection = projection, cfg.polarity = polarity, cfg.filterHalfWidth = halfWidth;
  cfg.maxEdges = 100, cfg.threshold = threshold, cfg.scoreFlags = DAXI_CALIPER_BY_CONTRAST;
  cfg.contrast = cfg.distance = cfg.offset = cfg.gray = kAnything;
  return cfg;
}

struct Measured {
  DaxStatus status;
  std::vector<CaliperEdge> edges;
  std::vector<DaxiPoint32f> points;
  std::vector<float> profile, response;
};

inline DaxStatus bufferSize(const CaliperBox& region, uint64_t* bytes) {
  return DAXI_CalipEdgeDetectV1BufferSize_8u(&region, bytes);
}
inline DaxStatus bufferSize(const CaliperRhomboid& region, uint64_t* bytes) {
  return DAXI_CalipEdgeDetectRhomboidV1BufferSize_8u(&region, bytes);
}
inline DaxStatus bufferSize(const CaliperAnnulus& region, uint64_t* bytes) {
  return DAXI_CalipEdgeDetectAnnulusV1BufferSize_8u(&region, bytes);
}

// Runs the V1 form of a region's member in guarded memory of the queried size; the box's with the instruction set of the
// configuration.
template <class Region>
Measured measure(const Gray& image, const Region& region, const CaliperEdgeCfg& cfg, const Gray* mask = nullptr) {
  uint64_t bytes = 0;
  Measured measured = {bufferSize(region, &bytes), {}, {}, {}, {}};
  if (measured.status != DAX_STS_OK) return measured;
  GuardedBuffer<uint8_t> buffer(bytes);
  const auto n = static_cast<size_t>(gridOf(region, cfg.projection).length());
  GuardedBuffer<float> profile(n), response(n);
  const auto room = static_cast<size_t>(cfg.maxEdges);
  GuardedBuffer<CaliperEdge> edges(room);
  GuardedBuffer<DaxiPoint32f> points(room);
  CaliperEdgeResult result{edges.data(), points.data(), 0};
  CaliperProfile plot{profile.data(), response.data(), static_cast<int32_t>(n), 0, 0};
  const auto plain = [&](auto* call) {
    return call(image.data(), image.step(), image.size(), &region, &cfg, &result, &plot, buffer.data());
  };
  const auto masked = [&](auto* call) {
    return call(image.data(), image.step(), mask->data(), mask->step(), image.size(), &region, &cfg, &result, &plot,
                buffer.data());
  };
  if constexpr (std::is_same_v<Region, CaliperBox>) {
    measured.status = mask ? masked(DAXI_CalipEdgeDetectV1_8u_C1RM_IS) : plain(DAXI_CalipEdgeDetectV1_8u_C1R_IS);
  } else if constexpr (std::is_same_v<Region, CaliperRhomboid>) {
    measured.status =
        mask ? masked(DAXI_CalipEdgeDetectRhomboidV1_8u_C1RM) : plain(DAXI_CalipEdgeDetectRhomboidV1_8u_C1R);
  } else {
    measured.status =
        mask ? masked(DAXI_CalipEdgeDetectAnnulusV1_8u_C1RM) : plain(DAXI_CalipEdgeDetectAnnulusV1_8u_C1R);
  }
  if (measured.status != DAX_STS_OK) return measured;
  EXPECT_EQ(plot.length, static_cast<int32_t>(n));
  measured.edges.assign(edges.begin(), edges.begin() + result.count);
  measured.points.assign(points.begin(), points.begin() + result.count);
  measured.profile.assign(profile.begin(), profile.end());
  measured.response.assign(response.begin(), response.end());
  return measured;
}

}  // namespace dax::test
