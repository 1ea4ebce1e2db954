// Vectors of four or eight numbers by the compiler's vector extension: for code whose one text serves every instruction
// set. Kernels with a NEON twin use frame/lanes.h.
#pragma once

#include <cstdint>
#include <cstring>

namespace dax {

using Float4 = float __attribute__((vector_size(16)));
using Byte4 = uint8_t __attribute__((vector_size(4)));

inline Float4 load4(const float* from) {
  Float4 v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

inline void store4(float* to, Float4 v) {
  std::memcpy(to, &v, sizeof v);
}

// Four bytes as floats.
inline Float4 load4(const uint8_t* from) {
  Byte4 bytes;
  std::memcpy(&bytes, from, sizeof bytes);
  return __builtin_convertvector(bytes, Float4);
}

using Short8 = int16_t __attribute__((vector_size(16)));
using Byte8 = uint8_t __attribute__((vector_size(8)));

// Eight bytes as 16-bit integers.
inline Short8 load8(const uint8_t* from) {
  Byte8 bytes;
  std::memcpy(&bytes, from, sizeof bytes);
  return __builtin_convertvector(bytes, Short8);
}

inline void store8(int16_t* to, Short8 v) {
  std::memcpy(to, &v, sizeof v);
}

inline float sum4(Float4 v) {
  return (v[0] + v[2]) + (v[1] + v[3]);
}

}  // namespace dax
