// The heads of PNM and PFM files: words between blanks, and comments from # to the end of the line.
#pragma once

#include "image/file/image_file.h"

namespace dax {

inline bool isBlank(int32_t c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// A word of at most Room - 1 characters and what ends it, which is read as well. `length` 0: the file ends before it, or in it
// when `end` is below 0; above Room - 1: too long.
template <int32_t Room>
struct Word {
  char text[Room];
  int32_t length = 0;
  int32_t end = -1;

  void read(ByteSource& source) {
    int32_t c = source.next();
    while (isBlank(c) || c == '#') {
      while (c == '#') c = skipComment(source);
      if (isBlank(c)) c = source.next();
    }
    for (length = 0; c >= 0 && !isBlank(c) && length < Room; c = source.next()) text[length++] = static_cast<char>(c);
    end = c;
  }

 private:
  // The end of the line, or of the file.
  static int32_t skipComment(ByteSource& source) {
    int32_t c = source.next();
    while (c >= 0 && c != '\n' && c != '\r') c = source.next();
    return c;
  }
};

// A number without a sign, and what ends it: cut short, or no number up to `max`.
inline DaxStatus readCount(ByteSource& source, int64_t max, int64_t* value) {
  Word<20> word;
  word.read(source);
  DAX_REQUIRE(word.length < 20, DAX_STS_DATA_RANGE);
  *value = 0;
  for (int32_t i = 0; i < word.length; ++i) {
    DAX_REQUIRE(word.text[i] >= '0' && word.text[i] <= '9', DAX_STS_DATA_RANGE);
    *value = *value * 10 + (word.text[i] - '0');
    DAX_REQUIRE(*value <= max, DAX_STS_DATA_RANGE);
  }
  // The end of the file may have cut a number.
  DAX_REQUIRE(word.length > 0 && word.end >= 0, DAX_STS_FILE_READ);
  return DAX_STS_OK;
}

// Writes into `text`, which has room; returns what follows.
inline char* putCount(char* text, uint32_t value) {
  char digits[10];
  int32_t count = 0;
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value > 0);
  while (count > 0) *text++ = digits[--count];
  return text;
}

}  // namespace dax
