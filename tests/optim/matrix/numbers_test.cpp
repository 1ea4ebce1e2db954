// What holds of all functions: numbers that are none are refused, scales change no bit, single precision is rounded once.
#include "tests/optim/matrix/matrix_calls.h"

namespace dax::test {
namespace {

TEST(MatrixNumbers, NanAndInfinityAreRefusedAndNothingIsWritten) {
  for (const auto& operation : operations<double>()) {
    for (const double bad : {double{NAN}, double{INFINITY}, double{-INFINITY}}) {
      for (const int32_t at : {0, 5, 17}) {
        Matrix a = wholeDefinite(6);
        a(5, at % 6) = bad;
        const Outcome<double> result = operation.run(a);
        EXPECT_EQ(result.status, DAX_STS_DATA_RANGE) << operation.name;
        for (const auto& part : result.parts) {
          for (const double each : part.numbers) ASSERT_EQ(each, kUntouched) << operation.name;
        }
        for (const int32_t each : result.integers) ASSERT_EQ(each, kUntouched) << operation.name;
      }
    }
  }
}

TEST(MatrixNumbers, PowersOfTwoChangeNothingElse) {
  for (const int32_t n : {2, 4, 7, 40}) {
    for (const auto& operation : operations<double>()) {
      Matrix a = wholeDefinite(n);
      const Outcome<double> plain = operation.run(a);
      ASSERT_EQ(plain.status, DAX_STS_OK) << operation.name << ' ' << n;
      for (const int power : {2, 1000, -700, -1066}) {
        Matrix far = scaled(a, std::ldexp(1.0, power));
        const Outcome<double> result = operation.run(far);
        ASSERT_EQ(result.status, DAX_STS_OK) << operation.name << ' ' << n;
        for (size_t k = 0; k < plain.parts.size(); ++k) {
          const auto& [halfPower, numbers] = plain.parts[k];
          for (size_t i = 0; i < numbers.size(); ++i) {
            ASSERT_EQ(result.parts[k].numbers[i], std::ldexp(numbers[i], halfPower * power / 2))
                << operation.name << ' ' << power;
          }
        }
      }
    }
  }
}

TEST(MatrixNumbers, SinglePrecisionIsRoundedOnce) {
  const auto single = operations<float>();
  const auto twice = operations<double>();
  for (const int32_t n : {3, 20}) {
    for (size_t k = 0; k < single.size(); ++k) {
      Dense<float> a(wholeDefinite(n), 1);
      Matrix same(a);
      const Outcome<float> result = single[k].run(a);
      const Outcome<double> expected = twice[k].run(same);
      ASSERT_EQ(result.status, DAX_STS_OK) << single[k].name;
      EXPECT_EQ(result.integers, expected.integers) << single[k].name;
      for (size_t p = 0; p < result.parts.size(); ++p) {
        for (size_t i = 0; i < result.parts[p].numbers.size(); ++i) {
          ASSERT_EQ(result.parts[p].numbers[i], static_cast<float>(expected.parts[p].numbers[i])) << single[k].name;
        }
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
