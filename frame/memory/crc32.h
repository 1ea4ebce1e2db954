// CRC-32 of IEEE 802.3, ITU-T V.42, PNG and ZIP: polynomial 0x04C11DB7 with its bits reversed, begun and ended with all ones.
#pragma once

#include <cstdint>

namespace dax {

// `before`: the checksum of what goes before, 0 for nothing.
uint32_t crc32(const void* data, uint64_t bytes, uint32_t before = 0);

}  // namespace dax
