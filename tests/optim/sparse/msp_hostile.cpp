// Sparse matrices.
#include "prmt.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// A matrix of these sides with some elements and room for some more; null or without an array where it is spoiled.
PrmtMsp* matrix(Call& c, const char* name, int32_t rows, int32_t cols, int64_t capacity) {
  auto* const record = c.record<PrmtMsp>(name);
  if (!record) return nullptr;
  uint64_t bytes = 0;
  PRMT_MSP_BufSize_f64(rows, cols, capacity, &bytes);
  void* const memory = c.memory("elements", static_cast<int64_t>(bytes), c.block(record)->role);
  PRMT_MSP_Init_f64(record, rows, cols, capacity, memory);
  const int64_t elements = c.between(0, capacity);
  for (int64_t i = 0; i < elements; ++i) {
    const double value = c.chance(98) ? static_cast<double>(c.between(-99, 99)) / 8 : c.hostileReal();
    PRMT_MSP_AddEle_tpl_f64(record, c.random.below(rows), c.random.below(cols), value);
  }
  if (c.isSpoiled(name)) {
    if (c.chance(50)) record->start = nullptr;
    if (c.chance(50)) record->value = nullptr;
  }
  return record;
}

struct Sides {
  int32_t rows, cols;
};

Sides anySides(Call& c) {
  return {1 + c.random.below(7), 1 + c.random.below(7)};
}

void createMatrix(Call& c) {
  const int64_t rows = c.number("rows", 1, 9), cols = c.number("cols", 1, 9), capacity = c.number("capacity", 0, 40);
  if (!c.has("matrix")) return;
  c.record<PrmtMsp>("matrix");
  c.work("buffer", [&](uint64_t* bytes) {
    return static_cast<DaxStatus>(
        PRMT_MSP_BufSize_f64(static_cast<int32_t>(rows), static_cast<int32_t>(cols), capacity, bytes));
  });
  if (Block* const made = c.blockOf("buffer")) made->role = Role::output;
}

void changeMatrix(Call& c) {
  const Sides s = anySides(c);
  matrix(c, "matrix", s.rows, s.cols, c.between(c.has("count") ? 10 : 0, 20));
  if (c.has("value")) c.real("value", -9, 9);
  if (c.has("count")) {
    const int64_t count = c.number("count", 0, 15);
    for (const char* name : {"row", "col"}) {
      auto* const index = static_cast<int32_t*>(c.array(name, count));
      const Block* const made = c.block(index);
      const int32_t side = name[0] == 'r' ? s.rows : s.cols;
      for (size_t i = 0; made && i < made->bytes / sizeof *index; ++i) index[i] = c.random.below(side);
      if (made && made->bytes > 0 && c.isSpoiled(name)) index[0] = static_cast<int32_t>(c.hostileInteger());
    }
    return;
  }
  if (c.has("row")) c.number("row", 0, s.rows - 1);
  if (c.has("col")) c.number("col", 0, s.cols - 1);
  if (!c.has("block")) return;
  const auto left = [&](int64_t side, int64_t at) { return std::clamp<int64_t>(side - at, 1, side); };
  const int64_t height = c.number("blockRows", 1, left(s.rows, c.integer("row")));
  const int64_t width = c.number("blockCols", 1, left(s.cols, c.integer("col")));
  const int64_t step = c.number("step", std::clamp<int64_t>(width, 1, 9), 12);
  const bool possible = height >= 1 && width >= 1 && step >= width;
  c.reals<double>("block", possible ? (height - 1) * step + width : -1);
}

void transpose(Call& c) {
  const Sides s = anySides(c);
  matrix(c, "matrix", s.rows, s.cols, 20);
  const bool wrong = c.isSpoiled("transposed", 30);
  matrix(c, "transposed", s.cols + wrong, s.rows, c.chance(90) ? 20 : 2);
}

void multiply(Call& c) {
  const Sides s = anySides(c);
  const int32_t inner = 1 + c.random.below(7);
  const PrmtMsp* const a = matrix(c, "a", s.rows, inner, 15);
  const PrmtMsp* const b = matrix(c, "b", inner + (c.isSpoiled("b", 50)), s.cols, 15);
  if (!c.has("product")) return;
  matrix(c, "product", s.rows, s.cols, c.chance(90) ? 49 : 3);
  c.work("buffer", [&](uint64_t* bytes) { return static_cast<DaxStatus>(PRMT_MSP_Mul_bufsize_f64(a, b, bytes)); });
  c.worksBeforeFailing = true;
}

void add(Call& c) {
  const Sides s = anySides(c);
  const PrmtMsp* const a = matrix(c, "a", s.rows, s.cols, 15);
  const PrmtMsp* const b = matrix(c, "b", s.rows, s.cols + (c.isSpoiled("b", 50)), 15);
  if (!c.has("sum")) return;
  matrix(c, "sum", s.rows, s.cols, c.chance(90) ? 30 : 3);
  c.real("alpha", -3, 3), c.real("beta", -3, 3);
  c.work("buffer", [&](uint64_t* bytes) { return static_cast<DaxStatus>(PRMT_MSP_Add_bufsize_f64(a, b, bytes)); });
  c.worksBeforeFailing = true;
}

void timesVector(Call& c) {
  const Sides s = anySides(c);
  matrix(c, "matrix", s.rows, s.cols, 20);
  const bool turned = std::string_view(c.function.name).find("Trans") != std::string_view::npos;
  c.reals<double>("vector", turned ? s.rows : s.cols);
  c.array("result", turned ? s.cols : s.rows);
}

void dense(Call& c) {
  const Sides s = anySides(c);
  matrix(c, "matrix", s.rows, s.cols, 20);
  const int64_t step = c.number("step", s.cols, 12);
  const bool possible = step >= s.cols;
  c.array("dense", possible ? (s.rows - 1) * step + s.cols : -1);
  if (Block* const made = c.blockOf("dense"); made && possible) {
    made->rowBytes = static_cast<size_t>(s.cols) * sizeof(double),
    made->stepBytes = static_cast<size_t>(step) * sizeof(double);
  }
}

const Rows rows = {
    {"PRMT_MSP_BufSize_f64", createMatrix},
    {"PRMT_MSP_Init_f64", createMatrix},
    {"PRMT_MSP_Mul_*", multiply},
    {"PRMT_MSP_Add_*", add},
    {"PRMT_MSP_Trans_f64", transpose},
    {"PRMT_MSP_MulVec_f64", timesVector},
    {"PRMT_MSP_TransMulVec_f64", timesVector},
    {"PRMT_MSP_MspToMat_f64", dense},
    {"PRMT_MSP_*", changeMatrix},
};

}  // namespace
}  // namespace dax::hostile
