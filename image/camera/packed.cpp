#include "daxi/packed.h"

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "image/camera/packed_neon.h"
#include "image/camera/packed_portable.h"

namespace dax {
namespace {

template <class Format>
DaxStatus checkPacked(const void* src, const void* dst, int32_t step, int32_t packedStep, DaxiSize size) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
  DAX_REQUIRE(packedStep == 0 || packedStep >= packedBytes<Format>(size.width), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class Format>
DaxStatus unpack(const uint8_t* src, int32_t packedStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE_OK(checkPacked<Format>(src, dst, dstStep, packedStep, size));
  auto* const row = usesNeon(currentIsa()) ? neon::unpackRow<Format> : portable::unpackRow<Format>;
  for (int32_t y = 0; y < size.height; ++y) {
    const int64_t first = packedStep == 0 ? int64_t{y} * size.width : 0;
    row(rowAt(src, packedStep, y), first, rowAt(dst, dstStep, y), size.width);
  }
  return DAX_STS_OK;
}

// Collects pixels into groups.
template <class Format>
class PackedWriter {
 public:
  explicit PackedWriter(uint8_t* to) : to_(to) {}

  void write(const uint16_t* pixels, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      group_[held_++] = pixels[i];
      if (held_ == Format::kGroup) flush();
    }
  }

  // What is missing from the last group is 0, and of its bytes only those are written that hold pixels.
  void flush() {
    std::fill(group_ + held_, group_ + Format::kGroup, uint16_t{0});
    const uint64_t bits = Format::group(group_);
    const int64_t bytes = packedBytes<Format>(held_);
    for (int64_t k = 0; k < bytes; ++k) *to_++ = static_cast<uint8_t>(bits >> (8 * k));
    held_ = 0;
  }

 private:
  uint8_t* to_;
  uint16_t group_[Format::kGroup] = {};
  int32_t held_ = 0;
};

template <class Format>
DaxStatus pack(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t packedStep, DaxiSize size) {
  DAX_REQUIRE_OK(checkPacked<Format>(src, dst, srcStep, packedStep, size));
  PackedWriter<Format> stream(dst);
  for (int32_t y = 0; y < size.height; ++y) {
    if (packedStep != 0) stream = PackedWriter<Format>(rowAt(dst, packedStep, y));
    stream.write(rowAt(src, srcStep, y), size.width);
    if (packedStep != 0) stream.flush();
  }
  if (packedStep == 0) stream.flush();
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_PACKED(NAME, FORMAT)                                                                                  \
  DaxStatus DAXI_Unpack##NAME##_8u16u_C1R(const uint8_t* src, int32_t packedStep, uint16_t* dst, int32_t dstStep, \
                                          DaxiSize size) {                                                        \
    return dax::unpack<FORMAT>(src, packedStep, dst, dstStep, size);                                              \
  }                                                                                                               \
  DaxStatus DAXI_Pack##NAME##_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t packedStep,   \
                                        DaxiSize size) {                                                          \
    return dax::pack<FORMAT>(src, srcStep, dst, packedStep, size);                                                \
  }
DAX_PACKED(Mono10p, dax::BitStream<10>)
DAX_PACKED(Mono12p, dax::BitStream<12>)
DAX_PACKED(Mono10Packed, dax::GigEPairs<10>)
DAX_PACKED(Mono12Packed, dax::GigEPairs<12>)
#undef DAX_PACKED
