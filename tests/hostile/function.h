// An exported function as the driver sees it: its arguments by name and kind, and a way to call it.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "dax/types.h"

namespace dax::hostile {

enum class Kind { integer, real, size, record, function, pointer };

struct Type {
  Kind kind = Kind::record;
  size_t bytes = 0;
  bool isSigned = false;
  // Of what a pointer points to: its size, 0 for void and opaque records.
  size_t element = 0;
  bool isConst = false;
  bool isReal = false;
  // Of what a pointer to pointers points to in the end.
  size_t innerElement = 0;
  bool innerIsConst = false;
};

template <class T>
constexpr size_t sizeOrZero() {
  if constexpr (requires { sizeof(T); }) {
    return std::is_void_v<T> ? 0 : sizeof(T);
  } else {
    return 0;
  }
}
template <>
constexpr size_t sizeOrZero<void>() {
  return 0;
}
template <>
constexpr size_t sizeOrZero<const void>() {
  return 0;
}

template <class T>
constexpr Type typeOf() {
  Type type{Kind::record, sizeof(T)};
  if constexpr (std::is_integral_v<T>) {
    type = {Kind::integer, sizeof(T), std::is_signed_v<T>};
  } else if constexpr (std::is_floating_point_v<T>) {
    type = {Kind::real, sizeof(T), true};
  } else if constexpr (std::is_same_v<T, DaxiSize>) {
    type.kind = Kind::size;
  } else if constexpr (std::is_pointer_v<T>) {
    using Target = std::remove_pointer_t<T>;
    type.kind = std::is_function_v<Target> ? Kind::function : Kind::pointer;
    if constexpr (!std::is_function_v<Target>) type.element = sizeOrZero<Target>();
    type.isConst = std::is_const_v<Target>;
    using Plain = std::remove_const_t<Target>;
    type.isReal = std::is_floating_point_v<Plain>;
    if constexpr (std::is_pointer_v<Plain>) {
      type.innerElement = sizeOrZero<std::remove_pointer_t<Plain>>();
      type.innerIsConst = std::is_const_v<std::remove_pointer_t<Plain>>;
    }
  }
  return type;
}

// The bytes of one argument; records of up to 64 bytes may be passed by value.
struct Value {
  alignas(16) uint8_t bytes[64] = {};
  template <class T>
  T get() const {
    static_assert(sizeof(T) <= sizeof(bytes) && std::is_trivially_copyable_v<T>);
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }
  template <class T>
  void set(const T& value) {
    static_assert(sizeof(T) <= sizeof(bytes) && std::is_trivially_copyable_v<T>);
    std::memcpy(bytes, &value, sizeof(T));
  }
};

using Code = void (*)();

class Call;

// The next number of a type in the direction of a sign.
template <class T>
double next(double value, int sign) {
  if constexpr (std::is_integral_v<T>) {
    return value + sign;
  } else {
    return std::nextafter(static_cast<T>(value), static_cast<T>(sign * INFINITY));
  }
}

// What a contract allows; may depend on other arguments.
struct Limits {
  double low = -INFINITY, high = INFINITY;
};

// What a header tells about an argument (make_prototypes.py).
struct Said {
  const char* name;
  const char* record = "";  // the type, or what is pointed to
  int64_t elements = 0;     // of a declared array
  bool isCounted = false;   // has as many elements as the argument `count` says
  bool mayBeNull = false;
  const char* query = "";                  // tells how many bytes
  size_t alignment = 16;                   // of what has a query
  const char* inPlaceOf = "";              // may be this image
  Limits (*limits)(Call& call) = nullptr;  // of a size: of its width
  Limits (*heightLimits)(Call& call) = nullptr;
  int64_t choices[2] = {};  // where they differ: one of them
  bool isRounded = false;   // the limits are those of a sum
};

struct Argument {
  const char* name;
  Type type;
  Said said;
};

// A field of a record; its limits and its default (NaN: none) are those of its comment.
struct Field {
  const char* name;
  size_t offset, count;
  Type type;
  std::string_view record;
  Limits limits;
  double standard;
};

struct Record {
  std::string_view name;
  size_t bytes;
  std::span<const Field> fields;
};

// Null for records that no header has.
const Record* findRecord(std::string_view name);

// A check of a contract: the status of those who fail it, and the words.
struct Check {
  uint32_t code;
  std::string_view clause;
};

// All checks of a function, in the order of its contract, and the codes that the contract names anywhere.
struct Contract {
  std::string_view name;
  std::span<const Check> checks;
  std::span<const uint32_t> codes;
};

// Null where the contract names no code.
const Contract* findContract(std::string_view function);

struct Function {
  const char* name;
  std::string_view returns;  // as it is written in the header
  Code code;
  uint64_t (*invoke)(Code code, const Value* values);
  std::vector<Argument> arguments;

  bool returnsText() const { return returns == "const char*"; }
  // A status that is not 0 says that the call has refused its arguments or failed.
  bool returnsStatus() const { return returns == "DaxStatus" || returns == "int32_t"; }
};

template <class R>
uint64_t resultBits(R result) {
  if constexpr (std::is_pointer_v<R>) {
    return reinterpret_cast<uintptr_t>(result);
  } else if constexpr (std::is_floating_point_v<R>) {
    return std::bit_cast<uint64_t>(static_cast<double>(result));
  } else {
    return static_cast<uint64_t>(result);
  }
}

// The types of a function's arguments, and a way to call it.
struct Signature {
  Code code;
  std::span<const Type> types;
  uint64_t (*invoke)(Code code, const Value* values);
};

template <class... A>
inline constexpr std::array<Type, sizeof...(A)> kTypes{typeOf<A>()...};

template <class R, class... A>
uint64_t invokeAs(Code code, [[maybe_unused]] const Value* values) {
  const auto call = [&]<size_t... I>(std::index_sequence<I...>) {
    return reinterpret_cast<R (*)(A...)>(code)(values[I].template get<A>()...);
  };
  if constexpr (std::is_void_v<R>) {
    call(std::index_sequence_for<A...>{});
    return 0;
  } else {
    return resultBits(call(std::index_sequence_for<A...>{}));
  }
}

template <class R, class... A>
Signature signatureOf(R (*code)(A...)) {
  return {reinterpret_cast<Code>(code), kTypes<A...>, &invokeAs<R, A...>};
}

// Every exported function, in alphabetical order.
const std::vector<Function>& allFunctions();
const Function* findFunction(std::string_view name);

}  // namespace dax::hostile
