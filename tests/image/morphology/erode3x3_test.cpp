#include "image/morphology/erode3x3.h"

#include <gtest/gtest.h>

#include "daxi/erode3x3.h"
#include "tests/image/morphology/erode3x3_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;
using oracle::ByteImage;

ByteImage toBytes(const Image& image) {
  ByteImage bytes{image.size().width, image.size().height, {}};
  for (int32_t y = 0; y < bytes.height; ++y) {
    bytes.pixels.insert(bytes.pixels.end(), image.row(y), image.row(y) + bytes.width);
  }
  return bytes;
}

void assign(Image& image, const ByteImage& bytes) {
  image.fill([&](int32_t x, int32_t y) { return bytes.at(x, y); });
}

GuardedBuffer<uint8_t> workBuffer(DaxiSize size, Guard guard = Guard::after) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_Erode3x3BufferSize_8u(size, &bytes), DAX_STS_OK);
  return GuardedBuffer<uint8_t>(bytes, guard);
}

DaxStatus erode(const Image& src, Image& dst, int32_t iterations, GuardedBuffer<uint8_t>& buffer) {
  return DAXI_Erode3x3_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), iterations, buffer.data());
}

constexpr int32_t kCodes[] = {DAX_ISA_PORTABLE, DAX_ISA_NEON};

TEST(Erode, EveryMaskOfFourByFour) {
  Image image({4, 4});
  GuardedBuffer<uint8_t> buffer = workBuffer({4, 4});
  for (int32_t pattern = 0; pattern < 1 << 16; ++pattern) {
    ByteImage expected{4, 4, std::vector<uint8_t>(16)};
    for (size_t i = 0; i < 16; ++i) expected.pixels[i] = pattern >> i & 1 ? 255 : 0;
    const ByteImage mask = expected;
    for (int32_t iterations = 1; iterations <= 4; ++iterations) {
      expected = oracle::erode(expected, 1);
      assign(image, mask);
      ASSERT_EQ(erode(image, image, iterations, buffer), DAX_STS_OK);
      ASSERT_EQ(toBytes(image), expected) << pattern << " after " << iterations;
    }
  }
}

// Bytes other than 0 and 255 as well, sides of 1 and 2 too, separate images and in place, buffers of the queried size.
TEST(Erode, RaggedSizes) {
  Random random(1);
  for (int32_t w = 1; w <= 200; w += w < 90 ? 1 : 9) {
    const DaxiSize size{w, 1 + random.below(7)};
    const Guard guard = kGuards[w % 2];
    GuardedBuffer<uint8_t> buffer = workBuffer(size, guard);
    Image src(size, w % 3, guard);
    src.fill([&](int32_t, int32_t) { return random.below(4) ? (w % 5 ? 255 : 1 + random.below(255)) : 0; });
    for (const int32_t iterations : {1, 2, 5}) {
      const ByteImage expected = oracle::erode(toBytes(src), iterations);
      for (const int32_t isa : kCodes) {
        Image dst(size, 2, guard), same(size, 1, guard);
        dst.remember();
        _DAXI_Erode3x3_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), size, iterations, buffer.data(), isa);
        ASSERT_EQ(toBytes(dst), expected) << w << " x " << size.height << " code " << isa;
        ASSERT_TRUE(dst.paddingUntouched());
        assign(same, toBytes(src));
        _DAXI_Erode3x3_8u_C1R(same.data(), same.step(), same.data(), same.step(), size, iterations, buffer.data(), isa);
        ASSERT_EQ(toBytes(same), expected) << w << " x " << size.height << " in place, code " << isa;
      }
    }
  }
}

TEST(Erode, PassesByThemselves) {
  Random random(2);
  for (int32_t w = 1; w <= 150; ++w) {
    const DaxiSize size{w, 1 + w % 4};
    const Guard guard = kGuards[w % 2];
    Image src(size, 1, guard);
    src.fill([&](int32_t, int32_t) { return random.below(3) ? 1 + random.below(255) : 0; });
    const ByteImage expected = oracle::erodePass(toBytes(src), 1, 0);
    for (const int32_t isa : kCodes) {
      Image rows(size, 0, guard), same(size, 0, guard);
      erodeRows(src.data(), src.step(), rows.data(), rows.step(), size, isa);
      ASSERT_EQ(toBytes(rows), expected) << w;
      assign(same, toBytes(src));
      erodeRows(same.data(), same.step(), same.data(), same.step(), size, isa);
      ASSERT_EQ(toBytes(same), expected) << w << " in place";
    }
    Image columns(size, 0, guard);
    ASSERT_EQ(DAXI_ErodeCol3_8u_C1R(src.data(), src.step(), columns.data(), columns.step(), size), DAX_STS_OK);
    ASSERT_EQ(toBytes(columns), oracle::erodePass(toBytes(src), 0, 1)) << w;
  }
}

// The documented row, and a great many iterations: of an image that settles, and of one that swaps two values for ever.
TEST(Erode, Examples) {
  Image row({5, 1});
  row.fill([](int32_t x, int32_t) { return x >= 1 && x <= 3 ? 255 : 0; });
  ASSERT_EQ(DAXI_ErodeRow3_8u_C1R(row.data(), 5, row.data(), 5, row.size()), DAX_STS_OK);
  EXPECT_EQ(toBytes(row).pixels, (std::vector<uint8_t>{0, 255, 255, 0, 0}));

  Image src({90, 40}), settled(src.size()), dst(src.size());
  GuardedBuffer<uint8_t> buffer = workBuffer(src.size());
  src.fill([](int32_t x, int32_t y) { return x % 30 < 20 && y % 13 < 11 ? 255 : 0; });
  ASSERT_EQ(erode(src, settled, 64, buffer), DAX_STS_OK);
  ASSERT_EQ(erode(src, dst, INT32_MAX, buffer), DAX_STS_OK);
  EXPECT_TRUE(samePixels(dst, settled));

  // One that changes within only, where whole blocks are swept.
  Image inner({150, 30});
  inner.fill([](int32_t x, int32_t y) { return x >= 20 && x < 130 && y >= 4 && y < 26 ? 255 : 0; });
  const ByteImage eroded = oracle::erode(toBytes(inner), 9);
  for (const int32_t isa : kCodes) {
    Image same({150, 30});
    assign(same, toBytes(inner));
    GuardedBuffer<uint8_t> exact = workBuffer(same.size());
    _DAXI_Erode3x3_8u_C1R(same.data(), 150, same.data(), 150, same.size(), 9, exact.data(), isa);
    EXPECT_EQ(toBytes(same), eroded) << isa;
  }

  Image pair({2, 2});
  pair.fill([](int32_t x, int32_t) { return 1 + x; });
  ASSERT_EQ(erode(pair, pair, 1001, buffer), DAX_STS_OK);
  EXPECT_EQ(pair.at(0, 0), 2);
  EXPECT_EQ(pair.at(1, 0), 1);
}

TEST(ErodeChecks, BufferSize) {
  uint64_t bytes = 5;
  EXPECT_EQ(bytes, 5u);
  EXPECT_EQ(DAXI_Erode3x3BufferSize_8u({16, 8}, &bytes), DAX_STS_OK);
  EXPECT_EQ(bytes, 128u);
  EXPECT_EQ(DAXI_Erode3x3BufferSize_8u({INT32_MAX, INT32_MAX}, &bytes), DAX_STS_OK);
  EXPECT_EQ(bytes, (uint64_t{INT32_MAX} * INT32_MAX + 127) / 128 * 128);
}

}  // namespace
}  // namespace dax::test
