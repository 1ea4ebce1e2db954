// All functions of one matrix in one form, for what holds of all: how they treat scales, odd numbers and precision.
#pragma once

#include "tests/optim/matrix/matrix_oracle.h"

namespace dax::test {

// What a call wrote: numbers that grow with the matrix to the power halfPower / 2.
template <class T>
struct Part {
  int halfPower;
  std::vector<T> numbers;
};

template <class T>
struct Outcome {
  DaxStatus status = DAX_STS_FAILURE;
  std::vector<Part<T>> parts = {};
  std::vector<int32_t> integers = {};

  T* part(size_t i) { return parts[i].numbers.data(); }
};

template <class T>
struct Operation {
  const char* name;
  Outcome<T> (*run)(Dense<T>& a);  // of n x n, positive definite
};

constexpr int32_t kUntouched = 3;

// The outcome of a call with outputs of these lengths and powers, which `call` makes.
template <class T, class Call>
Outcome<T> outcome(std::initializer_list<std::pair<int, int32_t>> outputs, int32_t integers, const Call& call) {
  Outcome<T> result;
  for (const auto& [halfPower, count] : outputs) {
    result.parts.push_back({halfPower, std::vector<T>(size_t(count), T(kUntouched))});
  }
  result.integers.assign(size_t(integers), kUntouched);
  result.status = call(result);
  return result;
}

// A right-hand side of two columns.
template <class T>
Dense<T> twoColumns(int32_t n) {
  Dense<T> b(n, 2);
  b.fill([](int32_t i, int32_t j) { return (i * 5 + j * 3) % 7 - 3; });
  return b;
}

template <class T>
std::vector<Operation<T>> operations() {
  return {
      {"LU",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(LU_BufferSize), n);
         return outcome<T>({{0, n * n}, {2, n * n}}, n, [&](Outcome<T>& to) {
           const DaxStatus status = PRMT_MAT(LU)(a.data(), a.step, to.part(0), n, to.integers.data(), n, work.data());
           // L stays, U becomes the second part.
           for (int32_t i = 0; i < n && status == DAX_STS_OK; ++i) {
             T *const lower = to.part(0) + i * n, *const upper = to.part(1) + i * n;
             std::fill(upper, upper + i, T(0));
             std::copy(lower + i, lower + n, upper + i);
             std::fill(lower + i, lower + n, T(0));
           }
           return status;
         });
       }},
      {"Cholesky",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(Cholesky_BufferSize), n);
         return outcome<T>({{1, n * n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(Cholesky)(a.data(), a.step, to.part(0), n, n, work.data());
         });
       }},
      {"LDLT",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(LDLT_BufferSize), n);
         return outcome<T>({{0, n * n}, {2, n}, {2, n}}, n, [&](Outcome<T>& to) {
           return PRMT_MAT(LDLT)(a.data(), a.step, to.part(0), n, to.part(1), to.part(2), to.integers.data(), n,
                                 work.data());
         });
       }},
      {"QR",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(QR_BufferSize), n, n);
         return outcome<T>({{0, n * n}, {2, n * n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(QR)(a.data(), a.step, to.part(0), n, to.part(1), n, n, n, work.data());
         });
       }},
      {"QRPivot",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(QRPivot_BufferSize), n, n);
         return outcome<T>({{0, n * n}, {2, n * n}}, n + 1, [&](Outcome<T>& to) {
           int32_t* const integers = to.integers.data();
           return PRMT_MAT(QRPivot)(a.data(), a.step, to.part(0), n, to.part(1), n, integers, integers + n, n, n,
                                    work.data());
         });
       }},
      {"SVD",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(SVD_BufferSize), n, n);
         return outcome<T>({{0, n * n}, {2, n}, {0, n * n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(SVD)(a.data(), a.step, to.part(0), n, to.part(1), to.part(2), n, n, n, 0, work.data());
         });
       }},
      {"EigSym",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(EigSym_BufferSize), n);
         return outcome<T>({{2, n}, {0, n * n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(EigSym)(a.data(), a.step, to.part(0), to.part(1), n, n, work.data());
         });
       }},
      {"Solve",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         const Dense<T> b = twoColumns<T>(n);
         auto work = workFor(PRMT_MAT(Solve_BufferSize), n, 2);
         return outcome<T>({{-2, n * 2}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(Solve)(a.data(), a.step, b.data(), 2, to.part(0), 2, n, 2, work.data());
         });
       }},
      {"Inverse",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(Inverse_BufferSize), n);
         return outcome<T>({{-2, n * n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(Inverse)(a.data(), a.step, to.part(0), n, n, work.data());
         });
       }},
      {"Det",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(Det_BufferSize), n);
         return outcome<T>({{0, 1}}, 1, [&](Outcome<T>& to) {
           return PRMT_MAT(Det)(a.data(), a.step, to.part(0), to.integers.data(), n, work.data());
         });
       }},
      {"Rcond",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(Rcond_BufferSize), n);
         return outcome<T>({{0, 1}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(Rcond)(a.data(), a.step, to.part(0), n, work.data());
         });
       }},
      {"LeastSquares",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         const Dense<T> b = twoColumns<T>(n);
         auto work = workFor(PRMT_MAT(LeastSquares_BufferSize), n, n, 2);
         return outcome<T>({{-2, n * 2}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(LeastSquares)(a.data(), a.step, b.data(), 2, to.part(0), 2, n, n, 2, work.data());
         });
       }},
      {"WeightedLS",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         const Dense<T> b = twoColumns<T>(n);
         std::vector<T> weights(size_t(n), T(2));
         weights[0] = T(0.25);
         auto work = workFor(PRMT_MAT(WeightedLS_BufferSize), n, n, 2);
         return outcome<T>({{-2, n * 2}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(WeightedLS)(a.data(), a.step, weights.data(), b.data(), 2, to.part(0), 2, n, n, 2,
                                       work.data());
         });
       }},
      {"ConstrainedLS",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         // The right-hand side grows with the matrix, so that x does not.
         const T one = 1;
         std::vector<T> right(size_t(n), a(0, 0)), c(size_t(n), T(1));
         auto work = workFor(PRMT_MAT(ConstrainedLS_BufferSize), n, n, 1);
         return outcome<T>({{0, n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(ConstrainedLS)(a.data(), a.step, right.data(), c.data(), n, &one, to.part(0), n, n, 1,
                                          work.data());
         });
       }},
      {"MinNorm",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         const Dense<T> b = twoColumns<T>(n);
         auto work = workFor(PRMT_MAT(MinNorm_BufferSize), n, n, 2);
         return outcome<T>({{-2, n * 2}}, 1, [&](Outcome<T>& to) {
           return PRMT_MAT(MinNorm)(a.data(), a.step, b.data(), 2, to.part(0), 2, to.integers.data(), n, n, 2,
                                    work.data());
         });
       }},
      {"PInv",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(PInv_BufferSize), n, n);
         return outcome<T>({{-2, n * n}}, 1, [&](Outcome<T>& to) {
           return PRMT_MAT(PInv)(a.data(), a.step, to.part(0), n, to.integers.data(), n, n, work.data());
         });
       }},
      {"Homogeneous",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(Homogeneous_BufferSize), n, n);
         return outcome<T>({{0, n}, {2, 1}, {0, 1}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(Homogeneous)(a.data(), a.step, to.part(0), to.part(1), to.part(2), n, n, work.data());
         });
       }},
      {"NullSpace",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(NullSpace_BufferSize), n, n);
         return outcome<T>({{0, n * n}, {0, 1}}, 1, [&](Outcome<T>& to) {
           return PRMT_MAT(NullSpace)(a.data(), a.step, to.part(0), n, to.integers.data(), to.part(1), n, n,
                                      work.data());
         });
       }},
      {"TotalLS",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         const std::vector<T> right(size_t(n), a(0, 0));
         auto work = workFor(PRMT_MAT(TotalLS_BufferSize), n, n);
         return outcome<T>({{0, n}, {2, 1}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(TotalLS)(a.data(), a.step, right.data(), to.part(0), to.part(1), n, n, work.data());
         });
       }},
      {"EigSymGen",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         Dense<T> b(n, n);
         b.fill([](int32_t i, int32_t j) { return i == j ? 4 : 1; });
         auto work = workFor(PRMT_MAT(EigSymGen_BufferSize), n);
         return outcome<T>({{2, n}, {0, n * n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(EigSymGen)(a.data(), a.step, b.data(), n, to.part(0), to.part(1), n, n, work.data());
         });
       }},
      {"EigGeneral",
       [](Dense<T>& a) {
         const int32_t n = a.rows;
         auto work = workFor(PRMT_MAT(EigGeneral_BufferSize), n);
         return outcome<T>({{2, n}, {2, n}}, 0, [&](Outcome<T>& to) {
           return PRMT_MAT(EigGeneral)(a.data(), a.step, to.part(0), to.part(1), n, work.data());
         });
       }},
  };
}

// Positive definite, of whole numbers.
inline Matrix wholeDefinite(int32_t n) {
  Random random(uint64_t(n) + 1);
  const Matrix root = matrixOf(n, n, [&](int32_t i, int32_t j) { return random.below(3) - 1 + 2 * (i == j); });
  const Matrix square = root * transposed(root);
  return matrixOf(n, n, [&](int32_t i, int32_t j) { return square(i, j) + (i == j); });
}

}  // namespace dax::test
