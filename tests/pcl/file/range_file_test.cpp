#include "dax3dpcl/range_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "tests/pcl/file/range_file_fixture.h"
#include "tests/pcl/record/range_sample.h"
#include "zur/memory.h"

namespace dax::test {
namespace {

using oracle::chunk;
using oracle::payloadOf;

// What the writers should write.
std::string plainFile(const RangeSample& s) {
  const DAX3D_RANGE_V4& r = s.record;
  return chunk(range, bytesOf(s.values)) + chunk(mask, bytesOf(s.mask)) + chunk(scale, packed(r.scale)) +
         chunk(offset, packed(r.offset)) + chunk(height, packed(r.range.image.height)) +
         chunk(width, packed(r.range.image.width));
}

std::string fullFile(const RangeSample& s) {
  const DAX3D_RANGE_V4& r = s.record;
  const ZurImage& image = r.range.image;
  std::string file = chunk(range, bytesOf(s.values));
  if (r.mask.owner[0]) file += chunk(mask, bytesOf(s.mask));
  if (r.colour.owner[0]) {
    const uint32_t code = r.colour.image.format == 200 ? 0x2180021 : 0x2180014;
    file += chunk(colour, colourPayload(static_cast<uint32_t>(image.width), static_cast<uint32_t>(image.height), code,
                                        bytesOf(s.colour)));
  }
  return file + chunk(calib, packed(r.calib)) + chunk(scale, packed(r.scale)) + chunk(offset, packed(r.offset)) +
         chunk(type, packed(r.type)) + chunk(height, packed(image.height)) + chunk(width, packed(image.width));
}

TEST_F(RangeFile, WritersWriteTheFormat) {
  const RangeSample plain(7, 5, DAX3D_RANGE_WITH_MASK, 201);
  ASSERT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(path_.c_str(), &plain.record), DAX_STS_OK);
  EXPECT_EQ(load(), plainFile(plain));
  for (const uint32_t kind : {0u, 1u}) {
    for (const uint32_t format : {0u, 200u, 201u}) {
      const RangeSample full(7, 5, kind, format);
      ASSERT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(path_.c_str(), &full.record), DAX_STS_OK);
      EXPECT_EQ(load(), fullFile(full)) << kind << " " << format;
    }
  }
  EXPECT_EQ(filesInDirectory(), 1u);
}

TEST_F(RangeFile, RoundTripLosesNothing) {
  for (const uint32_t kind : {0u, 1u}) {
    for (const uint32_t format : {0u, 200u, 201u}) {
      const RangeSample sample(9, 4, kind, format);
      ASSERT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(path_.c_str(), &sample.record), DAX_STS_OK);
      Read read;
      ASSERT_EQ(read.from(path_), DAX_STS_OK);
      const DAX3D_RANGE_V4 &r = read.record, &s = sample.record;
      EXPECT_EQ(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&r, format != 0), DAX_STS_OK);
      EXPECT_EQ(r.type, kind);
      EXPECT_EQ(packed(r.scale, r.offset, r.calib), packed(s.scale, s.offset, s.calib));
      EXPECT_EQ(contents(r.range, 0, 2), bytesOf(sample.values));
      EXPECT_EQ(contents(r.mask, 0, 1), kind == 0 ? bytesOf(sample.mask) : "");
      EXPECT_EQ(contents(r.colour, 0, 1) + contents(r.colour, 1, 1) + contents(r.colour, 2, 1),
                format ? bytesOf(sample.colour) : "");
      EXPECT_EQ(reinterpret_cast<uintptr_t>(r.range.owner[0]) % 128, 0u);
    }
  }
}

