// What the library and the peer have in common.
#pragma once

#include <cstdint>

namespace bench {

constexpr uint32_t kLevel = 128;
constexpr uint32_t kBandLow = 64;
constexpr uint32_t kBandHigh = 191;
constexpr int32_t kSoftLow = 64;
constexpr int32_t kSoftHigh = 191;
constexpr uint32_t kSoftLevels = 15;

}  // namespace bench
