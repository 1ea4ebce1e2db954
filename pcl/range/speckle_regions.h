// The regions of an image: runs of connected pixels in rows, joined by a union-find where rows touch.
#pragma once

#include <bit>
#include <cstdint>

#include "pcl/range/speckle_portable.h"

namespace dax {

// What the row above left behind, 64 pixels a word.
struct RowWord {
  uint64_t valid;
  uint64_t joined;  // to the left neighbour
  uint64_t starts;  // of runs
};

// Memory for as many runs as there are pixels, and for the words of a row. Runs are numbered in raster order; the
// parent of a run is never a later one.
struct RunTable {
  uint32_t* parent;
  uint32_t* start;  // pixel, counted from the image's first
  uint32_t* size;   // valid pixels before the run; in the end, of roots, the pixels of the region
  RowWord* words;
};

class SpeckleRegions {
 public:
  explicit SpeckleRegions(const RunTable& table) : t_(table) {}

  uint32_t count() const { return count_; }
  uint32_t start(uint32_t run) const { return t_.start[run]; }
  uint32_t regionSize(uint32_t run) const { return t_.size[t_.parent[run]]; }

  void beginRow() {
    aboveFirst_ = rowFirst_;
    rowFirst_ = count_;
    leftValid_ = leftLinked_ = 0;
  }

  // Pixels pixel.. of the image, whose bits are given: word `index` of the row.
  void addWord(const PixelBits& bits, int32_t index, uint32_t pixel) {
    RowWord& above = t_.words[index];
    const uint64_t valid = bits.valid;
    const uint64_t joined = bits.likeLeft & valid & (valid << 1 | leftValid_);
    const uint64_t linked = bits.likeAbove & valid & above.valid;
    const uint64_t starts = valid & ~joined;
    // A link beside another one between the same two runs says nothing new.
    const uint64_t news = linked & ~((linked << 1 | leftLinked_) & joined & above.joined);

    const uint32_t before = count_;
    addRuns(starts, valid, pixel);
    addLinks(news, before, starts, above.starts);
    aboveFirst_ += static_cast<uint32_t>(std::popcount(above.starts));
    validBefore_ += static_cast<uint32_t>(std::popcount(valid));
    leftValid_ = valid >> 63;
    leftLinked_ = linked >> 63;
    above = {valid, joined, starts};
  }

  // Makes every parent a root and adds up the sizes.
  void finish() {
    for (uint32_t run = 0; run < count_; ++run) {
      const uint32_t pixels = (run + 1 < count_ ? t_.size[run + 1] : validBefore_) - t_.size[run];
      const uint32_t root = t_.parent[t_.parent[run]];
      t_.parent[run] = root;
      t_.size[run] = 0;
      t_.size[root] += pixels;
    }
  }

 private:
  void addRuns(uint64_t starts, uint64_t valid, uint32_t pixel) {
    for (; starts != 0; starts &= starts - 1) {
      const int bit = std::countr_zero(starts);
      const uint64_t earlier = (uint64_t{1} << bit) - 1;
      t_.parent[count_] = count_;
      t_.start[count_] = pixel + static_cast<uint32_t>(bit);
      t_.size[count_] = validBefore_ + static_cast<uint32_t>(std::popcount(valid & earlier));
      ++count_;
    }
  }

  void addLinks(uint64_t links, uint32_t before, uint64_t starts, uint64_t startsAbove) {
    for (; links != 0; links &= links - 1) {
      // All bits up to the lowest one.
      const uint64_t upTo = links ^ (links - 1);
      const auto run = before + static_cast<uint32_t>(std::popcount(starts & upTo)) - 1;
      const auto above = aboveFirst_ + static_cast<uint32_t>(std::popcount(startsAbove & upTo)) - 1;
      unite(run, above);
    }
  }

  // Path halving.
  uint32_t rootOf(uint32_t run) {
    while (t_.parent[run] != run) {
      t_.parent[run] = t_.parent[t_.parent[run]];
      run = t_.parent[run];
    }
    return run;
  }

  void unite(uint32_t a, uint32_t b) {
    a = rootOf(a);
    b = rootOf(b);
    if (a < b) {
      t_.parent[b] = a;
    } else {
      t_.parent[a] = b;
    }
  }

  RunTable t_;
  uint32_t count_ = 0;
  uint32_t rowFirst_ = 0;    // first run of the row
  uint32_t aboveFirst_ = 0;  // first run of the row above that starts in this word
  uint32_t validBefore_ = 0;
  uint64_t leftValid_ = 0, leftLinked_ = 0;  // of the last pixel of the word before
};

}  // namespace dax
