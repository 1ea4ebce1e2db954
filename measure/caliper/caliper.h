// Calipers: what their phases share.
#pragma once

#include <cfloat>
#include <cstdint>
#include <type_traits>

#include "daxi/caliper.h"
#include "daxi/caliper_pair.h"
#include "frame/memory/work_buffer.h"

namespace dax {

constexpr float kCaliperSlack = FLT_EPSILON;
constexpr int32_t kLongestKernel = 101;

template <class T>
struct CaliperImage {
  const T* pixels;
  int32_t step;
  const uint8_t* mask;  // null: all pixels count
  int32_t maskStep;
  DaxiSize size;
};

// Sampled values are whole numbers of 1/256 grey level.
template <class T>
using CaliperSample = std::conditional_t<std::is_same_v<T, uint8_t>, uint16_t, int32_t>;

// A row of samples: its first one and the step from one to the next, in pixels.
struct SampleLine {
  double x;
  double y;
  double dx;
  double dy;
};

enum class CaliperShape { kBox, kRhomboid, kAnnulus };

// Where a region is sampled: rows of columns, in straight lines.
struct CaliperGrid {
  CaliperShape shape;
  bool alongColumns;  // the search direction
  int32_t columns;
  int32_t rows;
  double x;  // centre
  double y;
  double ux;  // direction of columns; of an annulus that in its middle
  double uy;
  double vx;  // direction of rows
  double vy;
  double firstColumn;  // from the centre
  double firstRow;
  double radius;  // of an annulus: mean radius and middle angle
  double angle;

  int32_t length() const { return alongColumns ? columns : rows; }
  SampleLine row(int32_t k) const;
  DaxiPoint32f pointAt(float position) const;
};

// Whether a region is possible in some image, and in this one.
bool possible(const CaliperBox& box);
bool possible(const CaliperRhomboid& rhomboid);
bool possible(const CaliperAnnulus& annulus);
bool hasCentreIn(DaxiSize size, float x, float y);

// The grid of a possible region.
CaliperGrid gridOf(const CaliperBox& box, uint32_t projection);
CaliperGrid gridOf(const CaliperRhomboid& rhomboid, uint32_t projection);
CaliperGrid gridOf(const CaliperAnnulus& annulus, uint32_t projection);

constexpr int32_t kBandRows = 16;  // rows sampled at a time

// For either projection. Sums of up to 2^24 samples need 64 bits.
struct CaliperBuffer {
  CaliperBuffer(int32_t columns, int32_t rows, uint64_t sampleBytes)
      : length(static_cast<uint64_t>(columns > rows ? columns : rows)),
        patch(layout.add<uint8_t>(static_cast<uint64_t>(columns) * kBandRows * sampleBytes)),
        valid(layout.add<uint8_t>(static_cast<uint64_t>(columns) * kBandRows)),
        sums(layout.add<int64_t>(length)),
        counts(layout.add<int32_t>(length)),
        profile(layout.add<float>(length)),
        response(layout.add<float>(length)),
        extended(layout.add<float>(length + kLongestKernel)),
        kernel(layout.add<float>(kLongestKernel)),
        edges(layout.add<CaliperEdge>(length)),
        sorted(layout.add<CaliperEdge>(length)) {}
  BufferLayout layout;
  uint64_t length;
  BufferPiece<uint8_t> patch, valid;
  BufferPiece<int64_t> sums;
  BufferPiece<int32_t> counts;
  BufferPiece<float> profile, response, extended, kernel;
  BufferPiece<CaliperEdge> edges, sorted;
};

// Sums of samples by profile value, and of masked images how many there are; else `counts` and `valid` are null.
struct CaliperSums {
  int64_t* sums;
  int32_t* counts;
  uint8_t* valid;
};

// A measured region, before edges are looked for.
struct CaliperSignal {
  const float* profile;
  const float* response;
  const int32_t* counts;  // null, or 0 where the profile has no sample of its own
  int32_t length;
  int32_t kernelLength;
};

template <class T>
CaliperSignal measureSignal(const CaliperImage<T>& image, const CaliperGrid& grid, uint32_t halfWidth,
                            const CaliperBuffer& at, void* buffer, int32_t isa);

bool isCriterion(const CaliperCriterion& criterion);

// The factor of a criterion for a value; and the same where its flag is set, else 1.
float criterionFactor(const CaliperCriterion& criterion, float value);
inline float factorIfActive(uint32_t flags, uint32_t flag, const CaliperCriterion& criterion, float value) {
  return flags & flag ? criterionFactor(criterion, value) : 1.0f;  // inline: of a dozen criteria few are active
}

// The geometric mean of the factors of all criteria whose flags are set, from their product.
float geometricMean(float product, uint32_t flags);

// Whether what configurations of single edges and of pairs have in common is in its ranges.
template <class Cfg>
bool isEdgeSearch(const Cfg& cfg) {
  return cfg.threshold >= -kCaliperSlack && cfg.filterHalfWidth >= 1 && cfg.filterHalfWidth <= 50 &&
         cfg.polarity >= 1 && cfg.polarity <= 3 && cfg.projection <= 1 && cfg.minScore >= 0;
}

// Edges of a signal in order of the profile; how many. There are fewer than its length.
int32_t findEdges(const CaliperSignal& signal, uint32_t polarity, float threshold, CaliperEdge* edges);

// From signal to results.
void extract(const CaliperSignal& signal, const CaliperGrid& grid, const CaliperEdgeCfg& cfg, CaliperEdgeResult& result,
             const CaliperBuffer& at, void* buffer);
void extract(const CaliperSignal& signal, const CaliperGrid& grid, const CaliperEdgePairCfg& cfg,
             CaliperEdgePairResult& result, const CaliperBuffer& at, void* buffer);

// The best pairs so far, as a heap with the worst at the top.
struct CaliperPairHeap {
  CaliperEdgePair* pairs;
  int32_t count;
  int32_t capacity;
};

}  // namespace dax

