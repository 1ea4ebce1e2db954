// The same lines of text for both.
#pragma once

#include <cstdint>

namespace bench {

constexpr const char* kText = "Part 4711: width 12.53 mm, angle 45.2, OK";
constexpr int32_t kFirstLine = 40, kLineStep = 100;  // ten lines on an image of 1080 rows

}  // namespace bench
