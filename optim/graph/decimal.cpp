#include "optim/graph/decimal.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace dax {
namespace {

constexpr int kMaxDigits = 19;      // that fit 64 bits
constexpr int kMaxKept = 800;       // 767 tell any two doubles apart
constexpr int64_t kMaxPower = 400;  // of ten: beyond it a number is 0 or infinite
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr uint32_t kBillion = 1000000000;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// A whole number of many 32-bit words, the lowest first.
class Large {
 public:
  explicit Large(uint64_t value) : words_{static_cast<uint32_t>(value), static_cast<uint32_t>(value >> 32)}, count_(2) {
    trim();
  }

  // This times the factor and more.
  void multiply(uint32_t factor, uint32_t more) {
    uint64_t carry = more;
    for (int i = 0; i < count_; ++i) {
      carry += uint64_t{words_[i]} * factor;
      words_[i] = static_cast<uint32_t>(carry);
      carry >>= 32;
    }
    if (carry > 0) words_[count_++] = static_cast<uint32_t>(carry);
  }

  void shiftByWords(int words) {
    std::copy_backward(words_, words_ + count_, words_ + count_ + words);
    std::fill_n(words_, words, 0u);
    count_ += words;
  }

  // Returns the remainder.
  uint32_t divide(uint32_t divisor) {
    uint64_t rest = 0;
    for (int i = count_ - 1; i >= 0; --i) {
      rest = rest << 32 | words_[i];
      words_[i] = static_cast<uint32_t>(rest / divisor);
      rest %= divisor;
    }
    trim();
    return static_cast<uint32_t>(rest);
  }

  // This times 2^exponent, plus a little where `isMore`, rounded to nearest, ties to even.
  double rounded(int exponent, bool isMore) const {
    const int bits = 32 * count_ - std::countl_zero(words_[count_ - 1]);
    // Of a subnormal number fewer than 53 bits are kept.
    const int kept = std::min(DBL_MANT_DIG, bits + exponent + 1074);
    if (kept < 0) return 0;
    const int dropped = std::max(bits - kept, 0);
    uint64_t mantissa = 0;
    for (int i = bits - 1; i >= dropped; --i) mantissa = mantissa << 1 | bit(i);
    if (dropped > 0 && bit(dropped - 1)) {
      bool above = isMore || mantissa % 2 == 1;
      for (int i = 0; i < dropped - 1 && !above; ++i) above = bit(i);
      mantissa += above;
    }
    return std::ldexp(static_cast<double>(mantissa), exponent + dropped);
  }

 private:
  void trim() {
    while (count_ > 1 && words_[count_ - 1] == 0) --count_;
  }
  uint32_t bit(int i) const { return words_[i / 32] >> i % 32 & 1; }

  uint32_t words_[256];  // 800 digits, and room below for 1200 more
  int count_;
};

// The digits of a number in front of its exponent. The first kMaxKept significant ones are kept, of which the value has the
// first kMaxDigits; no more are ever needed to tell on which side of the middle of two doubles a number lies, but whether
// there is one that is not 0.
struct Digits {
  const char* begin;
  const char* end;
  uint64_t value = 0;
  int64_t kept = 0, power = 0;  // the number is the kept digits times 10^power
  bool isMore = false, any = false;

  const char* read(const char* at, const char* stop, bool behindPoint) {
    for (; at != stop && isDigit(*at); ++at) {
      any = true;
      if (kept == kMaxKept) {
        isMore |= *at != '0';
        power += !behindPoint;
        continue;
      }
      if (kept < kMaxDigits) value = 10 * value + static_cast<uint64_t>(*at - '0');
      kept += kept > 0 || *at != '0';
      power -= behindPoint;
    }
    return end = at;
  }

