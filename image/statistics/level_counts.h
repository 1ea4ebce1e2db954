// Counters of levels. Pixels are counted in several tables in turn, so that equal neighbours do not wait for each other's
// store; they have 32 bits and are added up before they overflow.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace dax {

template <int32_t kLevelCount, int32_t kPartCount>
struct LevelTables {
  static constexpr int32_t kLevels = kLevelCount, kParts = kPartCount;
  uint64_t totals[kLevels];
  uint32_t parts[kParts][kLevels];
};

using ByteTables = LevelTables<256, 4>;
using WordTables = LevelTables<65536, 2>;

template <class Tables>
class LevelCounter {
 public:
  // Clears the tables. At most so many pixels are counted before they are added up.
  explicit LevelCounter(Tables& tables, uint64_t maxCounted = UINT32_MAX) : tables_(tables), maxCounted_(maxCounted) {
    std::memset(&tables, 0, sizeof tables);
  }

  // levelOf(value) is in 0..kLevels - 1.
  template <class T, class Level>
  void add(const T* run, int32_t count, Level levelOf) {
    counted_ += static_cast<uint64_t>(count);
    if (counted_ > maxCounted_) {
      foldParts();
      counted_ = static_cast<uint64_t>(count);
    }
    const auto part = [&](int32_t i) { return tables_.parts[i % Tables::kParts]; };
    addRun(run, count, levelOf, part(0), part(1), part(2), part(3));
  }

  const uint64_t* totals() {
    foldParts();
    return tables_.totals;
  }

 private:
  // Tables are parameters of a function of its own, so that each has a register for its base: without, each pixel takes an
  // addition more.
  template <class T, class Level>
  [[gnu::noinline]] static void addRun(const T* run, int32_t count, Level levelOf, uint32_t* a, uint32_t* b,
                                       uint32_t* c, uint32_t* d) {
    constexpr int32_t kBlock = 32;
    int32_t x = 0;
    for (; x <= count - kBlock; x += kBlock) {
      for (int32_t i = x; i < x + kBlock; i += 4) {
        ++a[levelOf(run[i])];
        ++b[levelOf(run[i + 1])];
        ++c[levelOf(run[i + 2])];
        ++d[levelOf(run[i + 3])];
      }
    }
    for (; x < count; ++x) ++a[levelOf(run[x])];
  }

  void foldParts() {
    for (auto& part : tables_.parts) {
      for (int32_t level = 0; level < Tables::kLevels; ++level) tables_.totals[level] += part[level];
    }
    std::memset(tables_.parts, 0, sizeof tables_.parts);
  }

  Tables& tables_;
  uint64_t maxCounted_;
  uint64_t counted_ = 0;
};

}  // namespace dax
