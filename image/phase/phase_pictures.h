// Checks of pairs of pictures.
#pragma once

#include "image/phase/phase_comparison.h"

namespace dax {

inline bool arePhaseSides(DaxiSize size) {
  return atLeast(size, kMinPhaseSide) && atMost(size, kMaxPhaseSide);
}

template <class T>
DaxStatus checkPhasePictures(const PhasePair<T>& pair, const void* result, const void* buffer) {
  DAX_REQUIRE(pair.first.data && pair.second.data && result && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(arePhaseSides(pair.first.size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(pair.first.size.width, pair.first.step), DAX_STS_BAD_STEP);
  DAX_REQUIRE(rowFits(pair.first.size.width, pair.second.step), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class Buffer>
DaxStatus storePhaseBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(arePhaseSides(size), DAX_STS_BAD_PARAM);
  return Buffer(size).layout.store(bytes);
}

}  // namespace dax
