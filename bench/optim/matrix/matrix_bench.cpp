#include "bench/optim/matrix/matrix_operations.h"

#include <memory>

#include "bench/support/operation.h"
#include "prmt.h"

namespace {

using bench::Task;

struct Problem {
  explicit Problem(int32_t side)
      : n(side),
        a(bench::elements(n * n)),
        b(bench::elements(n * n, 2)),
        first(a.size()),
        second(a.size()),
        values(size_t(n)),
        pivots(size_t(n)),
        work(size_t(16 * n * n + 400 * n + 8000)) {}
  int32_t n;
  std::vector<double> a, b, first, second, values;
  std::vector<int32_t> pivots;
  std::vector<double> work;  // enough for all
};

using Run = DaxStatus (*)(Problem&);
const std::pair<const char*, Run> kRuns[] = {
    {"product",
     [](Problem& p) { return PRMT_MAT_Mul_f64(p.a.data(), p.n, p.b.data(), p.n, p.first.data(), p.n, p.n, p.n, p.n); }},
    {"LU",
     [](Problem& p) {
       return PRMT_MAT_LU_f64(p.a.data(), p.n, p.first.data(), p.n, p.pivots.data(), p.n, p.work.data());
     }},
    {"QR",
     [](Problem& p) {
       return PRMT_MAT_QR_f64(p.a.data(), p.n, nullptr, 0, p.first.data(), p.n, p.n, p.n, p.work.data());
     }},
    {"SVD",
     [](Problem& p) {
       return PRMT_MAT_SVD_f64(p.a.data(), p.n, p.first.data(), p.n, p.values.data(), p.second.data(), p.n, p.n, p.n, 0,
                               p.work.data());
     }},
    {"fast SVD",
     [](Problem& p) {
       return PRMT_MAT_SVD_f64(p.a.data(), p.n, p.first.data(), p.n, p.values.data(), p.second.data(), p.n, p.n, p.n, 1,
                               p.work.data());
     }},
    {"EigSym",
     [](Problem& p) {
       return PRMT_MAT_EigSym_f64(p.a.data(), p.n, p.values.data(), p.first.data(), p.n, p.n, p.work.data());
     }},
    {"Solve",
     [](Problem& p) {
       return PRMT_MAT_Solve_f64(p.a.data(), p.n, p.b.data(), 1, p.values.data(), 1, p.n, 1, p.work.data());
     }},
};

const std::vector<bench::Own> operations = [] {
  std::vector<bench::Own> made;
  for (const auto& [name, run] : kRuns) {
    for (const bench::Kind& kind : bench::kKinds) {
      if (std::string(kind.name) != name) continue;
      for (const int32_t n : kind.sizes) {
        const Run call = run;
        made.emplace_back(bench::titleOf(kind, n).c_str(), 0, [call, n]() -> Task {
          auto problem = std::make_shared<Problem>(n);
          return {[call, problem] { bench::require(call(*problem)); }};
        });
      }
    }
  }
  return made;
}();

}  // namespace
