// Dense matrices: what the sides of each argument are.
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
};

std::string_view operationOf(std::string_view function) {
  function.remove_prefix(std::string_view("PRMT_MAT_").size());
  return function.substr(0, function.find('_'));
}

void drawSides(Call& c, bool isTall) {
  for (const char* name : {"n", "m", "k"}) {
    if (!c.has(name)) continue;
    const int64_t min = name[0] == 'm' && isTall ? std::clamp<int64_t>(c.integer("n"), 1, 60) : 1;
    // All of them are real work.
    if (c.number(name, 1, 4096, min + 11) > 100 && c.integer(name) <= 4096) c.set(name, static_cast<int32_t>(min + 40));
    if (isTall && name[0] == 'm' && !c.isSpoiled("m") && c.integer("m") < min) c.set("m", static_cast<int32_t>(min));
  }
}

// Numbers of a matrix that is positive definite at times, and singular at others.
template <class Real>
void fillMatrix(Call& c, Block& block, int64_t rows, int64_t cols, int64_t step) {
  auto* const data = reinterpret_cast<Real*>(block.data);
  c.fillReals(data, block.bytes / sizeof(Real));
  if (rows != cols || !c.chance(60)) return;
  for (int64_t i = 0; i < rows; ++i) {
    for (int64_t j = 0; j < i; ++j) data[j * step + i] = data[i * step + j];
    data[i * step + i] = static_cast<Real>(1000 * rows);
  }
}

void matrices(Call& c) {
  if (c.has("bytes")) return;  // a query
  const std::string_view operation = operationOf(c.function.name);
  drawSides(c, operation == "LeastSquares");
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
      continue;
    }
    const std::string step = name + "Step";
    const auto clip = [](int64_t value) {
      return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
    };
    const DaxiSize size{clip(side(shape[1])), clip(side(shape[0]))};
    if (mayBeNull && c.chance(30)) {
      c.set<void*>(name.c_str(), nullptr);
      c.set(step.c_str(), int32_t{0});
      continue;
    }
    c.image(name.c_str(), step.c_str(), size);
    Block* const made = c.blockOf(name.c_str());
    if (!made || made->role != Role::input || made->bytes == 0) continue;
    const auto given = c.get<int32_t>(step.c_str());
    made->realBytes == sizeof(float) ? fillMatrix<float>(c, *made, size.height, size.width, given)
                                     : fillMatrix<double>(c, *made, size.height, size.width, given);
  }
  c.worksBeforeFailing = true;
}

const Rows rows = {
    {"PRMT_MAT_*", matrices},
};

}  // namespace
}  // namespace dax::hostile
