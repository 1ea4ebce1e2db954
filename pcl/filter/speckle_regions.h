// Connected regions of an image: runs of connected pixels in each row, joined by a union-find with the runs above.
#pragma once

#include <bit>
#include <cstdint>

namespace dax {

// Up to 64 pixels of a row; bit i belongs to pixel i.
struct PixelBits {
  uint64_t valid;      // not the invalid value
  uint64_t likeLeft;   // similar to its left neighbour
  uint64_t likeAbove;  // similar to the pixel above
};

// 64 pixels of the row above.
struct RowWord {
  uint64_t valid;
  uint64_t joined;  // to the left neighbour
  uint64_t starts;  // of runs
};

// Memory for as many runs as pixels, and for the words of a row. Runs are numbered in raster order; the parent of a run
// is the run itself or an earlier one.
struct RunTable {
  uint32_t* parent;
  uint32_t* start;  // index of its first pixel
  uint32_t* size;   // number of valid pixels before the run; after finish(), of a root, the pixels of its region
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

  // Adds word `index` of the row, whose first pixel has the index `pixel` in the image.
  void addWord(const PixelBits& bits, int32_t index, uint32_t pixel) {
    RowWord& above = t_.words[index];
    const uint64_t valid = bits.valid;
    const uint64_t joined = bits.likeLeft & valid & (valid << 1 | leftValid_);
    const uint64_t linked = bits.likeAbove & valid & above.valid;
    const uint64_t starts = valid & ~joined;
    // Skip a link whose left neighbour links the same two runs.
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
      // The lowest set bit and all below it.
      const uint64_t upTo = links ^ (links - 1);
      const auto run = before + static_cast<uint32_t>(std::popcount(starts & upTo)) - 1;
      const auto above = aboveFirst_ + static_cast<uint32_t>(std::popcount(startsAbove & upTo)) - 1;
      unite(run, above);
    }
  }

  // Find with path halving.
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
  uint64_t leftValid_ = 0, leftLinked_ = 0;  // of the last pixel of the previous word
};

}  // namespace dax
