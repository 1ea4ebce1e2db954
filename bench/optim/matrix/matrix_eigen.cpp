#include <Eigen/Dense>
#include <memory>

#include "bench/optim/matrix/matrix_operations.h"
#include "bench/support/operation.h"

namespace {

using bench::Task;
using Matrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

struct Problem {
  explicit Problem(int32_t n)
      : a(Eigen::Map<Matrix>(bench::elements(n * n).data(), n, n)),
        b(Eigen::Map<Matrix>(bench::elements(n * n, 2).data(), n, n)),
        right(b.col(0)) {}
  Matrix a, b, first, second;
  Eigen::VectorXd right, values;
};

using Run = void (*)(Problem&);
void findSvd(Problem& p) {
  const Eigen::BDCSVD<Matrix> svd(p.a, Eigen::ComputeThinU | Eigen::ComputeThinV);
  p.first = svd.matrixU(), p.second = svd.matrixV(), p.values = svd.singularValues();
}
const std::pair<const char*, Run> kRuns[] = {
    {"product", [](Problem& p) { p.first.noalias() = p.a * p.b; }},
    {"LU", [](Problem& p) { p.first = p.a.partialPivLu().matrixLU(); }},
    {"QR", [](Problem& p) { p.first = p.a.householderQr().matrixQR(); }},
    {"SVD", findSvd},
    {"fast SVD", findSvd},
    {"EigSym",
     [](Problem& p) {
       const Eigen::SelfAdjointEigenSolver<Matrix> solver(p.a);
       p.first = solver.eigenvectors(), p.values = solver.eigenvalues();
     }},
    {"Solve", [](Problem& p) { p.values = p.a.partialPivLu().solve(p.right); }},
};

const std::vector<bench::Peer> peers = [] {
  std::vector<bench::Peer> made;
  for (const auto& [name, run] : kRuns) {
    for (const bench::Kind& kind : bench::kKinds) {
      if (std::string(kind.name) != name) continue;
      for (const int32_t n : kind.sizes) {
        const Run call = run;
        made.emplace_back(bench::titleOf(kind, n).c_str(), "Eigen", [call, n]() -> Task {
          auto problem = std::make_shared<Problem>(n);
          return {[call, problem] { call(*problem); }};
        });
      }
    }
  }
  return made;
}();

}  // namespace
