#include <memory>
#include <unsupported/Eigen/Polynomials>

#include "bench/optim/equation/equation_operations.h"
#include "bench/support/operation.h"

namespace {

using bench::Task;

// All roots, as eigenvalues of the companion matrix: real ones are not told apart.
Task solveQuartics(bool areRootsReal) {
  auto polynomials = std::make_shared<std::vector<bench::Quartic>>(bench::quartics(areRootsReal));
  auto solver = std::make_shared<Eigen::PolynomialSolver<double, 4>>();
  return {[polynomials, solver] {
    for (const bench::Quartic& p : *polynomials)
      solver->compute(Eigen::Map<const Eigen::Matrix<double, 5, 1>>(p.data()));
  }};
}
const bench::Peer random("256 quartics, random coefficients", "Eigen", [] { return solveQuartics(false); });
const bench::Peer real("256 quartics, four real roots", "Eigen", [] { return solveQuartics(true); });

Task solveDegree(int32_t degree) {
  const std::vector<double> p = bench::coefficients(degree);
  auto polynomial = std::make_shared<Eigen::VectorXd>(Eigen::Map<const Eigen::VectorXd>(p.data(), degree + 1));
  auto solver = std::make_shared<Eigen::PolynomialSolver<double, Eigen::Dynamic>>();
  return {[polynomial, solver] { solver->compute(*polynomial); }};
}

const std::vector<bench::Peer> degrees = [] {
  std::vector<bench::Peer> made;
  for (const int32_t degree : bench::kDegrees) {
    made.emplace_back(bench::titleOfDegree(degree), "Eigen", [degree] { return solveDegree(degree); });
  }
  return made;
}();

}  // namespace
