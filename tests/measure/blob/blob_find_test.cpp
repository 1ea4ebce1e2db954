#include "measure/blob/blob_find.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/measure/blob/labeller.h"

namespace dax::test {
namespace {

using Image = TestImage<uint8_t>;

// Every pixel of every chain has its domain's label, no run could be longer, and runs stand in raster order.
::testing::AssertionResult equalsFloodFill(const Image& image, int32_t connectivity, const DaxiDomainList& list,
                                           bool classes = false) {
  const oracle::Mask mask = toMask(image);
  const oracle::Labels expected = oracle::floodFill(mask, connectivity, classes);
  if (static_cast<int32_t>(_DAXI_DomainCount(&list)) != expected.count) {
    return ::testing::AssertionFailure() << list.domainCount << " domains, not " << expected.count;
  }
  const auto goesOn = [&](int32_t x, int32_t y, int32_t value) {
    return classes ? mask.value(x, y) == value : mask.at(x, y);
  };
  std::vector<int32_t> labels(mask.pixels.size(), -1);
  uint32_t runs = 0;
  for (uint32_t d = 0; d < list.domainCount; ++d) {
    const DaxiDomain& domain = *_DAXI_SelectDomainIndex(&list, d);
    uint32_t inChain = 0, index = DAXI_RUN_END;
    for (const DomainRun* run = &domain.head;; run = &list.runs[index]) {
      const int32_t value = mask.value(run->start, run->row);
      if (run->label != d || run->cls != (classes ? value : 0) || goesOn(run->start - 1, run->row, value) ||
          goesOn(run->end + 1, run->row, value)) {
        return ::testing::AssertionFailure() << "run in row " << run->row << " of domain " << d;
      }
      for (int32_t x = run->start; x <= run->end; ++x) {
        labels[static_cast<size_t>(run->row) * mask.width + x] = static_cast<int32_t>(run->label);
      }
      ++inChain;
      if (run->next == DAXI_RUN_END) break;
      if (index != DAXI_RUN_END && run->next <= index) return ::testing::AssertionFailure() << "chain goes back";
      index = run->next;
    }
    const bool lastFits = index == DAXI_RUN_END || index == domain.last;
    if (inChain != domain.runCount || !lastFits)
      return ::testing::AssertionFailure() << "domain " << d << " miscounted";
    runs += inChain;
  }
  if (runs != list.runCount) return ::testing::AssertionFailure() << "a run belongs to no domain";
  return labels == expected.of ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "labels differ";
}

// All images of up to 4 x 5 pixels: every way in which runs can meet, with tables that cannot be smaller.
TEST(BlobFind, AllSmallImages) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {5, 1}, {1, 5}, {2, 2}, {3, 3}, {3, 5}, {5, 3}, {4, 4}, {5, 4}, {4, 5}}) {
    Image image(size);
    const int32_t pixels = size.width * size.height;
    const int32_t stride = pixels == 20 ? 7 : 1;  // a share of the largest ones
    Labeller label4(size, 4), label8(size, 8);
    for (int32_t code = 0; code < 1 << pixels; code += stride) {
      image.fill([&](int32_t x, int32_t y) { return code >> (y * size.width + x) & 1 ? 1 + x : 0; });
      const int32_t isa = code % 2 ? DAX_ISA_NEON : DAX_ISA_PORTABLE;
      ASSERT_TRUE(equalsFloodFill(image, 4, label4(image, isa))) << size.width << " x " << size.height << " " << code;
      ASSERT_TRUE(equalsFloodFill(image, 8, label8(image, isa))) << size.width << " x " << size.height << " " << code;
    }
  }
}

// Random masks of several densities over ragged widths; both kernels, any old contents of the memory.
TEST(BlobFind, RaggedWidths) {
  Random random(9);
  for (int32_t width = 1; width <= 330; width += width < 140 ? 1 : 19) {
    Image image({width, 9}, width % 4, kGuards[width % 2]);
    const int32_t density = 1 + random.below(9);
    image.fill([&](int32_t, int32_t) { return random.below(10) < density ? 1 + random.below(255) : 0; });
    for (const int32_t connectivity : {4, 8}) {
      for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
        Labeller label(image.size(), connectivity, static_cast<uint8_t>(width));
        ASSERT_TRUE(equalsFloodFill(image, connectivity, label(image, isa))) << width << " code " << isa;
      }
    }
  }
}

// Shapes that need many labels, many merges or many runs, up to the largest side.
TEST(BlobFind, HardShapes) {
  struct Shape {
    const char* name;
    DaxiSize size;
    bool (*at)(int32_t x, int32_t y, DaxiSize size);
    int32_t domains4, domains8;
  };
  const Shape shapes[] = {
      {"checkerboard", {65536, 3}, [](int32_t x, int32_t y, DaxiSize) { return (x + y) % 2 == 0; }, 98304, 1},
      {"grid of dots",
       {301, 201},
       [](int32_t x, int32_t y, DaxiSize) { return x % 2 == 0 && y % 2 == 0; },
       15251,
       15251},
      {"comb", {4001, 50}, [](int32_t x, int32_t y, DaxiSize s) { return x % 2 == 0 || y == s.height - 1; }, 1, 1},
      {"comb, closed above", {4001, 50}, [](int32_t x, int32_t y, DaxiSize) { return x % 2 == 0 || y == 0; }, 1, 1},
      {"one full row", {65536, 1}, [](int32_t, int32_t, DaxiSize) { return true; }, 1, 1},
      {"one dotted row", {65536, 1}, [](int32_t x, int32_t, DaxiSize) { return x % 2 == 0; }, 32768, 32768},
      {"one column", {1, 65536}, [](int32_t, int32_t y, DaxiSize) { return y % 3 != 2; }, 21846, 21846},
      {"nested rings",
       {200, 200},
       [](int32_t x, int32_t y, DaxiSize s) {
         return std::min({x, y, s.width - 1 - x, s.height - 1 - y}) % 2 == 0;
       },
       50,
       50},
      {"empty", {100, 100}, [](int32_t, int32_t, DaxiSize) { return false; }, 0, 0},
  };
  for (const Shape& shape : shapes) {
    Image image(shape.size);
    image.fill([&](int32_t x, int32_t y) { return shape.at(x, y, shape.size) ? 255 : 0; });
    for (const int32_t connectivity : {4, 8}) {
      Labeller label(shape.size, connectivity);
      const DaxiDomainList& list = label(image, DAX_ISA_NEON);
      EXPECT_EQ(static_cast<int32_t>(list.domainCount), connectivity == 4 ? shape.domains4 : shape.domains8)
          << shape.name;
      EXPECT_TRUE(equalsFloodFill(image, connectivity, list)) << shape.name;
    }
  }
}