extern "C" {

// Sampling: rows firstRow..firstRow + rows - 1 of the grid. Of masked images also which samples count (1, else 0); those
// that do not are 0.
void _DAXI_CaliperBoxCopyBLV1_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                     int32_t firstRow, int32_t rows, uint16_t* patch, uint8_t* valid, int32_t isa);
void _DAXI_CaliperBoxCopyBLV1_16s_C1R(const dax::CaliperImage<int16_t>* image, const dax::CaliperGrid* grid,
                                      int32_t firstRow, int32_t rows, int32_t* patch, uint8_t* valid, int32_t isa);
void DAXI_CalipEdgeDetect_RhomboidCopyBL_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                                int32_t firstRow, int32_t rows, uint16_t* patch, uint8_t* valid,
                                                int32_t isa);
// One sample, at a position in 1/2048 pixel inside the image.
uint16_t DAXI_CalipEdgeDetectAnnulus_bl_interp(const dax::CaliperImage<uint8_t>* image, int64_t x, int64_t y);
// Samples and projects the rows.
void DAXI_CalipEdgeDetectAnnulus_projection(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                            int32_t firstRow, int32_t rows, uint16_t* patch, const dax::CaliperSums* to,
                                            int32_t isa);

// Projection of up to kBandRows rows: adds to the sum of every column, or sets that of every row.
void DAXI_CalipEdgeDetect_vert_projection(const uint16_t* patch, int32_t columns, int32_t rows,
                                          const dax::CaliperSums* to, int32_t isa);
void DAXI_CalipEdgeDetect_hor_projection(const uint16_t* patch, int32_t columns, int32_t rows,
                                         const dax::CaliperSums* to, int32_t isa);
void DAXI_CalipEdgeDetect_vert_projection_16s(const int32_t* patch, int32_t columns, int32_t rows,
                                              const dax::CaliperSums* to, int32_t isa);
void DAXI_CalipEdgeDetect_hor_projection_16s(const int32_t* patch, int32_t columns, int32_t rows,
                                             const dax::CaliperSums* to, int32_t isa);

// The kernel for a half width and a profile length, into kLongestKernel floats; its length K.
int32_t DAXI_CalipEdgeDetect_init_dog_kernel_32f(uint32_t halfWidth, int32_t n, float* kernel);
// Filters n values by a kernel of odd length; `extended` has room for n + length.
void _DAXI_Caliper_filter_32f(const float* in, int32_t n, const float* kernel, int32_t length, float* extended,
                              float* out, int32_t isa);
// Both; returns K.
int32_t _DAXI_Caliper_dog_filter_32f(const float* in, int32_t n, uint32_t halfWidth, float* kernel, float* extended,
                                     float* out, int32_t isa);

// findEdges, without the refinement.
int32_t DAXI_CalipEdgeDetect_find_local_extremum(const dax::CaliperSignal* signal, uint32_t polarity, float threshold,
                                                 CaliperEdge* edges);
void DAXI_CalipEdgeDetect_comprehensive_assess(CaliperEdge* edges, int32_t count, const CaliperEdgeCfg* cfg);
// Sorts by score, then index. The edges come by index; `scratch` has room for as many.
void DAXI_CalipEdgeDetect_rank_criterion(CaliperEdge* edges, CaliperEdge* scratch, int32_t count);

// Image points of edges.
void DAXI_CalipEdgeDetect_box_hor_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                           DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_box_vert_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                            DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_rhomboid_hor_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                                DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_rhomboid_vert_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                                 DaxiPoint32f* points);
void DAXI_CalipEdgeDetect_annulus_output_m(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count,
                                           DaxiPoint32f* points);

DaxStatus DAXI_CalipEdgeDetect_cfg_check(const CaliperEdgeCfg* cfg);
DaxStatus DAXI_CalipEdgePairDetect_cfg_check(const CaliperEdgePairCfg* cfg);

// Multiplies the score of a pair by the factors of all criteria that do not and that do concern its width.
void _DAXI_CalipEdgePairDetect_common_comprehensive_assess(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
void _DAXI_CalipEdgePairDetect_pitch_comprehensive_assess(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
// The product of all factors; and its root.
void DAXI_CalipEdgePairDetect_comprehensive_assess0(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
void DAXI_CalipEdgePairDetect_comprehensive_assess1(CaliperEdgePair* pair, const CaliperEdgePairCfg* cfg);
// Moves the pair at a place of the heap down to where it belongs.
void DAXI_CalipEdgePair_heap_adjust_descend_32f(CaliperEdgePair* pairs, int32_t place, int32_t count);
// Sorts a heap, best first.
void DAXI_CalipEdgePairDetect_rank_criterion(dax::CaliperPairHeap* heap);

// A single 8-bit region: its signal, copied to `profile` unless that is null, and its edges.
void _DAXI_CalipEdgeDetect_8u_C1R(const dax::CaliperImage<uint8_t>* image, const dax::CaliperGrid* grid,
                                  const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, CaliperProfile* profile,
                                  void* buffer, int32_t isa);
}
