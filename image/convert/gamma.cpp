#include "daxi/gamma.h"

#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "frame/numeric/round.h"
#include "image/convert/lut.h"

namespace dax {
namespace {

constexpr double kMinGamma = 0.01, kMaxGamma = 100;

struct GammaBuffer {
  BufferLayout layout;
  BufferPiece<uint16_t> table = layout.add<uint16_t>(static_cast<uint64_t>(kLevels<uint16_t>));
};

template <class T>
void fillGammaTable(T* table, double gamma) {
  constexpr double kMax = std::numeric_limits<T>::max();
  for (int32_t v = 0; v < kLevels<T>; ++v) table[v] = roundTo<T>(kMax * elementary::pow(v / kMax, gamma));
}

template <class T>
DaxStatus checkGamma(Plane<const T> from, Plane<T> to, DaxiSize size, int32_t channels, double gamma) {
  DAX_REQUIRE_OK(checkPlanes(size, channels, from, to));
  DAX_REQUIRE(gamma >= kMinGamma && gamma <= kMaxGamma, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <int kChannels>
DaxStatus gammaCurve(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, double gamma) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkGamma(from, to, size, kChannels, gamma));
  uint8_t table[kLevels<uint8_t>];
  fillGammaTable(table, gamma);
  applyTable(from, to, size, kChannels, table);
  return DAX_STS_OK;
}

template <int kChannels>
DaxStatus gammaCurve(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size, double gamma,
                     void* buffer) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkGamma(from, to, size, kChannels, gamma));
  const GammaBuffer layout;
  uint16_t* const table = layout.table.in(buffer);
  fillGammaTable(table, gamma);
  applyTable(from, to, size, kChannels, table);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_GammaBufferSize_16u(uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  return dax::GammaBuffer{}.layout.store(bytes);
}

#define DAX_GAMMA(CHANNELS)                                                                                     \
  DaxStatus DAXI_Gamma_8u_C##CHANNELS##R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,    \
                                         DaxiSize size, double gamma) {                                         \
    return dax::gammaCurve<CHANNELS>(src, srcStep, dst, dstStep, size, gamma);                                  \
  }                                                                                                             \
  DaxStatus DAXI_Gamma_8u_C##CHANNELS##IR(uint8_t* srcDst, int32_t step, DaxiSize size, double gamma) {         \
    return dax::gammaCurve<CHANNELS>(srcDst, step, srcDst, step, size, gamma);                                  \
  }                                                                                                             \
  DaxStatus DAXI_Gamma_16u_C##CHANNELS##R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, \
                                          DaxiSize size, double gamma, void* buffer) {                          \
    return dax::gammaCurve<CHANNELS>(src, srcStep, dst, dstStep, size, gamma, buffer);                          \
  }                                                                                                             \
  DaxStatus DAXI_Gamma_16u_C##CHANNELS##IR(uint16_t* srcDst, int32_t step, DaxiSize size, double gamma,         \
                                           void* buffer) {                                                      \
    return dax::gammaCurve<CHANNELS>(srcDst, step, srcDst, step, size, gamma, buffer);                          \
  }
DAX_GAMMA(1)
DAX_GAMMA(3)
#undef DAX_GAMMA