TEST_F(RangeFile, ChunksInOtherOrdersNumbersAndForms) {
  std::array<float, 35> narrow;
  for (size_t i = 0; i < narrow.size(); ++i) narrow[i] = static_cast<float>(i) * 0.3f;
  const std::string pixels(2 * 3 * 3, 'p'),
      front = chunk(99, "unknown") + chunk(7, ""), sides = chunk(width, packed(2)) + chunk(height, packed(3)),
      values = chunk(range, "first values"), first = chunk(mask, std::string(6, 'm')),
      two = chunk(calib, packed(narrow)), picture = chunk(colour, colourPayload(2, 3, 77, pixels + "xy"));
  const std::string files[] = {
      front + values + first + two + picture + sides,
      // Of width and height the later, of others the earlier.
      values + first + picture + two + chunk(mask, "zz") + chunk(range, "other values") + chunk(width, packed(9)) +
          chunk(height, packed(-1)) + sides + front,
      first + chunk(mask, "") + chunk(colour, colourPayload(1, 1, 200, "rgb")) + two + values + picture + sides,
  };
  for (const std::string& file : files) {
    save(file);
    Read read;
    read.record.type = DAX3D_RANGE_WITH_MASK;
    read.record.scale = {1, 2, 3};
    ASSERT_EQ(read.from(path_), DAX_STS_OK);
    const DAX3D_RANGE_V4& r = read.record;
    EXPECT_EQ(packed(r.range.image.width, r.range.image.height), packed(2, 3));
    EXPECT_EQ(contents(r.range, 0, 2), *payloadOf(file, range, false));
    EXPECT_EQ(contents(r.mask, 0, 1), "mmmmmm");
    EXPECT_EQ(r.colour.image.format, payloadOf(file, colour, false)->size() == 19 ? 200u : 201u);
    EXPECT_EQ(contents(r.colour, 0, 1).substr(0, 1), r.colour.image.format == 201 ? "p" : "r");
    EXPECT_EQ(reinterpret_cast<const double*>(&r.calib)[34], double{narrow[34]});
    EXPECT_EQ(r.scale.y, 2);  // not in the file
  }
}

TEST_F(RangeFile, FilesOfNothingLoadNothing) {
  for (const std::string& file : {std::string(), std::string("1234"), std::string("1234567"), std::string(8, '\xFF')}) {
    save(file);
    Read read;
    EXPECT_EQ(read.from(path_), DAX_STS_OK);
    EXPECT_FALSE(read.record.range.owner[0] || read.record.mask.owner[0]);
    EXPECT_EQ(read.record.range.image.format, 3u);
  }
}

TEST_F(RangeFile, HostileFiles) {
  const auto sides = [](int32_t w, int32_t h) { return chunk(height, packed(h)) + chunk(width, packed(w)); };
  const auto picture = [](uint32_t w, uint32_t h, size_t bytes) {
    return chunk(colour, colourPayload(w, h, 0x2180021, std::string(bytes, 'c')));
  };
  struct Case {
    const char* name;
    std::string file;
    DaxStatus code;
  };
  const std::string none;
  const Case cases[] = {
      {"values before sides", sides(2, 1) + chunk(range, "four"), DAX_STS_FAILURE},
      {"too few values", chunk(range, "four") + sides(2, 2), DAX_STS_FAILURE},
      {"an odd byte", chunk(range, "fives") + sides(2, 1), DAX_STS_FAILURE},
      {"two negative sides", chunk(range, "ab") + sides(-1, -1), DAX_STS_IMAGE_SIZE},
      {"a product that wraps to 0", chunk(range, none) + sides(65536, 32768), DAX_STS_FAILURE},
      {"no pixels", chunk(range, none) + sides(0, 5), DAX_STS_OK},
      {"neither columns nor rows", chunk(range, none) + sides(0, 0), DAX_STS_OK},
      {"a wide row", chunk(range, std::string(65536, 'r')) + sides(32768, 1), DAX_STS_IMAGE_SIZE},
      {"the widest row", chunk(range, std::string(65534, 'r')) + sides(32767, 1), DAX_STS_OK},
      {"sides alone", sides(-1, 4), DAX_STS_IMAGE_SIZE},
      {"scale of 8 bytes", chunk(scale, "12345678"), DAX_STS_FAILURE},
      {"offset of 16 bytes", chunk(offset, "1234567812345678"), DAX_STS_FAILURE},
      {"width of 2 bytes", chunk(width, "12"), DAX_STS_FAILURE},
      {"type of 8 bytes", chunk(type, "12345678"), DAX_STS_FAILURE},
      {"calibration of 139 bytes", chunk(calib, std::string(139, 'c')), DAX_STS_FAILURE},
      {"colour without header", chunk(colour, std::string(15, 'c')), DAX_STS_FAILURE},
      {"colour of no bytes", chunk(colour, none), DAX_STS_FAILURE},
      {"colour header alone", picture(4, 4, 0), DAX_STS_OK},
      {"one byte of colour", picture(4, 4, 1), DAX_STS_OK},
      {"one byte, no pixels", picture(0, 4, 1), DAX_STS_OK},
      {"colour too wide", picture(32768, 1, 3), DAX_STS_IMAGE_SIZE},
      {"more colour than pixels", picture(4, 4, 51), DAX_STS_FAILURE},
      {"a mask of one byte", chunk(mask, "1") + sides(30, 30), DAX_STS_OK},
      {"a mask without sides", chunk(mask, "1234567"), DAX_STS_OK},
      {"a larger mask after a smaller", chunk(mask, std::string(5000, 'm')) + chunk(mask, "m") + sides(3, 3),
       DAX_STS_OK},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    save(c.file);
    Read read;
    EXPECT_EQ(read.from(path_), c.code);
    touch(read.record);
  }
}

