// Characters of UTF-8.
#pragma once

#include <cstdint>

#include "image/font/font.h"

namespace dax {

struct Character {
  uint32_t code;
  int32_t bytes;
  bool isFormed;
};

// The character that begins at `at`, before `end`. What is ill-formed is U+FFFD, of as many bytes as begin like a character
// ("maximal subpart", Unicode 15, section 3.9 and table 3-7): the limits of the second byte keep out overlong forms,
// surrogates and what lies beyond U+10FFFF.
inline Character decodeUtf8(const uint8_t* at, const uint8_t* end) {
  const uint32_t lead = *at;
  if (lead < 0x80) return {lead, 1, true};
  const int32_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  uint32_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  uint32_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (lead < 0xC2 || lead > 0xF4) return {kReplacement, 1, false};
  uint32_t code = lead & (0x7Fu >> length);
  for (int32_t i = 1; i < length; ++i) {
    if (at + i == end || at[i] < low || at[i] > high) return {kReplacement, i, false};
    code = code << 6 | (at[i] & 0x3F);
    low = 0x80, high = 0xBF;
  }
  return {code, length, true};
}

}  // namespace dax
