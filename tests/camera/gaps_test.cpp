#include "examples/camera/gaps.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(Gaps, CountNumbersThatNeverCame) {
  const struct {
    const char* what;
    std::vector<uint64_t> numbers;
    uint64_t lost, first, last;
  } cases[] = {
      {"none came", {}, 0, 0, 0},
      {"in order", {7, 8, 9}, 0, 7, 9},
      {"two gaps", {7, 9, 13}, 4, 7, 13},
      {"round after 65535, without a 0", {65534, 65535, 1, 2}, 0, 65534, 2},
      {"a gap across the round", {65534, 2}, 2, 65534, 2},
      {"late", {7, 9, 8, 10}, 0, 7, 10},
      {"late, across the round", {65534, 1, 65535, 2}, 0, 65534, 2},
      {"late, before the first", {8, 7, 9}, 0, 7, 9},
      {"twice", {7, 8, 9, 8, 10}, 0, 7, 10},
      {"63 back is late, 64 a camera that started anew", {1000, 1064, 1001, 1000, 1001}, 62, 1000, 1001},
      {"started anew", {5000, 5002, 1, 2}, 1, 5000, 2},
      {"more than 16 bits", {65535, 65536, 70000}, 4463, 65535, 70000},
  };
  for (const auto& each : cases) {
    live::Gaps gaps;
    for (const uint64_t number : each.numbers) gaps.see(number);
    EXPECT_EQ(gaps.lost(), each.lost) << each.what;
    EXPECT_EQ(gaps.first(), each.first) << each.what;
    EXPECT_EQ(gaps.last(), each.last) << each.what;
  }
}

TEST(Gaps, TellNumbersThatWereSeen) {
  live::Gaps gaps;
  for (const uint64_t number : {65534, 1, 65535, 2}) EXPECT_TRUE(gaps.see(number)) << number;
  for (const uint64_t number : {65534, 1, 65535, 2}) EXPECT_FALSE(gaps.see(number)) << number;
}

}  // namespace