bool isReadStatus(DaxStatus status) {
  return status == DAX_STS_OK || status == DAX_STS_FAILURE || status == DAX_STS_IMAGE_SIZE ||
         status == DAX_STS_FILE_READ;
}

TEST_F(RangeFile, EveryTruncationAndEveryCorruptedTrailer) {
  const std::string whole = fullFile(RangeSample(3, 2, DAX3D_RANGE_WITH_MASK, 200));
  for (size_t length = 0; length < whole.size(); ++length) {
    save(whole.substr(0, length));
    Read read;
    EXPECT_TRUE(isReadStatus(read.from(path_))) << length;
    touch(read.record);
  }
  for (size_t end = whole.size(); end >= 8;) {
    uint32_t size;
    std::memcpy(&size, whole.data() + end - 4, 4);
    for (size_t i = end - 8; i < end; ++i) {
      for (const int flip : {1, 2, 0x80, 0xFF}) {
        std::string bad = whole;
        bad[i] = static_cast<char>(bad[i] ^ flip);
        save(bad);
        Read read;
        EXPECT_TRUE(isReadStatus(read.from(path_))) << i;
        touch(read.record);
      }
    }
    end -= 8 + size;
  }
}

// The memory of a record is used again when it is large enough, and never written beyond.
TEST_F(RangeFile, RecordsReadTwice) {
  const RangeSample small(4, 3, DAX3D_RANGE_WITH_MASK, 201), large(5, 4, DAX3D_RANGE_WITH_MASK, 201);
  Read read;
  save(fullFile(large));
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  void* const owner = read.record.range.owner[0];
  save(fullFile(small));
  ASSERT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(read.record.range.owner[0], owner);
  EXPECT_EQ(contents(read.record.range, 0, 2), bytesOf(small.values));
  EXPECT_EQ(contents(read.record.colour, 0, 1), bytesOf(small.colour));
  save(fullFile(large));
  EXPECT_EQ(read.from(path_), DAX_STS_FAILURE);
  EXPECT_EQ(read.record.range.image.width, 4);
  EXPECT_EQ(contents(read.record.range, 0, 2), bytesOf(small.values));
  // Values of the old sides with the new width alone.
  save(chunk(range, std::string(24, 'v')) + chunk(width, packed(4)));
  EXPECT_EQ(read.from(path_), DAX_STS_FAILURE);
  // Sides without values describe memory that is there.
  for (const auto& [columns, status] : {std::pair{5, DaxStatus{DAX_STS_FAILURE}}, {3, DaxStatus{DAX_STS_OK}}}) {
    save(chunk(height, packed(3)) + chunk(width, packed(columns)));
    EXPECT_EQ(read.from(path_), status);
    EXPECT_EQ(read.record.range.image.width, status == DAX_STS_OK ? 3 : 4);
  }
  EXPECT_EQ(DAX3DPCL_UTILS_RELEASE_RANGE_V4(&read.record), DAX_STS_OK);
  EXPECT_EQ(DAX3DPCL_UTILS_RELEASE_RANGE_V4(&read.record), DAX_STS_OK);
  EXPECT_FALSE(read.record.range.owner[0] || read.record.range.image.plane[0] || read.record.mask.owner[0]);
  // Planes where there was one packed image.
  save(chunk(colour, colourPayload(4, 3, 200, std::string(36, 'p'))));
  EXPECT_EQ(read.from(path_), DAX_STS_OK);
  EXPECT_EQ(contents(read.record.colour, 2, 1), std::string(12, 'p'));
  EXPECT_EQ(DAX3DPCL_UTILS_READ_RANGE_V4(directory_.c_str(), &read.record), DAX_STS_FILE_READ);
  EXPECT_EQ(DAX3DPCL_UTILS_READ_RANGE_V4((path_ + "x").c_str(), &read.record), DAX_STS_FILE_OPEN);
}

