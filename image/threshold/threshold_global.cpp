#include "daxi/threshold_global.h"

#include <algorithm>
#include <limits>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/memory/work_buffer.h"
#include "frame/op2d.h"
#include "image/statistics/level_counts.h"
#include "image/threshold/hist_level.h"
#include "image/threshold/threshold.h"

static_assert(sizeof(DaxiThresholdGlobalCfg) == 24 && sizeof(DaxiHistLevel) == 32);

namespace dax {
namespace {

template <class T>
constexpr int32_t kBins = std::numeric_limits<T>::max() + 1;

template <class T>
struct GlobalBuffer {
  using Tables = LevelTables<kBins<T>, sizeof(T) == 1 ? 4 : 2>;

  BufferLayout layout;
  BufferPiece<Tables> tables = layout.add<Tables>(1);
  BufferPiece<uint8_t> multi{layout.total()};  // of OtsuMulti
};

template <class T>
DaxStatus storeMultiSize(uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  uint64_t multi = 0;
  DAX_REQUIRE_OK(DAXI_HistLevelBufferSize_OtsuMulti(kBins<T>, &multi));
  GlobalBuffer<T> at;
  at.layout.template add<uint8_t>(multi);
  return at.layout.store(bytes);
}

// The value of each class; the last one is reached by all levels above the last limit.
struct ClassValues {
  int32_t limits[3];
  int32_t count;  // of limits
  uint8_t values[4];

