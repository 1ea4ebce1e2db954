#include <Eigen/Geometry>
#include <memory>

#include "bench/space/align/align_pairs.h"
#include "bench/support/operation.h"

namespace {

using bench::Task;
using Points = Eigen::Map<const Eigen::Matrix<double, 3, Eigen::Dynamic>>;

Task alignment(bool hasScale) {
  const auto pairs = std::make_shared<bench::Pairs>(bench::pairs());
  const auto found = std::make_shared<Eigen::Matrix4d>();
  return {[=] {
    *found = Eigen::umeyama(Points(pairs->from.data(), 3, bench::kPairs), Points(pairs->to.data(), 3, bench::kPairs),
                            hasScale);
  }};
}

const bench::Peer peers[] = {
    {"align 100000 points", "Eigen", [] { return alignment(false); }},
    {"align 100000 points with scale", "Eigen", [] { return alignment(true); }},
};

}  // namespace
