#include "prmt/consensus_shapes.h"

#include <algorithm>
#include <cstring>

#include "frame/check.h"
#include "optim/consensus/consensus.h"
#include "optim/consensus/shapes.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

// The callbacks of a shape; `user` is its points.
template <class Shape, class T>
struct ShapeModel {
  static constexpr int kD = Shape::kDimension;
  using Points = ShapePoints<T, kD>;
  using Lanes = ShapeLanes<T>;
  using Vector = typename Lanes::Vector;

  static const Points& pointsOf(const void* user) { return *static_cast<const Points*>(user); }

  static int32_t solve(const int32_t* sample, void* user, double* shape, int32_t* count) {
    double p[Shape::kSample][kD];
    for (int i = 0; i < Shape::kSample; ++i) pointsOf(user).get(sample[i], p[i]);
    *count = Shape::solve(p, shape) ? 1 : 0;
    return PRMT_STS_OK;
  }

  // Calls body(i, r^2 of the points i and those after it that a vector holds).
  template <class Body>
  static void overVectors(const double* shape, int32_t first, int32_t count, const void* user, Body&& body) {
    const Points& points = pointsOf(user);
    T rounded[Shape::kDoubles];
    for (int d = 0; d < Shape::kDoubles; ++d) rounded[d] = static_cast<T>(shape[d]);
    for (int32_t i = 0; i < count; i += Lanes::kCount) {
      Vector p[kD];
      for (int d = 0; d < kD; ++d) std::memcpy(&p[d], points.axis(d) + first + i, sizeof p[d]);
      body(i, Shape::residual2(rounded, p));
    }
  }

  static int32_t residual2(const double* shape, int32_t first, int32_t count, void* user, double* r2) {
    overVectors(shape, first, count, user, [=](int32_t i, Vector square) {
      const int32_t valid = std::min(Lanes::kCount, count - i);
      for (int32_t lane = 0; lane < valid; ++lane) r2[i + lane] = square[lane];
    });
    return PRMT_STS_OK;
  }

  // What pads the points is NaN and gains nothing.
  static int32_t gain(const double* shape, int32_t first, int32_t count, double limit2, double slope, void* user,
                      double*, double* gain) {
    const auto limit = static_cast<T>(limit2), steep = static_cast<T>(slope);
    Vector sum = {};
    overVectors(shape, first, count, user,
                [&](int32_t, Vector square) { sum += square <= limit ? 1 - steep * square : Vector{}; });
    for (int32_t lane = 0; lane < Lanes::kCount; ++lane) *gain += sum[lane];
    return PRMT_STS_OK;
  }

  static int32_t refit(const int32_t* indices, int32_t count, void* user, double* shape, int32_t* found) {
    *found = Shape::fit(pointsOf(user), indices, count, shape) ? 1 : 0;
    return PRMT_STS_OK;
  }

  static constexpr PrmtSacModel kModel = {Shape::kSample, 1, Shape::kDoubles, 0, solve, residual2, refit};
};

// The engine's buffer, with the points behind it.
struct ShapeBuffer : SacBuffer {
  template <class T>
  ShapeBuffer(const PrmtSacModel& model, int32_t dimension, int32_t n, const PrmtSacCfg& cfg, uint32_t threads,
              const T*)
      : SacBuffer(model, n, cfg, threads),
        points(layout.add<uint8_t>(sizeof(T) * static_cast<uint64_t>(dimension) *
                                   static_cast<uint64_t>(roundedToLanes(n)))) {}
  BufferPiece<uint8_t> points;
};

template <class Shape, class T>
int32_t find(PoolThreads on, const T* points, int32_t step, int32_t n, const PrmtSacCfg* cfg, PrmtSacResult* result,
             uint8_t* inlierMask, void* buffer) {
  using Model = ShapeModel<Shape, T>;
  DAX_REQUIRE(points && cfg && result && buffer, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(checkSac(Shape::kSample, n, *cfg));
  DAX_REQUIRE(step >= Shape::kDimension, PRMT_STS_BAD_PARAM);
  const uint32_t threads = hasPool(on.pool, on.threads) ? on.threads : 1;
  const ShapeBuffer pieces(Model::kModel, Shape::kDimension, n, *cfg, threads, points);
  typename Model::Points relative(points, step, n, reinterpret_cast<T*>(pieces.points.in(buffer)));
  PrmtSacResult found;
  PRMT_REQUIRE_OK(runSac({Model::kModel, &relative, Model::gain, n}, *cfg, on, pieces, buffer, &found, inlierMask));
  Shape::move(relative.middle(), found.model);
  *result = found;
  return PRMT_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t PRMT_SAC_ShapeBufferSize(int32_t n, const PrmtSacCfg* cfg, uint32_t threads, uint64_t* bytes) {
  using namespace dax;
  DAX_REQUIRE(cfg && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1, PRMT_STS_BAD_PARAM);
  PRMT_REQUIRE_OK(checkSac(0, n, *cfg));
  const ShapeBuffer pieces(ShapeModel<Round<3>, double>::kModel, 3, n, *cfg, threads,
                           static_cast<const double*>(nullptr));
  return pieces.layout.store(bytes) == DAX_STS_OK ? PRMT_STS_OK : PRMT_STS_BUFFER_OVERFLOW;
}

#define DAX_FIND(NAME, SHAPE, SUFFIX, T)                                                                          \
  int32_t PRMT_SAC_##NAME##_##SUFFIX(const T* points, int32_t step, int32_t n, const PrmtSacCfg* cfg,             \
                                     PrmtSacResult* result, uint8_t* inlierMask, void* buffer) {                  \
    return dax::find<dax::SHAPE>({}, points, step, n, cfg, result, inlierMask, buffer);                           \
  }                                                                                                               \
  int32_t PRMT_SAC_##NAME##_##SUFFIX##_MT(void* pool, uint32_t threads, const T* points, int32_t step, int32_t n, \
                                          const PrmtSacCfg* cfg, PrmtSacResult* result, uint8_t* inlierMask,      \
                                          void* buffer) {                                                         \
    return dax::find<dax::SHAPE>({pool, threads}, points, step, n, cfg, result, inlierMask, buffer);              \
  }
DAX_FIND(Line2, Flat<2>, f64, double)
DAX_FIND(Line2, Flat<2>, f32, float)
DAX_FIND(Circle, Round<2>, f64, double)
DAX_FIND(Circle, Round<2>, f32, float)
DAX_FIND(Plane, Flat<3>, f64, double)
DAX_FIND(Plane, Flat<3>, f32, float)
DAX_FIND(Sphere, Round<3>, f64, double)
DAX_FIND(Sphere, Round<3>, f32, float)
#undef DAX_FIND