  Large whole() const {
    if (kept <= kMaxDigits) return Large(value);
    Large number(0);
    int64_t left = 0;
    for (const char* at = begin; left < kept; ++at) {
      if (!isDigit(*at) || (left == 0 && *at == '0')) continue;
      number.multiply(10, static_cast<uint32_t>(*at - '0'));
      ++left;
    }
    return number;
  }
};

// The digits times 10^exponent.
double scaled(const Digits& digits, int64_t exponent) {
  const int64_t power = digits.power + exponent;
  if (digits.kept == 0 || digits.kept + power < -kMaxPower) return 0;
  if (digits.kept + power > kMaxPower) return HUGE_VAL;
  if (digits.kept <= kMaxDigits && digits.value < uint64_t{1} << DBL_MANT_DIG && std::abs(power) <= 22) {
    const auto exact = static_cast<double>(digits.value);
    return power < 0 ? exact / kExactPowers[-power] : exact * kExactPowers[power];
  }
  Large number = digits.whole();
  bool isMore = digits.isMore;
  if (power >= 0) {
    for (int64_t left = power; left > 0; left -= 9) {
      number.multiply(left >= 9 ? kBillion : static_cast<uint32_t>(kExactPowers[left]), 0);
    }
    return number.rounded(0, isMore);
  }
  // Enough bits below that 64 of the quotient remain: log2(10) < 10 / 3.
  const int words = static_cast<int>(-power * 10 / 96) + 3;
  number.shiftByWords(words);
  for (int64_t left = -power; left > 0; left -= 9) {
    isMore |= number.divide(left >= 9 ? kBillion : static_cast<uint32_t>(kExactPowers[left])) != 0;
  }
  return number.rounded(-32 * words, isMore);
}

}  // namespace

bool readInteger(const char* begin, const char* end, int64_t* value) {
  const bool negative = begin != end && *begin == '-';
  const char* at = begin + (negative || (begin != end && *begin == '+'));
  if (at == end) return false;
  int64_t sum = 0;
  for (; at != end; ++at) {
    if (!isDigit(*at)) return false;
    if (__builtin_mul_overflow(sum, 10, &sum)) return false;
    if (__builtin_add_overflow(sum, negative ? '0' - *at : *at - '0', &sum)) return false;
  }
  *value = sum;
  return true;
}

bool readDecimal(const char* begin, const char* end, double* value) {
  const bool negative = begin != end && *begin == '-';
  const char* at = begin + (negative || (begin != end && *begin == '+'));
  Digits digits{at, at};
  at = digits.read(at, end, false);
  if (at != end && *at == '.') at = digits.read(at + 1, end, true);
  if (!digits.any) return false;
  int64_t exponent = 0;
  if (at != end && (*at == 'e' || *at == 'E')) {
    const char* const first = at + 1;
    const bool isSigned = first != end && (*first == '-' || *first == '+');
    if (first + isSigned == end) return false;
    if (!readInteger(first, end, &exponent)) {
      // So many digits that they do not fit: an exponent beyond all bounds, if they are digits.
      if (!std::all_of(first + isSigned, end, isDigit)) return false;
      exponent = *first == '-' ? -2 * kMaxPower : 2 * kMaxPower;
    }
    at = end;
  }
  if (at != end) return false;
  // Both are far from the ends of 64 bits but for exponents that are out of range anyway.
  exponent = std::clamp<int64_t>(exponent, INT64_MIN / 4, INT64_MAX / 4);
  const double size = scaled(digits, exponent);
  *value = negative ? -size : size;
  return std::isfinite(size);
}

char* writeInteger(int64_t value, char* to) {
  char reversed[20];
  int count = 0;
  auto size = value < 0 ? -static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  do reversed[count++] = static_cast<char>('0' + size % 10);
  while ((size /= 10) > 0);
  if (value < 0) *to++ = '-';
  while (count > 0) *to++ = reversed[--count];
  return to;
}

char* writeDecimal(double value, char* to) {
  for (int digits = 15;; ++digits) {
    // d<point>ddd...e+xx, with the locale's own point.
    char text[64];
    std::snprintf(text, sizeof text, "%.*e", digits - 1, std::fabs(value));
    const char* const mark = std::strrchr(text, 'e');
    int64_t exponent = 0;
    readInteger(mark + 1, mark + std::strlen(mark), &exponent);
    char* at = to;
    if (std::signbit(value)) *at++ = '-';
    *at++ = text[0];
    const char* const fraction = mark - (digits - 1);
    const char* last = mark;
    while (last != fraction && last[-1] == '0') --last;
    if (last != fraction) {
      *at++ = '.';
      at = std::copy(fraction, last, at);
    }
    if (exponent != 0) {
      *at++ = 'e';
      at = writeInteger(exponent, at);
    }
    double back = 0;
    if (digits == 17 || (readDecimal(to, at, &back) && back == value)) return at;
  }
}

}  // namespace dax
