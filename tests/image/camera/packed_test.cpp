#include "daxi/packed.h"

#include <gtest/gtest.h>

#include "image/camera/packed_neon.h"
#include "image/camera/packed_portable.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

struct PackedFormat {
  const char* name;
  int32_t bits, bitsInStream;
  decltype(&DAXI_UnpackMono10p_8u16u_C1R) unpack;
  decltype(&DAXI_PackMono10p_16u8u_C1R) pack;
  // Where bit `bit` of pixel i lies in the stream.
  int64_t (*place)(int64_t i, int32_t bit);
};

// The lower bits of a pair lie in the byte between the upper ones.
template <int32_t bits>
int64_t placeInPair(int64_t i, int32_t bit) {
  const int64_t pair = i / 2 * 24;
  return bit < bits - 8 ? pair + 8 + i % 2 * 4 + bit : pair + i % 2 * 16 + bit - (bits - 8);
}

#define PACKED(NAME, BITS, STREAM, PLACE) \
  { #NAME, BITS, STREAM, DAXI_Unpack##NAME##_8u16u_C1R, DAXI_Pack##NAME##_16u8u_C1R, PLACE }
const PackedFormat kFormats[] = {
    PACKED(Mono10p, 10, 10, [](int64_t i, int32_t bit) { return 10 * i + bit; }),
    PACKED(Mono12p, 12, 12, [](int64_t i, int32_t bit) { return 12 * i + bit; }),
    PACKED(Mono10Packed, 10, 12, placeInPair<10>),
    PACKED(Mono12Packed, 12, 12, placeInPair<12>),
};
#undef PACKED

// Bit by bit.
std::vector<uint8_t> packedByBits(const PackedFormat& format, const uint16_t* pixels, int64_t count) {
  std::vector<uint8_t> bytes(static_cast<size_t>((count * format.bitsInStream + 7) / 8));
  for (int64_t i = 0; i < count; ++i) {
    const int32_t value = std::min<int32_t>(pixels[i], (1 << format.bits) - 1);
    for (int32_t bit = 0; bit < format.bits; ++bit) {
      const int64_t at = format.place(i, bit);
      bytes[static_cast<size_t>(at / 8)] |= static_cast<uint8_t>((value >> bit & 1) << at % 8);
    }
  }
  return bytes;
}

// Packed by its definition and unpacked again, row by row and as one stream; unused bits and bytes between rows.
TEST(Packed, ThereAndBack) {
  for (const PackedFormat& format : kFormats) {
    for (int32_t width = 1; width <= 60; ++width) {
      const DaxiSize size = {width, 1 + width % 4};
      TestImage<uint16_t> src(size), back(size, width % 3, kGuards[width % 2]);
      Random random(static_cast<uint64_t>(width));
      src.fill([&](int32_t, int32_t) { return random.below(1100 << (format.bits - 10)); });
      const auto rowBytes = static_cast<int32_t>(packedByBits(format, src.row(0), width).size());
      for (const bool runsOn : {false, true}) {
        const auto stream = packedByBits(format, src.data(), int64_t{width} * size.height);
        const DaxiSize packedSize =
            runsOn ? DaxiSize{static_cast<int32_t>(stream.size()), 1} : DaxiSize{rowBytes, size.height};
        TestImage<uint8_t> packed(packedSize, width % 5, kGuards[width % 2]);
        packed.randomize(7), packed.remember();
        const int32_t packedStep = runsOn ? 0 : packed.step();
        ASSERT_EQ(format.pack(src.data(), src.step(), packed.data(), packedStep, size), DAX_STS_OK);
        for (int32_t y = 0; y < packedSize.height; ++y) {
          const auto expected = runsOn ? stream : packedByBits(format, src.row(y), width);
          ASSERT_TRUE(std::equal(expected.begin(), expected.end(), packed.row(y))) << format.name << " width " << width;
        }
        ASSERT_TRUE(packed.paddingUntouched());
        back.remember();
        ASSERT_EQ(format.unpack(packed.data(), packedStep, back.data(), back.step(), size), DAX_STS_OK);
        ASSERT_TRUE(back.paddingUntouched());
        for (int32_t i = 0; i < width * size.height; ++i) {
          const int32_t expected = std::min<int32_t>(src.at(i % width, i / width), (1 << format.bits) - 1);
          ASSERT_EQ(back.at(i % width, i / width), expected) << format.name << " width " << width << " pixel " << i;
        }
      }
    }
  }
}

// Any bytes, from any pixel of the stream on: the twins agree, and nothing behind the last pixel is read.
TEST(Packed, TwinsAgree) {
  const auto compare = [](auto format) {
    using Format = decltype(format);
    for (int32_t first = 0; first < 9; ++first) {
      for (int32_t count = 0; count < 70; ++count) {
        TestImage<uint8_t> stream({static_cast<int32_t>(packedBytes<Format>(first + count)) + 1, 1});
        stream.randomize(static_cast<uint64_t>(count));
        uint16_t a[70] = {}, b[70] = {};
        portable::unpackRow<Format>(stream.data() + 1, first, a, count);
        neon::unpackRow<Format>(stream.data() + 1, first, b, count);
        ASSERT_TRUE(std::equal(a, a + 70, b)) << first << ", " << count;
      }
    }
  };
  compare(BitStream<10>{}), compare(BitStream<12>{}), compare(GigEPairs<10>{}), compare(GigEPairs<12>{});
}

TEST(Packed, BytesOfTheStandards) {
  const uint16_t twelve[2] = {0x123, 0x456}, ten[4] = {0x3FF, 0, 0x2AA, 0x155};
  uint8_t bytes[5] = {};
  DAXI_PackMono12p_16u8u_C1R(twelve, 2, bytes, 3, {2, 1});
  EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 3), (std::vector<uint8_t>{0x23, 0x61, 0x45}));
  DAXI_PackMono12Packed_16u8u_C1R(twelve, 2, bytes, 3, {2, 1});
  EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 3), (std::vector<uint8_t>{0x12, 0x63, 0x45}));
  DAXI_PackMono10p_16u8u_C1R(ten, 4, bytes, 5, {4, 1});
  EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 5), (std::vector<uint8_t>{0xFF, 0x03, 0xA0, 0x6A, 0x55}));
}

}  // namespace
}  // namespace dax::test
