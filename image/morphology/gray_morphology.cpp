#include "image/morphology/gray_morphology.h"

#include <cmath>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "image/morphology/sliding_extreme.h"
#include "image/pixel/arithmetic.h"

static_assert(sizeof(DaxiGrayMorphologyCfg) == 32);

namespace dax {
namespace {

Reach reachOf(const DaxiGrayMorphologyCfg& cfg) {
  const int32_t n = cfg.iterations;
  return {n * cfg.anchorX, n * (cfg.window.width - 1 - cfg.anchorX), n * cfg.anchorY,
          n * (cfg.window.height - 1 - cfg.anchorY)};
}

// --- One pass ---

template <class T>
BorderedImage<T> borderedImage(const GrayImage<T>& image, const DaxiGrayMorphologyCfg& cfg) {
  return {image.src, image.step, image.size, cfg.border, borderPixel<T>(cfg.value)};
}

template <class Order, class T>
DaxStatus slide(PoolThreads on, const BorderedImage<T>& image, const Reach& reach, T* dst, int32_t dstStep,
                void* buffer) {
  const SlidingExtreme<Order, T> extreme(image, reach, buffer);
  return runRows(on, extreme.bands(), [&](int32_t first, int32_t end) {
    for (int32_t band = first; band < end; ++band) extreme.runBand(band, dst, dstStep);
  });
}

}  // namespace

template <class T>
DaxStatus grayExtreme(PoolThreads on, bool smaller, const GrayImage<T>& image, const DaxiGrayMorphologyCfg& cfg, T* dst,
                      int32_t dstStep, void* buffer) {
  const BorderedImage<T> bordered = borderedImage(image, cfg);
  const Reach reach = limitedReach(reachOf(cfg), bordered);
  return smaller ? slide<Smaller>(on, bordered, reach, dst, dstStep, buffer)
                 : slide<Larger>(on, bordered, reach.turned(), dst, dstStep, buffer);
}

namespace {

// --- Two passes ---

// In memory the second pass reaches beyond the region, so the first computes more than it.
DaxiSize sizeBetween(DaxiSize size, const DaxiGrayMorphologyCfg& cfg) {
  if (cfg.border != DAXI_BORDER_IN_MEMORY) return size;
  const Reach reach = reachOf(cfg);
  return {size.width + reach.columns() - 1, size.height + reach.rows() - 1};
}

template <class T>
struct GrayBuffer {
  // isCompound: of two passes, with an image between them.
  GrayBuffer(DaxiSize size, const DaxiGrayMorphologyCfg& cfg, bool isCompound) {
    const DaxiSize larger = isCompound ? sizeBetween(size, cfg) : size;
    const GrayImage<T> image = {nullptr, 0, larger};
    layout = SlidingBuffer<T>(larger, limitedReach(reachOf(cfg), borderedImage(image, cfg))).layout;
    if (isCompound) between = layout.add<T>(pixelsOf(larger));
  }
  BufferLayout layout;
  BufferPiece<T> between{};
};

template <class T>
struct GrayCall {
  PoolThreads on;
  GrayImage<T> image;
  const DaxiGrayMorphologyCfg& cfg;
  T* dst;
  int32_t dstStep;
  void* buffer;

  T* between() const { return GrayBuffer<T>(image.size, cfg, true).between.in(buffer); }

  DaxStatus onePass(bool smaller) const { return grayExtreme(on, smaller, image, cfg, dst, dstStep, buffer); }

  DaxStatus twoPasses(bool smallerFirst) const {
    GrayImage<T> outer = image, inner = {between(), 0, image.size};
    outer.size = sizeBetween(image.size, cfg);
    inner.step = outer.size.width;
    if (cfg.border == DAXI_BORDER_IN_MEMORY) {
      const Reach second = smallerFirst ? reachOf(cfg).turned() : reachOf(cfg);
      outer.src -= ptrdiff_t{second.up} * image.step + second.left;
      inner.src += ptrdiff_t{second.up} * inner.step + second.left;
    }
    DAX_REQUIRE_OK(grayExtreme(on, smallerFirst, outer, cfg, between(), inner.step, buffer));
    return grayExtreme(on, !smallerFirst, inner, cfg, dst, dstStep, buffer);
  }

  DaxStatus gradient() const {
    const int32_t step = image.size.width;
    DAX_REQUIRE_OK(grayExtreme(on, false, image, cfg, between(), step, buffer));
    DAX_REQUIRE_OK(onePass(true));
    return subtract(between(), step, dst, dstStep);
  }

  DaxStatus topHat() const {
    DAX_REQUIRE_OK(twoPasses(true));
    return subtract(image.src, image.step, dst, dstStep);
  }

  DaxStatus blackHat() const {
    DAX_REQUIRE_OK(twoPasses(false));
    return subtract(dst, dstStep, image.src, image.step);
  }

