#include "measure/region/contour.h"

namespace dax {
namespace {

// The bit of DomainBitmap::neighbours() for each code.
constexpr uint8_t kNeighbourBit[8] = {4, 7, 6, 5, 3, 0, 1, 2};

// The last background pixel seen lies one code anticlockwise of the first candidate: the search starts at code - 1
// after an axial step, at code - 2 after a diagonal one.
constexpr uint8_t nextCode(uint32_t neighbours, uint32_t entry) {
  const uint32_t first = entry % 2 == 0 ? entry + 7 : entry + 6;
  for (uint32_t i = 0; i < 8; ++i) {
    const uint32_t code = (first + i) % 8;
    if (neighbours >> kNeighbourBit[code] & 1) return static_cast<uint8_t>(code);
  }
  return kNoStep;
}

constexpr ChainTable makeTable() {
  ChainTable table = {};
  for (uint32_t neighbours = 0; neighbours < 256; ++neighbours) {
    for (uint32_t entry = 0; entry < 8; ++entry) table[neighbours][entry] = nextCode(neighbours, entry);
  }
  return table;
}

}  // namespace

constinit const ChainTable kNextCode = makeTable();

}  // namespace dax
