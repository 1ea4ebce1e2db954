#include "daxi/equalize_hist.h"

#include <algorithm>

#include "frame/memory/work_buffer.h"
#include "image/convert/lut.h"
#include "image/convert/quotient.h"
#include "image/statistics/histogram.h"

namespace dax {
namespace {

// Counts of the levels become a table; of one level alone the identity.
template <class T>
void fillEqualizing(const uint64_t* counts, uint64_t pixels, T* table) {
  constexpr uint64_t kMax = std::numeric_limits<T>::max();
  const int32_t lowest =
      static_cast<int32_t>(std::find_if(counts, counts + kLevels<T>, [](uint64_t n) { return n > 0; }) - counts);
  const uint64_t first = counts[lowest], others = pixels - first;
  uint64_t sum = 0;
  for (int32_t v = 0; v < kLevels<T>; ++v) {
    sum += counts[v];
    table[v] = others == 0  ? static_cast<T>(v)
               : v < lowest ? T{0}
                            : static_cast<T>(roundedQuotient((sum - first) * kMax, others));
  }
}

DaxStatus equalize(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  uint8_t table[kLevels<uint8_t>];
  fillEqualizing(histogram(src, srcStep, size).data(), pixelsOf(size), table);
  applyTable(from, to, size, 1, table);
  return DAX_STS_OK;
}

struct EqualizeBuffer {
  BufferLayout layout;
  BufferPiece<uint64_t> counts = layout.add<uint64_t>(static_cast<uint64_t>(kLevels<uint16_t>));
  BufferPiece<uint16_t> table = layout.add<uint16_t>(static_cast<uint64_t>(kLevels<uint16_t>));
};

DaxStatus equalize(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size, void* buffer) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  const EqualizeBuffer at;
  uint64_t* const counts = at.counts.in(buffer);
  std::fill_n(counts, kLevels<uint16_t>, 0);
  for (int32_t y = 0; y < size.height; ++y) {
    const uint16_t* const row = rowAt(src, srcStep, y);
    for (int32_t x = 0; x < size.width; ++x) ++counts[row[x]];
  }
  fillEqualizing(counts, pixelsOf(size), at.table.in(buffer));
  applyTable<uint16_t, uint16_t>(from, to, size, 1, at.table.in(buffer));
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_EqualizeHist_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::equalize(src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_EqualizeHist_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size) {
  return dax::equalize(srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_EqualizeHist_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    void* buffer) {
  return dax::equalize(src, srcStep, dst, dstStep, size, buffer);
}

DaxStatus DAXI_EqualizeHist_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, void* buffer) {
  return dax::equalize(srcDst, step, srcDst, step, size, buffer);
}

DaxStatus DAXI_EqualizeHistBufferSize_16u(uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  return dax::EqualizeBuffer{}.layout.store(bytes);
}