  // dst = a - b; either may be dst.
  DaxStatus subtract(const T* a, int32_t aStep, const T* b, int32_t bStep) const {
    return runRows(on, image.size.height, [&](int32_t first, int32_t end) {
      for (int32_t y = first; y < end; ++y) {
        arithmeticRow<SubOp, Operand::row>(rowAt(a, aStep, y), rowAt(b, bStep, y), rowAt(dst, dstStep, y),
                                           image.size.width, 0, currentIsa());
      }
    });
  }
};

// --- Entry points ---

DaxStatus checkGrayCfg(const DaxiGrayMorphologyCfg& cfg, DaxiSize size) {
  constexpr int32_t kMaxWindowSide = 32767;
  const auto isSide = [](int32_t side) { return side >= 1 && side <= kMaxWindowSide; };
  const auto fits = [&](int32_t side) { return int64_t{cfg.iterations} * (side - 1) + 1 <= kMaxWindowSide; };
  DAX_REQUIRE(isSide(cfg.window.width) && isSide(cfg.window.height), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.anchorX >= 0 && cfg.anchorX < cfg.window.width, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.anchorY >= 0 && cfg.anchorY < cfg.window.height, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.iterations >= 1 && fits(cfg.window.width) && fits(cfg.window.height), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value), DAX_STS_BAD_PARAM);
  if (cfg.border != DAXI_BORDER_IN_MEMORY) return DAX_STS_OK;
  const auto isInt = [](int64_t v) { return v <= std::numeric_limits<int32_t>::max(); };
  const Reach reach = reachOf(cfg);
  const bool fit = isInt(int64_t{size.width} + reach.columns()) && isInt(int64_t{size.height} + reach.rows());
  return fit ? DAX_STS_OK : DAX_STS_BAD_PARAM;
}

}  // namespace

template <class T, bool isCompound>
DaxStatus grayBufferSize(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkGrayCfg(*cfg, size));
  return GrayBuffer<T>(size, *cfg, isCompound).layout.store(bytes);
}

template <GrayOperation operation, class T>
DaxStatus grayOperation(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                        const DaxiGrayMorphologyCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkGrayCfg(*cfg, size));
  const GrayCall<T> call = {on, {src, srcStep, size}, *cfg, dst, dstStep, buffer};
  switch (operation) {
    case GrayOperation::erode:
      return call.onePass(true);
    case GrayOperation::dilate:
      return call.onePass(false);
    case GrayOperation::open:
      return call.twoPasses(true);
    case GrayOperation::close:
      return call.twoPasses(false);
    case GrayOperation::gradient:
      return call.gradient();
    case GrayOperation::topHat:
      return call.topHat();
    case GrayOperation::blackHat:
      break;
  }
  return call.blackHat();
}

namespace {

// --- 3 x 3, in pieces of rows, clipped at the image's edge ---

template <class Order, class T>
void extremeRow3(const T* above, const T* centre, const T* below, T* __restrict dst, int32_t width) {
  using Key = typename OrderKey<T>::Key;
  constexpr int32_t kPiece = 4096 / sizeof(Key);
  Key columns[1 + kPiece + 1];
  const auto key = [](T pixel) { return OrderKey<T>::of(pixel); };
  for (int32_t x = 0, count; x < width; x += count) {
    count = std::min(kPiece, width - x);
    const int32_t first = x > 0 ? -1 : 0, end = x + count < width ? count + 1 : count;
    columns[0] = columns[count + 1] = Order::template kNeutral<Key>;
#pragma GCC unroll 4
    for (int32_t i = first; i < end; ++i) {
      columns[1 + i] = Order::of(Order::of(key(above[x + i]), key(centre[x + i])), key(below[x + i]));
    }
#pragma GCC unroll 4
    for (int32_t i = 0; i < count; ++i) {
      dst[x + i] = OrderKey<T>::pixel(Order::of(Order::of(columns[i], columns[i + 1]), columns[i + 2]));
    }
  }
}

}  // namespace

template <class Order, class T>
DaxStatus grayExtreme3x3(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  const auto row = [&](int32_t y) { return rowAt(src, srcStep, y); };
  for (int32_t y = 0; y < size.height; ++y) {
    const int32_t above = std::max(y, 1) - 1, below = std::min(y, size.height - 2) + 1;
    extremeRow3<Order>(row(above), row(y), row(below), rowAt(dst, dstStep, y), size.width);
  }
  return DAX_STS_OK;
}

#define DAX_GRAY_OPERATION(OPERATION, T)                                                                               \
  template DaxStatus grayOperation<GrayOperation::OPERATION, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, \
                                                                const DaxiGrayMorphologyCfg*, void*);
#define DAX_GRAY(T)                                                                                                    \
  template DaxStatus grayExtreme<T>(PoolThreads, bool, const GrayImage<T>&, const DaxiGrayMorphologyCfg&, T*, int32_t, \
                                    void*);                                                                            \
  template DaxStatus grayBufferSize<T, false>(DaxiSize, const DaxiGrayMorphologyCfg*, uint64_t*);                      \
  template DaxStatus grayBufferSize<T, true>(DaxiSize, const DaxiGrayMorphologyCfg*, uint64_t*);                       \
  DAX_GRAY_OPERATION(erode, T)                                                                                         \
  DAX_GRAY_OPERATION(dilate, T)                                                                                        \
  DAX_GRAY_OPERATION(open, T)                                                                                          \
  DAX_GRAY_OPERATION(close, T)                                                                                         \
  DAX_GRAY_OPERATION(gradient, T)                                                                                      \
  DAX_GRAY_OPERATION(topHat, T)                                                                                        \
  DAX_GRAY_OPERATION(blackHat, T)                                                                                      \
  template DaxStatus grayExtreme3x3<Smaller, T>(const T*, int32_t, T*, int32_t, DaxiSize);                             \
  template DaxStatus grayExtreme3x3<Larger, T>(const T*, int32_t, T*, int32_t, DaxiSize);
DAX_GRAY(uint8_t)
DAX_GRAY(uint16_t)
DAX_GRAY(int16_t)
DAX_GRAY(float)
#undef DAX_GRAY
#undef DAX_GRAY_OPERATION

}  // namespace dax

DaxStatus DAXI_GrayMorphologyDefaultCfg(DaxiGrayMorphologyCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {{3, 3}, 1, 1, 1, DAXI_BORDER_CLIP, 0};
  return DAX_STS_OK;
}
