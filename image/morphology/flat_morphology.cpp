#include "image/morphology/flat_morphology.h"

#include <cmath>
#include <cstdlib>

#include "frame/check.h"
#include "frame/numeric/total_order.h"
#include "frame/slices.h"
#include "image/morphology/flat_element.h"

static_assert(sizeof(DaxiFlatLineCfg) == 24 && sizeof(DaxiFlatMaskCfg) == 24);

namespace dax {
namespace {

constexpr uint32_t kMaxFlatTiles = 8;

// Pixels of masks as what is compared: all set, all clear.
struct SetKey {
  using Key = uint8_t;
  static Key of(uint8_t pixel) { return pixel ? 255 : 0; }
  static uint8_t pixel(Key key) { return key; }
};

struct ClearKey {
  using Key = uint8_t;
  static Key of(uint8_t pixel) { return pixel ? 0 : 255; }
  static uint8_t pixel(Key key) { return key; }
};

// --- Windows ---

FlatElement lineElement(const DaxiFlatLineCfg& cfg, bool isTurned, ChordPart* parts) {
  const int32_t m = std::max(std::abs(cfg.dx), std::abs(cfg.dy)), anchor = cfg.anchor < 0 ? m / 2 : cfg.anchor;
  const auto place = [m](int32_t k, int32_t d) {
    if (m == 0) return 0;
    const int32_t twice = 2 * k * d + m;
    return twice / (2 * m) - (twice % (2 * m) < 0 ? 1 : 0);
  };
  const int32_t anchorX = place(anchor, cfg.dx), anchorY = place(anchor, cfg.dy);
  FlatElement element(parts);
  for (int32_t k = 0; k <= m;) {
    const int32_t first = place(k, cfg.dx), y = place(k, cfg.dy);
    int32_t last = first;
    for (++k; k <= m && place(k, cfg.dy) == y; ++k) last = place(k, cfg.dx);
    element.addChord(std::min(first, last) - anchorX, std::max(first, last) + 1 - anchorX, y - anchorY, isTurned);
  }
  return element;
}

FlatElement maskElement(const MaskArgument& mask, const DaxiFlatMaskCfg& cfg, bool isTurned, ChordPart* parts) {
  const int32_t anchorX = cfg.anchorX < 0 ? mask.size.width / 2 : cfg.anchorX;
  const int32_t anchorY = cfg.anchorY < 0 ? mask.size.height / 2 : cfg.anchorY;
  FlatElement element(parts);
  for (int32_t y = 0; y < mask.size.height; ++y) {
    const uint8_t* const row = rowAt(mask.pixels, mask.step, y);
    for (int32_t x = 0; x < mask.size.width; ++x) {
      const int32_t first = x;
      while (x < mask.size.width && row[x]) ++x;
      if (x > first) element.addChord(first - anchorX, x - anchorX, y - anchorY, isTurned);
    }
  }
  return element;
}

// --- Passes ---

template <class Key>
struct FlatBuffer {
  FlatBuffer(DaxiSize size, const FlatElement& element) : rowsOfTile(size, element) {
    parts = layout.add<ChordPart>(element.count());
    uint64_t slice;
    if (__builtin_mul_overflow(rowsOfTile.length, rowsOfTile.count * sizeof(Key), &slice)) slice = UINT64_MAX;
    rows = layout.addSlices(slice, kMaxFlatTiles);
  }
  ChordRows rowsOfTile;
  BufferLayout layout;
  BufferPiece<ChordPart> parts{};
  BufferPiece<uint8_t> rows{};
};

template <class T>
struct FlatCall {
  PoolThreads on;
  const T* src;
  int32_t srcStep;
  T* dst;
  int32_t dstStep;
  DaxiSize size;
  int32_t border;
  double value;
  void* buffer;