  int32_t classOf(int32_t v) const {
    return static_cast<int32_t>(std::lower_bound(limits, limits + count, v) - limits);
  }
};

// The class of most pixels of the frame, of equal ones the darker.
template <class T>
int32_t groundClass(Plane<const T> src, DaxiSize size, const ClassValues& classes) {
  int64_t pixels[4] = {};
  const auto add = [&](T v) { ++pixels[classes.classOf(v)]; };
  for (int32_t y = 0; y < size.height; ++y) {
    const T* const row = rowAt(src.data, src.step, y);
    if (y == 0 || y == size.height - 1) {
      for (int32_t x = 0; x < size.width; ++x) add(row[x]);
    } else {
      add(row[0]);
      if (size.width > 1) add(row[size.width - 1]);
    }
  }
  return static_cast<int32_t>(std::max_element(pixels, pixels + 4) - pixels);
}

template <class T>
bool isDarkWanted(Plane<const T> src, DaxiSize size, int32_t polarity, const ClassValues& classes) {
  if (polarity != DAXI_POLARITY_AUTO) return polarity == DAXI_POLARITY_DARK;
  return 2 * groundClass(src, size, classes) > classes.count;
}

void applyClasses(Plane<const uint8_t> src, Plane<uint8_t> dst, DaxiSize size, const ClassValues& classes) {
  LevelTable table;
  for (int32_t v = 0; v < 256; ++v) table[static_cast<size_t>(v)] = classes.values[classes.classOf(v)];
  mapLevels(src.data, src.step, dst.data, dst.step, size, table, currentIsa());
}

void applyClasses(Plane<const uint16_t> src, Plane<uint8_t> dst, DaxiSize size, const ClassValues& classes) {
  const auto row = [&](const uint16_t* from, uint8_t* __restrict to, int32_t count) {
    for (int32_t x = 0; x < count; ++x) {
      uint8_t value = classes.values[0];
      for (int32_t k = 0; k < classes.count; ++k) {
        value = from[x] > classes.limits[k] ? classes.values[k + 1] : value;
      }
      to[x] = value;
    }
  };
  forEachRow(size, 1, row, src, dst);
}

template <class T, class FindLevel>
DaxStatus thresholdGlobal(FindLevel findLevel, const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                          DaxiSize size, const DaxiThresholdGlobalCfg* cfg, DaxiHistLevel* level, void* buffer) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(cfg && level && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(pixelsOf(size) <= uint64_t{1} << 46, DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(checkLevelCfg(cfg->level));
  DAX_REQUIRE(cfg->polarity >= DAXI_POLARITY_BRIGHT && cfg->polarity <= DAXI_POLARITY_AUTO, DAX_STS_BAD_PARAM);
  const GlobalBuffer<T> at;
  LevelCounter counter(*at.tables.in(buffer));
  forEachRow(
      size, 1, [&](const T* row, int32_t count) { counter.add(row, count, [](T v) { return v; }); }, from);
  DaxiHistLevel found;
  DAX_REQUIRE_OK(findLevel(counter.totals(), kBins<T>, &cfg->level, &found, at.multi.in(buffer)));

  ClassValues classes{{found.level[0], found.level[1], found.level[2]}, found.count, {}};
  const bool isDark = isDarkWanted(Plane<const T>{src, srcStep}, size, cfg->polarity, classes);
  for (int32_t k = 0; k <= found.count; ++k) {
    const int32_t value = (2 * 255 * k + found.count) / (2 * found.count);
    classes.values[k] = static_cast<uint8_t>(isDark ? 255 - value : value);
  }
  if (isDark) found.flags |= DAXI_HIST_LEVEL_DARK;
  applyClasses(Plane<const T>{src, srcStep}, to, size, classes);
  *level = found;
  return DAX_STS_OK;
}

template <HistLevelMethod method>
DaxStatus oneLevel(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg, DaxiHistLevel* level, void*) {
  return method(hist, bins, cfg, level);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ThresholdGlobalDefaultCfg(DaxiThresholdGlobalCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  cfg->polarity = DAXI_POLARITY_BRIGHT, cfg->reserved = 0;
  return DAXI_HistLevelDefaultCfg(&cfg->level);
}

#define DAX_THRESHOLD_QUERIES(SUFFIX, T)                                  \
  DaxStatus DAXI_ThresholdGlobalBufferSize_##SUFFIX(uint64_t* bytes) {    \
    DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);                             \
    return dax::GlobalBuffer<T>{}.layout.store(bytes);                    \
  }                                                                       \
  DaxStatus DAXI_ThresholdOtsuMultiBufferSize_##SUFFIX(uint64_t* bytes) { \
    return dax::storeMultiSize<T>(bytes);                                 \
  }
DAX_THRESHOLD_QUERIES(8u, uint8_t)
DAX_THRESHOLD_QUERIES(16u, uint16_t)
#undef DAX_THRESHOLD_QUERIES

#define DAX_THRESHOLD_BY(NAME, FIND, SUFFIX, T)                                                                 \
  DaxStatus DAXI_Threshold##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, \
                                                  DaxiSize size, const DaxiThresholdGlobalCfg* cfg,             \
                                                  DaxiHistLevel* level, void* buffer) {                         \
    return dax::thresholdGlobal(FIND, src, srcStep, dst, dstStep, size, cfg, level, buffer);                    \
  }
#define DAX_THRESHOLD_METHOD(NAME)                                          \
  DAX_THRESHOLD_BY(NAME, dax::oneLevel<DAXI_HistLevel_##NAME>, 8u, uint8_t) \
  DAX_THRESHOLD_BY(NAME, dax::oneLevel<DAXI_HistLevel_##NAME>, 16u, uint16_t)
DAX_THRESHOLD_METHOD(Kapur)
DAX_THRESHOLD_METHOD(Yen)
DAX_THRESHOLD_METHOD(Li)
DAX_THRESHOLD_METHOD(Kittler)
DAX_THRESHOLD_METHOD(Isodata)
DAX_THRESHOLD_METHOD(Intermodes)
DAX_THRESHOLD_METHOD(Triangle)
DAX_THRESHOLD_METHOD(Percentile)
DAX_THRESHOLD_BY(Otsu, dax::oneLevel<DAXI_HistLevel_Otsu>, 16u, uint16_t)
DAX_THRESHOLD_BY(OtsuMulti, DAXI_HistLevel_OtsuMulti, 8u, uint8_t)
DAX_THRESHOLD_BY(OtsuMulti, DAXI_HistLevel_OtsuMulti, 16u, uint16_t)
#undef DAX_THRESHOLD_METHOD
#undef DAX_THRESHOLD_BY