// Labels an image of classes in memory of exactly the queried sizes.
const DaxiDomainList& labelClasses(const Image& image, int32_t connectivity, int32_t isa, GuardedBuffer<uint8_t>& model,
                                   GuardedBuffer<uint8_t>& buffer) {
  return *findClassDomains(image.data(), image.step(), image.size(), connectivity, model.data(), buffer.data(), isa);
}

// All images of 4 x 3 pixels with three values, and ragged random ones; every pixel may be a domain of its own.
TEST(BlobFindClasses, SmallAndRaggedImages) {
  const auto check = [](const Image& image, int32_t isa) {
    uint64_t modelBytes = 0, bufferBytes = 0;
    ASSERT_EQ(DAXI_BlobFindMultiClsModelSize_8u(image.size(), &modelBytes), DAX_STS_OK);
    ASSERT_EQ(DAXI_BlobFindMultiClsBufferSize_8u(image.size(), &bufferBytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> model(modelBytes), buffer(bufferBytes);
    for (const int32_t connectivity : {4, 8}) {
      ASSERT_TRUE(equalsFloodFill(image, connectivity, labelClasses(image, connectivity, isa, model, buffer), true));
    }
  };
  Image small({4, 3});
  for (int32_t code = 0; code < 531441; code += 31) {  // 3^12
    int32_t rest = code;
    small.fill([&](int32_t, int32_t) { return std::exchange(rest, rest / 3) % 3; });
    ASSERT_NO_FATAL_FAILURE(check(small, code % 2 ? DAX_ISA_NEON : DAX_ISA_PORTABLE)) << code;
  }
  Random random(21);
  for (int32_t width = 1; width <= 210; width += width < 70 ? 1 : 7) {
    Image image({width, 11}, width % 3, kGuards[width % 2]);
    const int32_t values = 2 + random.below(5);
    image.fill([&](int32_t, int32_t) { return random.below(3) ? 200 : random.below(values); });
    for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) ASSERT_NO_FATAL_FAILURE(check(image, isa)) << width;
  }
  Image distinct({64, 40});
  distinct.fill([](int32_t x, int32_t y) { return 1 + (x * 7 + y * 13) % 255; });
  ASSERT_NO_FATAL_FAILURE(check(distinct, DAX_ISA_NEON));
}

// Models of the library's own: the same lists; one that is kept serves images of any size in any order.
TEST(BlobModels, SameListsAsInCallersMemory) {
  DaxiBlobModel* kept = nullptr;
  Random random(5);
  for (int round = 0; round < 40; ++round) {
    Image image({1 + random.below(200), 1 + random.below(90)});
    const int32_t density = random.below(11);
    image.fill([&](int32_t, int32_t) { return random.below(10) < density ? 255 : 0; });
    image.remember();
    const int32_t connectivity = round % 2 ? 4 : 8;
    DaxiBlobModel* own = nullptr;
    const DaxiDomainList *ownList = nullptr, *keptList = nullptr;
    ASSERT_EQ(DAXI_BlobFindV2_8u_C1IR(image.data(), image.step(), image.size(), connectivity, &own, &ownList),
              DAX_STS_OK);
    ASSERT_EQ(DAXI_BlobFindV3_8u_C1IR(image.data(), image.step(), image.size(), connectivity, &kept, &keptList),
              DAX_STS_OK);
    EXPECT_TRUE(equalsFloodFill(image, connectivity, *ownList)) << round;
    EXPECT_TRUE(equalsFloodFill(image, connectivity, *keptList)) << round;
    EXPECT_TRUE(image.untouched());
    EXPECT_EQ(DAXI_BlobFindV2DestroyModel_8u(&own), DAX_STS_OK);
    EXPECT_EQ(own, nullptr);
    EXPECT_EQ(DAXI_BlobFindV2DestroyModel_8u(&own), DAX_STS_OK);
  }
  EXPECT_EQ(DAXI_BlobFindV3DestroyModel_8u(&kept), DAX_STS_OK);
  EXPECT_EQ(DAXI_BlobFindV3DestroyModel_8u(&kept), DAX_STS_OK);
}

TEST(BlobFind, ListAccess) {
  EXPECT_EQ(_DAXI_DomainCount(nullptr), 0u);
  EXPECT_EQ(_DAXI_SelectDomainIndex(nullptr, 0), nullptr);
  Image image({3, 1});
  image.fill([](int32_t x, int32_t) { return x != 1; });
  Labeller label(image.size(), 8);
  const DaxiDomainList& list = label(image, DAX_ISA_NEON);
  EXPECT_EQ(_DAXI_SelectDomainIndex(&list, 1)->head.start, 2);
  EXPECT_EQ(_DAXI_SelectDomainIndex(&list, 2), nullptr);
}

}  // namespace
}  // namespace dax::test
