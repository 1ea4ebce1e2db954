#include "dax3d/align.h"

#include <algorithm>
#include <memory>

#include "bench/space/align/align_pairs.h"
#include "bench/support/operation.h"
#include "dax3d/box.h"
#include "dax3d/fit.h"
#include "dax3d/hull.h"
#include "dax3d/pose.h"

namespace {

using bench::kPairs;
using bench::Task;

Task alignment(bool hasScale) {
  const auto pairs = std::make_shared<bench::Pairs>(bench::pairs());
  return {[=] {
    Dax3dAlignment found;
    const auto align = hasScale ? DAX3D_ALIGN_Similarity_f64 : DAX3D_ALIGN_Rigid_f64;
    bench::require(align(pairs->from.data(), pairs->to.data(), nullptr, kPairs, &found));
  }};
}

// What reading all numbers once takes: their largest.
Task reading() {
  const auto pairs = std::make_shared<bench::Pairs>(bench::pairs());
  const auto largest = std::make_shared<double>(0);
  return {[=] {
    double four[4] = {};
    for (const auto* const points : {&pairs->from, &pairs->to}) {
      for (size_t i = 0; i + 4 <= points->size(); i += 4) {
        for (size_t k = 0; k < 4; ++k) four[k] = std::max(four[k], (*points)[i + k]);
      }
    }
    *largest = *std::max_element(four, four + 4);
  }};
}

template <class T, class Call>
Task application(Call call) {
  struct State {
    std::vector<T> points = std::vector<T>(3 * kPairs), result = points;
    double pose[16] = {0.6, -0.8, 0, 1, 0.8, 0.6, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1};
  };
  const auto state = std::make_shared<State>();
  const bench::Pairs pairs = bench::pairs();
  std::copy(pairs.from.begin(), pairs.from.end(), state->points.begin());
  return {[=] { bench::require(call(state->pose, state->points.data(), kPairs, state->result.data())); }};
}

// Points in a ball, which has many corners.
template <class Call>
Task bodies(Call call) {
  struct State {
    std::vector<double> points = bench::pairs().from;
    std::vector<int32_t> triangles = std::vector<int32_t>(6 * kPairs);
    std::vector<uint64_t> buffer;
  };
  const auto state = std::make_shared<State>();
  uint64_t bytes = 0;
  bench::require(DAX3D_BOX_MinVolume_BufferSize(kPairs, &bytes));
  state->buffer.resize(bytes / 8);
  return {[=] { bench::require(call(*state)); }};
}

template <class Fit>
Task fitting(Fit fit) {
  const auto pairs = std::make_shared<bench::Pairs>(bench::pairs());
  return {[=] {
    double numbers[7], rms;
    bench::require(fit(pairs->from.data(), kPairs, numbers, &rms));
  }};
}

const bench::Own operations[] = {
    {"align 100000 points", 0, [] { return alignment(false); }},
    {"align 100000 points with scale", 0, [] { return alignment(true); }},
    {"read 100000 pairs", 0, reading},
    {"move 100000 points 32f", 12 * kPairs, [] { return application<float>(DAX3D_POSE_ApplyCloud_f32); }},
    {"move 100000 points 64f", 24 * kPairs, [] { return application<double>(DAX3D_POSE_ApplyCloud_f64); }},
    {"plane of 100000 points", 0, [] { return fitting(DAX3D_FIT_Plane_f64); }},
    {"sphere of 100000 points", 0, [] { return fitting(DAX3D_FIT_Sphere_f64); }},
    {"cylinder of 100000 points", 0, [] { return fitting(DAX3D_FIT_Cylinder_f64); }},
    {"hull of 100000 points", 0,
     [] {
       return bodies([](auto& state) {
         int32_t count;
         return DAX3D_HULL_f64(state.points.data(), kPairs, state.triangles.data(), &count, state.buffer.data());
       });
     }},
    {"least box of 100000 points", 0,
     [] {
       return bodies([](auto& state) {
         Dax3dBox box;
         return DAX3D_BOX_MinVolume_f64(state.points.data(), kPairs, &box, state.buffer.data());
       });
     }},
};

}  // namespace
