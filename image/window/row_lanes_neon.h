// Four rows in the four lanes of a vector, one vector per column: sums along four rows at a time, each in the order of
// its columns, as sums of floats require.
#pragma once

#include <cstdint>

#include "frame/dispatch.h"
#include "frame/lanes.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Four pixels as sums.
template <class Sum>
typename Lanes<Sum>::Vector loadSums(const Sum* from) {
  return Lanes<Sum>::load(from);
}

template <class Sum>
float32x4_t loadSums(const int16_t* from) {
  return vcvtq_f32_s32(vmovl_s16(vld1_s16(from)));
}

template <class T, class Sum>
struct FourRowReader {
  using L = Lanes<Sum>;
  const T* const (&rows)[4];

  typename L::Vector column(int32_t x) const {
    const Sum values[4] = {static_cast<Sum>(rows[0][x]), static_cast<Sum>(rows[1][x]), static_cast<Sum>(rows[2][x]),
                           static_cast<Sum>(rows[3][x])};
    return L::load(values);
  }
  // Columns x..x + 3.
  typename L::Four columns(int32_t x) const {
    const typename L::Four four = {{loadSums<Sum>(rows[0] + x), loadSums<Sum>(rows[1] + x), loadSums<Sum>(rows[2] + x),
                                    loadSums<Sum>(rows[3] + x)}};
    return transposed(four);
  }
};

template <class Sum>
struct FourRowWriter {
  using L = Lanes<Sum>;
  Sum* const (&rows)[4];

  void column(int32_t x, typename L::Vector v) const {
    Sum values[4];
    L::store(values, v);
    for (int i = 0; i < 4; ++i) rows[i][x] = values[i];
  }
  void columns(int32_t x, const typename L::Four& v) const {
    const auto turned = transposed(v);
    for (int i = 0; i < 4; ++i) L::store(rows[i] + x, turned.val[i]);
  }
};

}  // namespace dax::neon
#endif