  // build(isTurned, parts) makes the window. isJoined: the minimum with what dst holds.
  template <class Order, class PixelKey, class Build>
  DaxStatus run(Build build, bool isJoined = false) const {
    using Key = typename PixelKey::Key;
    const bool isTurned = std::is_same_v<Order, Larger>;
    const FlatBuffer<Key> at(size, build(isTurned, nullptr));
    const FlatElement element = build(isTurned, at.parts.in(buffer));
    const BorderedImage<T> image = {src, srcStep, size, border, borderPixel<T>(value)};
    Key* const rows = reinterpret_cast<Key*>(at.rows.in(buffer));
    const auto runTile = [&](int32_t first, int32_t end, uint32_t tile) {
      const FlatExtreme<Order, PixelKey, T> extreme(image, element,
                                                    rows + tile * at.rowsOfTile.count * at.rowsOfTile.length);
      extreme.run(first, end, dst, dstStep, isJoined);
    };
    return runSlices(on, kMaxFlatTiles, size.height, element.reach().rows(), runTile);
  }
};

// --- Checks ---

bool isBorder(int32_t border, double value) {
  return border >= DAXI_BORDER_REPLICATE && border <= DAXI_BORDER_CLIP && std::isfinite(value);
}

DaxStatus checkLineCfg(const DaxiFlatLineCfg& cfg) {
  const auto isLength = [](int32_t d) { return d >= -1023 && d <= 1023; };
  DAX_REQUIRE(isLength(cfg.dx) && isLength(cfg.dy), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.anchor >= -1 && cfg.anchor <= std::max(std::abs(cfg.dx), std::abs(cfg.dy)), DAX_STS_BAD_PARAM);
  return isBorder(cfg.border, cfg.value) ? DAX_STS_OK : DAX_STS_BAD_PARAM;
}

bool isMaskSize(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, 255);
}

DaxStatus checkMaskCfg(DaxiSize elementSize, const DaxiFlatMaskCfg& cfg) {
  DAX_REQUIRE(cfg.anchorX >= -1 && cfg.anchorX < elementSize.width, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.anchorY >= -1 && cfg.anchorY < elementSize.height, DAX_STS_BAD_PARAM);
  return isBorder(cfg.border, cfg.value) ? DAX_STS_OK : DAX_STS_BAD_PARAM;
}

}  // namespace

// --- Lines ---

template <class T>
DaxStatus lineBufferSize(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkLineCfg(*cfg));
  return FlatBuffer<T>(size, lineElement(*cfg, false, nullptr)).layout.store(bytes);
}

template <bool isErosion, class T>
DaxStatus lineExtreme(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      const DaxiFlatLineCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkLineCfg(*cfg));
  const FlatCall<T> call = {on, src, srcStep, dst, dstStep, size, cfg->border, cfg->value, buffer};
  return call.template run<std::conditional_t<isErosion, Smaller, Larger>, OrderKey<T>>(
      [cfg](bool isTurned, ChordPart* parts) { return lineElement(*cfg, isTurned, parts); });
}

// --- Masks ---

