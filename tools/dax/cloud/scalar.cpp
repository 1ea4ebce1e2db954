#include "cloud/scalar.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>

namespace dax::tool {
namespace {

// use(T()) for the type T of a scalar.
template <class Use>
auto withType(Scalar scalar, Use use) {
  switch (scalar) {
    case Scalar::kInt8:
      return use(int8_t());
    case Scalar::kUint8:
      return use(uint8_t());
    case Scalar::kInt16:
      return use(int16_t());
    case Scalar::kUint16:
      return use(uint16_t());
    case Scalar::kInt32:
      return use(int32_t());
    case Scalar::kUint32:
      return use(uint32_t());
    case Scalar::kFloat32:
      return use(float());
    case Scalar::kInt64:
      return use(int64_t());
    case Scalar::kUint64:
      return use(uint64_t());
    default:
      return use(double());
  }
}

template <class T>
T converted(double value) {
  if constexpr (std::numeric_limits<T>::is_integer) {
    if (!(value == value)) return 0;
    const double rounded = std::round(value);
    if (rounded <= static_cast<double>(std::numeric_limits<T>::min())) return std::numeric_limits<T>::min();
    if (rounded >= static_cast<double>(std::numeric_limits<T>::max())) return std::numeric_limits<T>::max();
    return static_cast<T>(rounded);
  } else {
    return static_cast<T>(value);
  }
}

}  // namespace

size_t bytesOf(Scalar scalar) {
  return withType(scalar, [](auto type) { return sizeof type; });
}

double loadScalar(Scalar scalar, const char* bytes) {
  return withType(scalar, [bytes](auto value) {
    std::memcpy(&value, bytes, sizeof value);
    return static_cast<double>(value);
  });
}

void storeScalar(Scalar scalar, double value, char* bytes) {
  withType(scalar, [=](auto type) {
    const auto stored = converted<decltype(type)>(value);
    std::memcpy(bytes, &stored, sizeof stored);
  });
}

void appendScalar(std::string& text, Scalar scalar, const char* bytes) {
  withType(scalar, [&](auto value) {
    std::memcpy(&value, bytes, sizeof value);
    char digits[32];
    text.append(std::begin(digits), std::to_chars(std::begin(digits), std::end(digits), value).ptr);
  });
}

}  // namespace dax::tool
