// Payloads that are shorter or longer than the image.
#include <sys/resource.h>

#include "tests/pcl/file/range_file_fixture.h"

namespace dax::test {
namespace {

using oracle::chunk;

// Memory beyond a short payload is 0 where it is new, and not touched where the record has it; sides of a gigabyte of
// colour behind one byte commit no memory.
TEST_F(RangeFile, ShortColourTouchesNoMoreThanItFills) {
  Read read;
  save(chunk(colour, colourPayload(32767, 32767, 201, "c")));
  rusage before, after;
  getrusage(RUSAGE_SELF, &before);
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  getrusage(RUSAGE_SELF, &after);
#ifdef __SANITIZE_ADDRESS__
  constexpr int64_t kShadow = int64_t{3} * 32767 * 32767 / 8 / 1024;  // which the sanitizer fills for every block
#else
  constexpr int64_t kShadow = 0;
#endif
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 50000 + kShadow);  // KiB
  EXPECT_EQ(static_cast<char*>(read.record.colour.owner[0])[32767], 0);

  Read twice;
  save(chunk(colour, colourPayload(2, 2, 200, "rrrrggggbbbb")) + chunk(mask, "mmmm") + chunk(height, packed(2)) +
       chunk(width, packed(2)));
  ASSERT_EQ(twice.from(path_), DAX_STS_OK);
  save(chunk(colour, colourPayload(2, 2, 200, "RGB")) + chunk(mask, "M"));
  ASSERT_EQ(twice.from(path_), DAX_STS_OK);
  EXPECT_EQ(contents(twice.record.colour, 1, 1), "Gggg");
  EXPECT_EQ(contents(twice.record.mask, 0, 1), "Mmmm");
}

// All bytes of an interleaved colour chunk are read, those beyond the image too.
TEST_F(RangeFile, LongInterleavedColour) {
  save(chunk(colour, colourPayload(2, 1, 201, "rgbrgb") + "more"));
  Read read;
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(contents(read.record.colour, 0, 1), "rgbrgb");
  EXPECT_EQ(bytesOf(read.record.colour.owner[0], 10), "rgbrgbmore");
}

// With type 1 the image of the mask slot keeps its fields, and the record's mask its memory.
TEST_F(RangeFile, TypeOneLeavesTheMaskSlot) {
  const std::string sides = chunk(height, packed(1)) + chunk(width, packed(3));
  save(chunk(type, packed(1)) + chunk(range, "values") + sides);
  Read read;
  ZurImage& image = read.record.mask.image;
  image.format = 7, image.width = 8, image.height = 9, image.step[0] = 10;
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(packed(image.format, image.width, image.height, image.step[0]), packed(7, 8, 9, 10));
  save(chunk(type, packed(1)) + chunk(mask, "mmm") + sides);
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(packed(image.format, image.width, image.height, image.step[0]), packed(7, 8, 9, 10));
  EXPECT_EQ(bytesOf(image.plane[0], 3), "mmm");
}

// A slot that was described before it got memory has all of it for the next file.
TEST_F(RangeFile, MaskOfADescribedSlot) {
  Read read;
  ZurImage& image = read.record.mask.image;
  image.format = 1, image.width = 10, image.height = 8, image.step[0] = 10;
  save(chunk(type, packed(1)) + chunk(mask, "mmm"));
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(contents(read.record.mask, 0, 1), std::string("mmm").append(77, '\0'));
  save(chunk(type, packed(0)) + chunk(range, std::string(160, 'v')) + chunk(mask, std::string(80, 'M')) +
       chunk(height, packed(8)) + chunk(width, packed(10)));
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(contents(read.record.mask, 0, 1), std::string(80, 'M'));
}

TEST_F(RangeFile, ShortMaskLeavesTheRestInvalid) {
  save(chunk(range, std::string(24, 'v')) + chunk(mask, "m") + chunk(height, packed(3)) + chunk(width, packed(4)));
  Read read;
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(contents(read.record.mask, 0, 1), std::string("m").append(11, '\0'));
}

}  // namespace
}  // namespace dax::test