template <class T>
DaxStatus maskBufferSize(DaxiSize size, const MaskArgument& element, const DaxiFlatMaskCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(element.pixels && cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && isMaskSize(element.size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(rowFits(element.size.width, element.step), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkMaskCfg(element.size, *cfg));
  return FlatBuffer<T>(size, maskElement(element, *cfg, false, nullptr)).layout.store(bytes);
}

template <PixelSense sense, bool isErosion, class T>
DaxStatus maskExtreme(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      const MaskArgument& element, const DaxiFlatMaskCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && element.pixels && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(isMaskSize(element.size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE(rowFits(element.size.width, element.step), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkMaskCfg(element.size, *cfg));
  DAX_REQUIRE(maskElement(element, *cfg, false, nullptr).count() > 0, DAX_STS_BAD_PARAM);
  const FlatCall<T> call = {on, src, srcStep, dst, dstStep, size, cfg->border, cfg->value, buffer};
  using Order = std::conditional_t<isErosion, Smaller, Larger>;
  using PixelKey = std::conditional_t<sense == PixelSense::binary, SetKey, OrderKey<T>>;
  return call.template run<Order, PixelKey>(
      [&](bool isTurned, ChordPart* parts) { return maskElement(element, *cfg, isTurned, parts); });
}

// --- Hit or miss ---

DaxStatus hitOrMissBufferSize(DaxiSize size, const MaskArgument& hit, const MaskArgument& miss,
                              const DaxiFlatMaskCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(hit.pixels && miss.pixels && cfg && bytes, DAX_STS_NULL_POINTER);
  uint64_t hitBytes, missBytes;
  DAX_REQUIRE_OK(maskBufferSize<uint8_t>(size, hit, cfg, &hitBytes));
  DAX_REQUIRE_OK(maskBufferSize<uint8_t>(size, miss, cfg, &missBytes));
  *bytes = std::max(hitBytes, missBytes);
  return DAX_STS_OK;
}

namespace {

// Whether hit and miss have a pixel, but none in common.
bool areApart(const MaskArgument& hit, const MaskArgument& miss) {
  bool any = false;
  for (int32_t y = 0; y < hit.size.height; ++y) {
    const uint8_t *const one = rowAt(hit.pixels, hit.step, y), *const other = rowAt(miss.pixels, miss.step, y);
    for (int32_t x = 0; x < hit.size.width; ++x) {
      if (one[x] && other[x]) return false;
      any |= one[x] || other[x];
    }
  }
  return any;
}

}  // namespace

DaxStatus hitOrMiss(PoolThreads on, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                    const MaskArgument& hit, const MaskArgument& miss, const DaxiFlatMaskCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && hit.pixels && miss.pixels && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(isMaskSize(hit.size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE(rowFits(hit.size.width, std::min(hit.step, miss.step)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkMaskCfg(hit.size, *cfg));
  DAX_REQUIRE(areApart(hit, miss), DAX_STS_BAD_PARAM);
  const FlatCall<uint8_t> call = {on, src, srcStep, dst, dstStep, size, cfg->border, cfg->value, buffer};
  const auto elementOf = [cfg](const MaskArgument& mask) {
    return [cfg, &mask](bool isTurned, ChordPart* parts) { return maskElement(mask, *cfg, isTurned, parts); };
  };
  DAX_REQUIRE_OK((call.run<Smaller, SetKey>(elementOf(hit))));
  return call.run<Smaller, ClearKey>(elementOf(miss), true);
}

#define DAX_FLAT_EXTREME(IS_EROSION, T)                                                                \
  template DaxStatus lineExtreme<IS_EROSION, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, \
                                                const DaxiFlatLineCfg*, void*);                        \
  template DaxStatus maskExtreme<PixelSense::grey, IS_EROSION, T>(                                     \
      PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, const MaskArgument&, const DaxiFlatMaskCfg*, void*);
#define DAX_FLAT(T)                                                                                       \
  template DaxStatus lineBufferSize<T>(DaxiSize, const DaxiFlatLineCfg*, uint64_t*);                      \
  template DaxStatus maskBufferSize<T>(DaxiSize, const MaskArgument&, const DaxiFlatMaskCfg*, uint64_t*); \
  DAX_FLAT_EXTREME(true, T)                                                                               \
  DAX_FLAT_EXTREME(false, T)
DAX_FLAT(uint8_t)
DAX_FLAT(uint16_t)
DAX_FLAT(int16_t)
DAX_FLAT(float)
#undef DAX_FLAT
#undef DAX_FLAT_EXTREME
template DaxStatus maskExtreme<PixelSense::binary, true, uint8_t>(PoolThreads, const uint8_t*, int32_t, uint8_t*,
                                                                  int32_t, DaxiSize, const MaskArgument&,
                                                                  const DaxiFlatMaskCfg*, void*);
template DaxStatus maskExtreme<PixelSense::binary, false, uint8_t>(PoolThreads, const uint8_t*, int32_t, uint8_t*,
                                                                   int32_t, DaxiSize, const MaskArgument&,
                                                                   const DaxiFlatMaskCfg*, void*);

}  // namespace dax

DaxStatus DAXI_FlatLineDefaultCfg(DaxiFlatLineCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {10, 0, -1, DAXI_BORDER_CLIP, 0};
  return DAX_STS_OK;
}

DaxStatus DAXI_FlatMaskDefaultCfg(DaxiFlatMaskCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {-1, -1, DAXI_BORDER_CLIP, 0, 0};
  return DAX_STS_OK;
}
