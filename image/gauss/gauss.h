// Gaussian smoothing row by row, for the functions that go on with its rows.
#pragma once

#include <algorithm>

#include "frame/memory/work_buffer.h"
#include "frame/slices.h"
#include "image/border/bordered_image.h"
#include "image/gauss/gauss_portable.h"

namespace dax {

// Work buffers have room for as many tiles of the forms on a pool.
inline uint32_t tilesOf(DaxiSize size) {
  return static_cast<uint32_t>(std::min(size.height, 64));
}

// Runs body(first, end, tile) over the rows of an image, in at most tilesOf(size) tiles.
template <class Body>
DaxStatus runRowTiles(PoolThreads on, DaxiSize size, Body&& body) {
  return runSlices(on, tilesOf(size), size.height, 1, body);
}

// A configuration's fields, in their order.
DaxStatus checkGauss(const DaxiGaussCfg& cfg);

// Taps of both passes; a row of a constant border; for each tile a row between the passes and the rows of its taps.
template <class T>
struct GaussRowsBuffer {
  using Between = typename GaussPixel<T>::Between;

  GaussRowsBuffer(DaxiSize size, const DaxiGaussCfg& cfg)
      : radiusX(gaussRadius(cfg.sigma, cfg.size.width)),
        rowLength(static_cast<uint64_t>(size.width) + 2 * static_cast<uint64_t>(radiusX)),
        tapsX(layout.add<GaussTapsOf<T>>(1)),
        tapsY(layout.add<GaussTapsOf<T>>(1)),
        constantRow(layout.add<T>(cfg.border == DAXI_BORDER_CONSTANT ? static_cast<uint64_t>(size.width) : 0)),
        rows(layout.add<Between>(rowLength * tilesOf(size))),
        sources(layout.add<const T*>(uint64_t{2} * GaussTapsOf<T>::kRoom * tilesOf(size))) {}
  BufferLayout layout;
  int32_t radiusX;
  uint64_t rowLength;
  BufferPiece<GaussTapsOf<T>> tapsX, tapsY;
  BufferPiece<T> constantRow;
  BufferPiece<Between> rows;
  BufferPiece<const T*> sources;
};

template <class T>
class GaussRows {
 public:
  // Prepares the buffer.
  GaussRows(const T* src, int32_t srcStep, DaxiSize size, const DaxiGaussCfg& cfg, void* buffer);

  // Writes row y of the result, with the memory of a tile.
  void run(int32_t y, uint32_t tile, T* to) const;

 private:
  using Between = typename GaussPixel<T>::Between;

  GaussRowsBuffer<T> at_;
  void* buffer_;
  BorderedImage<T> image_;
  Between constant_{};
  int32_t isa_;
};

}  // namespace dax
