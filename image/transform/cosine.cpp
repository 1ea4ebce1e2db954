#include "image/transform/cosine.h"

#include "image/transform/dft_strip.h"
#include "image/transform/dft_work.h"
#include "image/transform/fourier.h"

namespace dax {
namespace {

// Makhoul's order: the even elements, then the odd ones from the last to the first.
class EvenThenOdd {
 public:
  explicit EvenThenOdd(int32_t n) : last_(n - 1) {}
  int32_t operator()(int32_t i) const { return i % 2 ? last_ - i / 2 : i / 2; }

 private:
  int32_t last_;
};

constexpr auto inOrder = [](int32_t i) { return i; };

// The transforms of all four groups of lanes of some lines along one direction.
template <class T>
class CosineLine {
 public:
  CosineLine(const DftPlan<T>& plan, int direction)
      : line_(plan.along[direction]),
        cosines_(plan.cosines[direction]),
        first_(static_cast<T>(std::sqrt(1.0 / line_.n))),
        others_(static_cast<T>(std::sqrt(2.0 / line_.n))) {}

  int32_t length() const { return line_.n; }

  // From x, in Makhoul's order, to what is returned. The spectrum V of a line of reals gives s(k) (cos Re V(k) + sin Im
  // V(k)); two lines were transformed as the parts of one, Z, so that 2 V is Z(k) + conj Z(n - k) of the one.
  const T* forward(T* x, T* y) const {
    const T* const z = transformLine(line_, x, y);
    T* const to = z == x ? y : x;
    for (int32_t k = 0; k < line_.n; ++k) {
      const T scale = (k ? others_ : first_) * T{0.5}, c = cosines_[ptrdiff_t{2} * k] * scale,
              s = cosines_[ptrdiff_t{2} * k + 1] * scale;
      for (int half = 0; half < 2; ++half) {
        const Cx<T> a = point(z, k, half), b = point(z, k ? line_.n - k : 0, half);
        storeHalf(to + ptrdiff_t{k} * kDftPoint<T>, half,
                  Cx<T>{(a.re + b.re) * c + (a.im - b.im) * s, (a.im + b.im) * c + (b.re - a.re) * s});
      }
    }
    return to;
  }

  // From x to what is returned, in Makhoul's order, parts exchanged: V(k) = e^(i pi k / 2n) (Y(k) - i Y(n - k)).
  const T* backward(T* x, T* y) const {
    for (int32_t k = 0; k < line_.n; ++k) {
      const T scale = k ? others_ * T{0.5} : first_, c = cosines_[ptrdiff_t{2} * k] * scale,
              s = cosines_[ptrdiff_t{2} * k + 1] * scale;
      for (int half = 0; half < 2; ++half) {
        const Cx<T> u = point(x, k, half), v = k ? point(x, line_.n - k, half) : Cx<T>{};
        const Cx<T> re = u * c + v * s, im = u * s - v * c;  // of both lines' V
        storeHalf(y + ptrdiff_t{k} * kDftPoint<T>, half, Cx<T>{im.re + re.im, re.re - im.im});
      }
    }
    return transformLine(line_, y, x);
  }

 private:
  static Cx<T> point(const T* points, int32_t k, int half) {
    return loadHalf(points + ptrdiff_t{k} * kDftPoint<T>, half);
  }

