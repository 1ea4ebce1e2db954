// The engine of sample consensus, for models of the caller's and of the library's own.
#pragma once

#include <cstdint>

#include "frame/memory/work_buffer.h"
#include "frame/tiles.h"
#include "prmt/consensus.h"

namespace dax {

// Adds up what the data first .. first + count - 1, at most kSacBlock, gain for a model: 1 - slope r^2 for those with
// r^2 <= limit2, else nothing. `residual2` has room for count values. Returns the status of a callback.
using SacGain = int32_t (*)(const double* model, int32_t first, int32_t count, double limit2, double slope, void* user,
                            double* residual2, double* gain);

constexpr int32_t kSacBlock = 1024;  // data that are rated at a time; a block starts at a multiple of it
constexpr int32_t kSacBatch = 64;    // iterations between two tests for the end
constexpr uint32_t kSacSlices = 16;  // most tiles of a batch
constexpr int32_t kSacMaxSample = 16;
constexpr int32_t kSacMaxModels = 16;

// A kind of models and n data. gain: null to add up what model.residual2 tells.
struct SacProblem {
  PrmtSacModel model;
  void* user;
  SacGain gain;
  int32_t n;
};

// The best model of the iterations of one tile.
struct SacBest {
  double model[PRMT_SAC_MODEL_DOUBLES];
  double cost;
  int32_t degenerate;
  int32_t status;
};

// Inlier lists of the current and of the next fit; for each slice residuals, models of a sample and the best one.
struct SacBuffer {
  SacBuffer(const PrmtSacModel& model, int32_t n, const PrmtSacCfg& cfg, uint32_t threads);

  uint32_t slices;
  int32_t room;  // residuals of a slice
  BufferLayout layout;
  BufferPiece<int32_t> inliers, next;
  BufferPiece<double> residuals, models;
  BufferPiece<SacBest> best;
};

int32_t checkSac(int32_t sampleSize, int32_t n, const PrmtSacCfg& cfg);

// All is checked; `pieces` lies at the start of buffer.
int32_t runSac(const SacProblem& problem, const PrmtSacCfg& cfg, PoolThreads on, const SacBuffer& pieces, void* buffer,
               PrmtSacResult* result, uint8_t* inlierMask);

}  // namespace dax
