// The worker behind the mirror, symmetric and circular borders.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// Where the source lies in the destination.
struct BorderGeometry {
  DaxiSize src;
  DaxiSize dst;
  int32_t top;
  int32_t left;

  int32_t right() const { return dst.width - left - src.width; }
  int32_t bottom() const { return dst.height - top - src.height; }
};

// How blocks of source pixels are laid outwards from an edge. A block leaves out the `skip` pixels at that edge. With
// `alternates` every other block is reversed, the first one included.
struct FoldRule {
  int32_t skip;
  bool alternates;
};

inline constexpr FoldRule kMirrorFold{1, true};
inline constexpr FoldRule kSymmetricFold{0, true};
inline constexpr FoldRule kCircularFold{0, false};

// Works for every pixel type. `isa` chooses between the twins that reverse runs.
template <class T>
void copyFoldBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, const BorderGeometry& g, FoldRule rule,
                    int32_t isa);

}  // namespace dax
