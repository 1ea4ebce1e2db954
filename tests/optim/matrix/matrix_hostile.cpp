// Dense matrices: what the sides of each argument are.
#include <cmath>
#include <map>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Arguments by name: two letters are the rows and columns of a matrix, one the length of an array, where r stands for the
// smaller of m and n; ? marks what may be null.
const std::map<std::string_view, std::string_view> kShapes = {
    {"Mul", "a mk b kn c mn"},
    {"MulAtB", "a km b kn c mn"},
    {"MulABt", "a mk b nk c mn"},
    {"Gram", "a mn c nn"},
    {"LU", "a nn lu nn pivots n"},
    {"Cholesky", "a nn l nn"},
    {"LDLT", "a nn l nn d n e n pivots n"},
    {"QR", "a mn q? mr r rn"},
    {"QRPivot", "a mn q? mr r rn pivots n"},
    {"SVD", "a mn u? mr s r v? nr"},
    {"EigSym", "a nn values n vectors? nn"},
    {"Solve", "a nn b nk x nk"},
    {"Inverse", "a nn inverse nn"},
    {"Det", "a nn"},
    {"Rcond", "a nn"},
    {"LeastSquares", "a mn b mk x nk"},
    {"WeightedLS", "a mn weights m b mk x nk"},
    {"ConstrainedLS", "a mn b m c pn d p x n"},
    {"MinNorm", "a mn b mk x nk"},
    {"PInv", "a mn inverse nm"},
    {"Homogeneous", "a mn x n"},
    {"NullSpace", "a mn basis nn"},
    {"TotalLS", "a mn b m x n"},
    {"EigSymGen", "a nn b nn values n vectors? nn"},
    {"EigGeneral", "a nn real n imaginary n"},
    {"Exp", "a nn result nn"},
    {"Log", "a nn result nn"},
};

std::string_view operationOf(std::string_view function) {
  function.remove_prefix(std::string_view("PRMT_MAT_").size());
  return function.substr(0, function.find('_'));
}

// All of them are real work.
void drawSide(Call& c, const char* name, int64_t low, int64_t high) {
  if (c.has(name) && c.number(name, low, high, std::min(low + 11, high)) > 100 && c.integer(name) <= 4096) {
    c.set(name, static_cast<int32_t>(std::min<int64_t>(low + 40, high)));
  }
}

// Of least squares m is n or more, and there are fewer constraints.
void drawSides(Call& c, bool isLeastSquares) {
  drawSide(c, "n", 1, 4000);
  const int64_t n = std::clamp<int64_t>(c.integer("n"), 1, 60);
  drawSide(c, "m", isLeastSquares ? n : 1, 4096);
  drawSide(c, "k", 1, 4096);
  drawSide(c, "p", 1, n);
}

// Numbers as they come, or tame ones: of square matrices positive definite, of weights not below 0, and none of which the
// exponential is infinite.
template <class Real>
void fillNumbers(Call& c, const std::string& name, int64_t rows, int64_t cols, int64_t step) {
  const bool isExp = operationOf(c.function.name) == "Exp";
  Real* const data = c.reals<Real>(name.c_str(), 0);
  if (c.integer("n") % 5 == 0) return;
  for (size_t i = 0; i < c.blockOf(name.c_str())->bytes / sizeof(Real); ++i) {
    if (!(std::fabs(data[i]) <= 1000)) data[i] = 1;
    if (isExp) data[i] /= 1024;
    if (name == "weights") data[i] = std::fabs(data[i]);
  }
  for (int64_t i = 0; rows == cols && i < rows; ++i) {
    for (int64_t j = 0; j < i; ++j) data[j * step + i] = data[i * step + j];
    if (!isExp) data[i * step + i] = static_cast<Real>(1000 * rows);
  }
}

void fillInput(Call& c, const std::string& name, int64_t rows, int64_t cols, int64_t step) {
  const Block* const made = c.blockOf(name.c_str());
  if (!made || made->role != Role::input || made->bytes == 0) return;
  made->realBytes == sizeof(float) ? fillNumbers<float>(c, name, rows, cols, step)
                                   : fillNumbers<double>(c, name, rows, cols, step);
}

void matrices(Call& c) {
  if (c.has("bytes")) return;  // a query
  const std::string_view operation = operationOf(c.function.name);
  drawSides(c, operation.ends_with("LS") || operation == "LeastSquares");
  const auto side = [&](char letter) {
    const char name[] = {letter, '\0'};
    return letter == 'r' ? std::min(c.integer("m"), c.integer("n")) : c.integer(name);
  };
  std::string_view rest = kShapes.at(operation);
  const auto word = [&rest] {
    const size_t end = std::min(rest.find(' '), rest.size());
    const std::string_view first = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return std::string(first);
  };
  while (!rest.empty()) {
    std::string name = word();
    const std::string shape = word();
    const bool mayBeNull = name.back() == '?';
    if (mayBeNull) name.pop_back();
    if (shape.size() == 1) {
      c.array(name.c_str(), side(shape[0]));
      fillInput(c, name, 1, 0, 0);
      continue;
    }
    const std::string step = name + "Step";
    const auto clip = [](int64_t value) {
      return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
    };
    const DaxiSize size{clip(side(shape[1])), clip(side(shape[0]))};
    if (mayBeNull && !c.isRound() && c.chance(30)) {
      c.set<void*>(name.c_str(), nullptr);
      c.set(step.c_str(), int32_t{0});
      continue;
    }
    c.image(name.c_str(), step.c_str(), size);
    fillInput(c, name, size.height, size.width, c.get<int32_t>(step.c_str()));
  }
  c.worksBeforeFailing = true;
}

const Rows rows = {
    {"PRMT_MAT_*", matrices},
};

}  // namespace
}  // namespace dax::hostile
