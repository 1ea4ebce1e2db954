// The work buffer of calipers.
#pragma once

#include "daxi/caliper.h"
#include "frame/memory/work_buffer.h"
#include "measure/caliper/caliper_filter.h"

namespace dax {

constexpr int32_t kBandRows = 16;  // rows that are sampled and projected at a time

// Serves either projection. The sum of up to 2^24 samples needs 64 bits.
struct CaliperBuffer {
  CaliperBuffer(int32_t columns, int32_t rows, uint64_t sampleBytes)
      : length(static_cast<uint64_t>(columns > rows ? columns : rows)),
        patch(layout.add<uint8_t>(static_cast<uint64_t>(columns) * kBandRows * sampleBytes)),
        valid(layout.add<uint8_t>(static_cast<uint64_t>(columns) * kBandRows)),
        sums(layout.add<int64_t>(length)),
        counts(layout.add<int32_t>(length)),
        profile(layout.add<float>(length)),
        response(layout.add<float>(length)),
        extended(layout.add<float>(length + kMaxKernel)),
        kernel(layout.add<float>(kMaxKernel)),
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

}  // namespace dax
