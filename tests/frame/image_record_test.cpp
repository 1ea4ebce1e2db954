#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <vector>

#include "dax/image.h"
#include "zur.h"

namespace dax::test {
namespace {

// A format by its least steps as functions of the width; 'e' in parity: the side must be even.
struct Format {
  std::vector<int> steps;  // in half widths
  const char* parity;
};

// Written from the documented tables, one code at a time.
std::map<uint32_t, Format> formats(bool library) {
  std::map<uint32_t, Format> result;
  const auto add = [&](std::initializer_list<uint32_t> codes, std::vector<int> steps, const char* parity = "--") {
    for (const uint32_t code : codes) result[code] = {steps, parity};
  };
  add({1, 2, 3}, {2});
  add({100, 101}, {2, 1, 1}, "ee");
  add({102}, {2, 2}, "ee");
  add({103}, {2, 1, 1}, "e-");
  add({104, 106, 107}, {4});
  add({105, 200}, {2, 2, 2});
  add({201}, {6});
  add({202, 204}, {2, 2, 2, 2});
  add({203, 205}, {8});
  for (uint32_t code = 300; code <= 307; ++code) add({code}, {2});
  if (!library) return result;
  add({4, 5, 6, 9, 10}, {2});
  add({109}, {2, 2}, "ee");
  add({206, 210, 216}, {2, 2, 2});
  add({207, 211, 217}, {6});
  add({208, 212, 218}, {2, 2, 2, 2});
  add({209, 213, 219}, {8});
  for (uint32_t code = 308; code <= 319; ++code) add({code}, {2});
  return result;
}

// One record of each kind with the same contents.
struct Records {
  ZurImage zur = {};
  DaxImage dax = {};
  void set(uint32_t format, int32_t width, int32_t height, const std::vector<int>& steps) {
    static char pixel;
    zur = {format, width, height, {}, {}};
    dax = {format, width, height, {}, {}, {}};
    for (size_t i = 0; i < steps.size(); ++i) {
      zur.step[i] = dax.step[i] = width * steps[i] / 2;
      zur.plane[i] = dax.base[i] = dax.data[i] = &pixel;
    }
  }
};

TEST(ImageRecords, EveryCodeAgainstTheTables) {
  const auto platform = formats(false), library = formats(true);
  std::vector<uint32_t> codes = {UINT32_MAX, 0x80000001u};
  for (uint32_t code = 0; code <= 400; ++code) codes.push_back(code);
  for (const uint32_t code : codes) {
    const bool inPlatform = platform.count(code) != 0, inLibrary = library.count(code) != 0;
    const Format format = inLibrary ? library.at(code) : Format{{2}, "--"};
    const auto expectAll = [&](const Records& r, int32_t zurCode, DaxStatus daxCode, const char* what) {
      EXPECT_EQ(ZUR_CheckImage(&r.zur), inPlatform ? zurCode : -8) << code << " " << what;
      EXPECT_EQ(DAX_CheckImage(&r.dax), inLibrary ? daxCode : DaxStatus{DAX_STS_IMAGE_FORMAT}) << code << " " << what;
    };
    Records r;
    r.set(code, 6, 4, format.steps);
    expectAll(r, 0, DAX_STS_OK, "good");
    r.set(code, 0, 4, format.steps);
    expectAll(r, -9, DAX_STS_IMAGE_SIZE, "no columns");
    r.set(code, 6, -1, format.steps);
    expectAll(r, -9, DAX_STS_IMAGE_SIZE, "no rows");
    r.set(code, 7, 4, format.steps);
    const bool oddWidth = format.parity[0] == 'e', oddHeight = format.parity[1] == 'e';
    expectAll(r, oddWidth ? -9 : 0, oddWidth ? DaxStatus{DAX_STS_IMAGE_SIZE} : DaxStatus{DAX_STS_OK}, "odd width");
    r.set(code, 6, 5, format.steps);
    expectAll(r, oddHeight ? -9 : 0, oddHeight ? DaxStatus{DAX_STS_IMAGE_SIZE} : DaxStatus{DAX_STS_OK}, "odd height");
    for (size_t i = 0; i < format.steps.size(); ++i) {
      r.set(code, 6, 4, format.steps);
      --r.zur.step[i], --r.dax.step[i];
      r.zur.plane[i] = r.dax.base[i] = nullptr;  // the step comes first
      expectAll(r, -10, DAX_STS_IMAGE_STEP, "step");
      ++r.zur.step[i], ++r.dax.step[i];
      expectAll(r, -11, DAX_STS_IMAGE_NULL_PLANE, "plane");
      r.dax.base[i] = r.dax.data[i];
      r.zur.plane[i] = r.dax.base[i];
      r.dax.data[i] = nullptr;
      EXPECT_EQ(DAX_CheckImage(&r.dax),
                inLibrary ? DaxStatus{DAX_STS_IMAGE_NULL_PLANE} : DaxStatus{DAX_STS_IMAGE_FORMAT});
    }
  }
  Records wide;  // four times the width does not fit 32 bits
  wide.set(203, 6, 4, {8});
  wide.zur.width = wide.dax.width = 0x40000000;
  EXPECT_EQ(ZUR_CheckImage(&wide.zur), -10);
  EXPECT_EQ(DAX_CheckImage(&wide.dax), DAX_STS_IMAGE_STEP);
}

TEST(ImageRecords, Conversion) {
  Records r;
  r.set(202, 6, 4, {2, 2, 2, 2});
  DaxImage image = {};
  ASSERT_EQ(DAX_ZurImgToDaxImg(&r.zur, &image), DAX_STS_OK);
  EXPECT_EQ(std::memcmp(&image, &r.dax, sizeof(image)), 0);
  r.zur.format = 0;  // tolerated here, refused by the library's check
  ASSERT_EQ(DAX_ZurImgToDaxImg(&r.zur, &image), DAX_STS_OK);
  EXPECT_EQ(DAX_CheckImage(&image), DAX_STS_IMAGE_FORMAT);
  r.zur.format = 202, r.zur.step[3] = 1;
  EXPECT_EQ(DAX_ZurImgToDaxImg(&r.zur, &image), DAX_STS_IMAGE_STEP);
  EXPECT_EQ(image.format, 0u);
}

}  // namespace
}  // namespace dax::test
