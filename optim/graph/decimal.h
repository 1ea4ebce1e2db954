// Decimal numbers in texts, the same in every locale, rounded to the nearest double.
#pragma once

#include <cstdint>

namespace dax {

constexpr int kMaxDecimal = 32;  // characters of a written number, at most

// The whole of begin..end - 1 as a finite number.
bool readDecimal(const char* begin, const char* end, double* value);

// The whole as an integer of 64 bits.
bool readInteger(const char* begin, const char* end, int64_t* value);

// The shortest of 15, 16 or 17 digits that reads back as the same finite number; returns the end.
char* writeDecimal(double value, char* to);
char* writeInteger(int64_t value, char* to);

}  // namespace dax