  const DftLine<T>& line_;
  const T* cosines_;
  T first_, others_;
};

// Rows to dst, then dst's columns in place.
template <class T>
DaxStatus transformCosine(PoolThreads on, const DftPlan<T>& plan, const T* src, int32_t srcStep, T* dst,
                          int32_t dstStep, bool isBackward, void* buffer) {
  const DftWork<T> work(on, DftKind::cosine, plan.size, buffer);
  const CosineLine<T> alongX(plan, 0), alongY(plan, 1);
  const int32_t width = plan.size.width, height = plan.size.height;
  const EvenThenOdd placeX(width), placeY(height);
  DAX_REQUIRE_OK(work.strips(height, kDftPoint<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    const T* const from = rowAt(src, srcStep, first);
    T* const to = rowAt(dst, dstStep, first);
    if (isBackward) {
      loadRealRows(from, srcStep, count, width, inOrder, x);
      storeRealRows(alongX.backward(x, y), true, T{1}, placeX, to, dstStep, count, width);
    } else {
      loadRealRows(from, srcStep, count, width, placeX, x);
      storeRealRows(alongX.forward(x, y), false, T{1}, inOrder, to, dstStep, count, width);
    }
  }));
  if (height == 1) return DAX_STS_OK;
  return work.strips(width, kDftPoint<T>, [&](int32_t first, int32_t count, T* x, T* y) {
    T* const columns = dst + first;
    if (isBackward) {
      loadRealColumns(columns, dstStep, count, height, inOrder, x);
      storeRealColumns(alongY.backward(x, y), true, placeY, columns, dstStep, count, height);
    } else {
      loadRealColumns(columns, dstStep, count, height, placeY, x);
      storeRealColumns(alongY.forward(x, y), false, inOrder, columns, dstStep, count, height);
    }
  });
}

template <class T>
DaxStatus cosineBothWays(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                         bool isBackward, const void* model, uint64_t modelBytes, void* buffer) {
  DAX_REQUIRE(src && dst && model && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areDftSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  DftPlan<T> plan;
  DAX_REQUIRE_OK(openPlan(DftKind::cosine, model, modelBytes, plan));
  DAX_REQUIRE(plan.size.width == size.width && plan.size.height == size.height, DAX_STS_BAD_PARAM);
  return transformCosine(on, plan, src, srcStep, dst, dstStep, isBackward, buffer);
}

template <class T>
DaxStatus makeCosinePlan(DaxiSize size, void* model) {
  DAX_REQUIRE(model, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areDftSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(reinterpret_cast<uintptr_t>(model) % 8 == 0, DAX_STS_BAD_PARAM);
  return makePlan<T>(DftKind::cosine, size, model);
}

DaxStatus checkCosineQuery(DaxiSize size, const uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areDftSides(size), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace

template <class T>
DaxStatus dct(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const void* model,
              uint64_t modelBytes, void* buffer) {
  return cosineBothWays(on, src, srcStep, dst, dstStep, size, false, model, modelBytes, buffer);
}

template <class T>
DaxStatus idct(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const void* model,
               uint64_t modelBytes, void* buffer) {
  return cosineBothWays(on, src, srcStep, dst, dstStep, size, true, model, modelBytes, buffer);
}

#define DAX_COSINE(T)                                                                                          \
  template DaxStatus dct(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, const void*, uint64_t, void*); \
  template DaxStatus idct(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, const void*, uint64_t, void*);
DAX_COSINE(float)
DAX_COSINE(double)
#undef DAX_COSINE

}  // namespace dax

#define DAX_COSINE_PLANS(SUFFIX, T)                                           \
  DaxStatus DAXI_DctPlanModelSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {  \
    DAX_REQUIRE_OK(dax::checkCosineQuery(size, bytes));                       \
    return dax::planSize<T>(dax::DftKind::cosine, size, bytes);               \
  }                                                                           \
  DaxStatus DAXI_DctPlan_##SUFFIX(DaxiSize size, void* model) {               \
    return dax::makeCosinePlan<T>(size, model);                               \
  }                                                                           \
  DaxStatus DAXI_DctBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {     \
    DAX_REQUIRE_OK(dax::checkCosineQuery(size, bytes));                       \
    return dax::DftBuffer<T>(size, dax::DftKind::cosine).layout.store(bytes); \
  }
DAX_COSINE_PLANS(32f, float)
DAX_COSINE_PLANS(64f, double)
#undef DAX_COSINE_PLANS
