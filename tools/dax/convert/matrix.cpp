// Channels mixed by a matrix, and taken apart by its inverse.
#include <cmath>
#include <optional>

#include "base/text.h"
#include "convert/sample_call.h"
#include "daxi/colour_matrix.h"

namespace dax::tool {
namespace {

using Numbers = std::vector<double>;

constexpr SampleCall<const double*> kMatrix = {DAXI_ColourMatrix_8u_C3R, DAXI_ColourMatrix_16u_C3R,
                                               DAXI_ColourMatrix_32f_C3R};

ConvertStep mix(const std::string& step, Numbers matrix) {
  for (const ptrdiff_t end : {3, 7, 11}) matrix.insert(matrix.begin() + end, 0);  // nothing is added
  return [step, matrix](const Samples& samples) {
    requireChannels(samples, step, 3);
    return callOnPixels(kMatrix, step, samples, 3, matrix.data());
  };
}

// Of a 3 x 3 matrix: cofactors over the determinant. None where that is too small for the shares to mean anything.
std::optional<Numbers> inverseOf(const Numbers& m) {
  const auto at = [&](size_t row, size_t column) { return m[3 * (row % 3) + column % 3]; };
  Numbers inverse(9);
  double determinant = 0, size = 0;
  for (size_t i = 0; i < 3; ++i) {
    for (size_t k = 0; k < 3; ++k) {
      inverse[3 * k + i] = at(i + 1, k + 1) * at(i + 2, k + 2) - at(i + 1, k + 2) * at(i + 2, k + 1);
      size += at(i, k) * at(i, k);
    }
    determinant += m[3 * i] * inverse[i];
  }
  if (!(std::fabs(determinant) > 1e-6 * size * std::sqrt(size))) return std::nullopt;
  for (double& each : inverse) each /= determinant;
  return inverse;
}

ConvertStep parseMatrix(std::string_view text) {
  const auto matrix = parseNumbers(text, 9);
  return matrix ? mix("--matrix", *matrix) : ConvertStep{};
}

ConvertStep parseUnmix(std::string_view text) {
  const auto mixture = parseNumbers(text, 9);
  const auto inverse = mixture ? inverseOf(*mixture) : std::nullopt;
  return inverse ? mix("--unmix", *inverse) : ConvertStep{};
}

const ConvertRegistration matrixRegistration({205, "--matrix", "M", "nine numbers with commas",
                                              "a matrix times red, green, blue: nine numbers, row by row, a\n"
                                              "row for each channel of the result",
                                              parseMatrix});
const ConvertRegistration unmixRegistration({206, "--unmix", "M",
                                             "nine numbers with commas, a matrix that has an inverse",
                                             "how much there is of three colours that lie over each other:\n"
                                             "the inverse of --matrix, whose columns are these colours, each\n"
                                             "as red, green and blue of 0..1",
                                             parseUnmix});

}  // namespace
}  // namespace dax::tool
