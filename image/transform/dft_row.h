// Transforms of long pictures of one row.
#pragma once

#include "image/transform/dft_work.h"

namespace dax {

// plan.split.first > 0. `between` has as many numbers as the row's staged length. Of a row that is no convolution
// `staged` is not used, else it has that many too. dst may be src.
template <class T>
DaxStatus transformRow(const DftPlan<T>& plan, const DftWork<T>& work, const ComplexOf<T>* src, ComplexOf<T>* dst,
                       bool backward, T scale, ComplexOf<T>* staged, ComplexOf<T>* between);

}  // namespace dax