// Each alone in a record that would do, to both writers; a mask is looked at where there is one.
TEST_F(RangeFile, WritersTakeWholeRecordsOnly) {
  using Change = void (*)(DAX3D_RANGE_V4&);
  const std::pair<Change, DaxStatus> changes[] = {
      {[](DAX3D_RANGE_V4& r) { r.range.owner[0] = nullptr; }, DAX_STS_NULL_POINTER},
      {[](DAX3D_RANGE_V4& r) { r.range.image.plane[0] = nullptr; }, DAX_STS_NULL_POINTER},
      {[](DAX3D_RANGE_V4& r) { r.mask.owner[0] = nullptr; }, DAX_STS_NULL_POINTER},
      {[](DAX3D_RANGE_V4& r) { r.range.image.format = 1; }, DAX_STS_IMAGE_FORMAT},
      {[](DAX3D_RANGE_V4& r) { r.mask.image.format = 3; }, DAX_STS_IMAGE_FORMAT},
      {[](DAX3D_RANGE_V4& r) { ++r.mask.image.width, ++r.mask.image.step[0]; }, DAX_STS_IMAGE_SIZE},
      {[](DAX3D_RANGE_V4& r) { ++r.mask.image.height; }, DAX_STS_IMAGE_SIZE},
      {[](DAX3D_RANGE_V4& r) { r.range.image.height = r.mask.image.height = 0; }, DAX_STS_IMAGE_SIZE},
      {[](DAX3D_RANGE_V4& r) { ++r.range.image.step[0]; }, DAX_STS_IMAGE_STEP},
      {[](DAX3D_RANGE_V4& r) { ++r.mask.image.step[0]; }, DAX_STS_IMAGE_STEP},
  };
  for (const auto& [change, status] : changes) {
    RangeSample sample(7, 5, DAX3D_RANGE_WITH_MASK, 201);
    change(sample.record);
    EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(path_.c_str(), &sample.record), status) << status;
    EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(path_.c_str(), &sample.record), status) << status;
  }
  EXPECT_EQ(filesInDirectory(), 0u);
}

TEST_F(RangeFile, FailedWritesLeaveTheOldFile) {
  const RangeSample sample(64, 64);
  save("the old file");
  fs::permissions(path_, fs::perms(0640));
  // A limit on the size of files, met in the middle of the values.
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit little = {5000, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
  const DaxStatus status = DAX3DPCL_UTILS_WRITE_RANGE_V4(path_.c_str(), &sample.record);
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(status, DAX_STS_FILE_WRITE);
  EXPECT_EQ(load(), "the old file");
  EXPECT_EQ(filesInDirectory(), 1u);

  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(path_.c_str(), &sample.record), DAX_STS_OK);
  EXPECT_EQ(load(), plainFile(sample));
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4("/dev/full", &sample.record), DAX_STS_FILE_WRITE);
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(directory_.c_str(), &sample.record), DAX_STS_FILE_OPEN);
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4("", &sample.record), DAX_STS_FILE_OPEN);
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4((directory_ + "/none/file").c_str(), &sample.record), DAX_STS_FILE_OPEN);
  // A link stays a link.
  const std::string link = directory_ + "/link";
  fs::create_symlink(path_, link);
  const RangeSample other(3, 3);
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(link.c_str(), &other.record), DAX_STS_OK);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(load(), plainFile(other));
}

// A path with hardly more room than the name of a temporary file takes, and a program without a standard input.
TEST_F(RangeFile, LongPathsAndTheFirstDescriptor) {
  const RangeSample sample(3, 3);
  std::string longest = directory_;
  while (longest.size() < 4050) longest += '/' + std::string(std::min<size_t>(200, 4060 - longest.size() - 1), 'd');
  fs::create_directories(fs::path(longest).parent_path());
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(longest.c_str(), &sample.record), DAX_STS_OK);
  EXPECT_EQ(fs::file_size(longest), plainFile(sample).size());
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4((longest + std::string(100, 'd')).c_str(), &sample.record),
            DAX_STS_FILE_OPEN);
  const int input = dup(0);
  close(0);
  EXPECT_EQ(DAX3DPCL_UTILS_WRITE_RANGE_V4(path_.c_str(), &sample.record), DAX_STS_OK);
  dup2(input, 0);
  close(input);
  EXPECT_EQ(load(), plainFile(sample));
}

}  // namespace
}  // namespace dax::test
