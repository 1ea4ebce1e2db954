// The same operations of a peer; without one they return nothing.
#pragma once

#include <cstdint>
#include <vector>

#include "dax/types.h"

namespace accuracy {

using Bytes = std::vector<uint8_t>;

// By the affine matrix from the result to the image, of one size; the edge replicated.
Bytes peerWarp(const Bytes& image, DaxiSize size, const double (&back)[9], int32_t interpolation);

Bytes peerResize(const Bytes& image, DaxiSize from, DaxiSize to, int32_t interpolation);

// Phase correlation with a window; false without a peer.
bool peerShift(const std::vector<float>& first, const std::vector<float>& second, DaxiSize size, double (&shift)[2]);

}  // namespace accuracy
