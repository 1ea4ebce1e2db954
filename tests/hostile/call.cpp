#include "tests/hostile/call.h"

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace dax::hostile {

Call::Call(const Function& f, Arena& arena, uint64_t seed)
    : random(seed),
      function(f),
      values(f.arguments.size()),
      arena_(arena),
      seed_(random.next()),
      isSet_(f.arguments.size(), false),
      spoiled_(f.arguments.size(), false),
      atLimit_(f.arguments.size(), false),
      waysDrawn_(f.arguments.size(), 0) {
  if (spoiled_.empty()) return;
  const int32_t spoils = pick({0, 0, 0, 0, 0, 1, 1, 1, 2, 2});
  for (int32_t i = 0; i < spoils; ++i) {
    spoiled_[static_cast<size_t>(random.below(static_cast<int32_t>(spoiled_.size())))] = true;
  }
  spoiledAny = spoils > 0;
}

Call::Call(const Function& f, Arena& arena, uint64_t seed, std::vector<Spoil> spoils) : Call(f, arena, seed) {
  spoiled_.assign(spoiled_.size(), false);
  for (const Spoil& each : spoils) {
    if (each.field == 0) (each.atLimit ? atLimit_ : spoiled_)[each.argument] = true;
  }
  spoiledAny = !spoils.empty();
  planned_ = std::move(spoils);
}

Call::Own::Own(Call& call, std::string_view name, uint64_t spoils) : call_(call), outer_(call.random) {
  uint64_t mixed = call.seed_ + spoils * 0x9E3779B97F4A7C15u;
  for (const char each : name) mixed = (mixed ^ static_cast<uint8_t>(each)) * 0x100000001B3u;
  call.random = Random(mixed);
}

int Call::find(std::string_view name) const {
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].name == name) return static_cast<int>(i);
  }
  return -1;
}

int Call::index(const char* name) const {
  const int i = find(name);
  if (i < 0) throw std::logic_error(std::string("no argument ") + name);
  return i;
}

bool Call::isSpoiled(const char* name) const {
  return spoiled_[static_cast<size_t>(index(name))];
}

bool Call::isSpoiled(const char* name, int32_t percent) {
  if (!isSpoiled(name)) return false;
  const Own own(*this, name, 1000 + waysDrawn_[static_cast<size_t>(index(name))]++);
  return chance(percent);
}

// --- Chance ---

int64_t Call::between(int64_t low, int64_t high) {
  const uint64_t span = static_cast<uint64_t>(high - low) + 1;
  return low + static_cast<int64_t>(random.next() % span);
}

int64_t Call::hostileInteger() {
  constexpr int64_t kLimit = std::numeric_limits<int32_t>::max();
  return pick({-kLimit - 1, -kLimit, int64_t{-65537}, int64_t{-2}, int64_t{-1}, int64_t{0}, int64_t{1}, int64_t{2},
               int64_t{255}, int64_t{256}, int64_t{32768}, int64_t{65535}, int64_t{65536}, int64_t{65537},
               int64_t{1} << 30, kLimit - 1, kLimit, static_cast<int64_t>(static_cast<int32_t>(random.next()))});
}

double Call::hostileReal() {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  return pick({std::nan(""), -std::nan(""), kInfinity, -kInfinity, 0.0, -0.0, -1.0, 1.0, double{FLT_MAX},
               -double{FLT_MAX}, double{FLT_MIN}, 1e-42, 1e30, -1e-30, 0.5, 3.5e38});
}

// --- Scalars ---

void Call::setInteger(const char* name, int64_t value) {
  switch (type(name).bytes) {
    case 1:
      return set(name, static_cast<uint8_t>(value));
    case 2:
      return set(name, static_cast<uint16_t>(value));
    case 4:
      return set(name, static_cast<uint32_t>(value));
    default:
      return set(name, value);
  }
}

int64_t Call::integer(const char* name) const {
  const bool isSigned = type(name).isSigned;
  switch (type(name).bytes) {
    case 1:
      return isSigned ? get<int8_t>(name) : get<uint8_t>(name);
    case 2:
      return isSigned ? get<int16_t>(name) : get<uint16_t>(name);
    case 4:
      return isSigned ? get<int32_t>(name) : int64_t{get<uint32_t>(name)};
    default:
      return get<int64_t>(name);
  }
}

int64_t Call::number(const char* name, int64_t low, int64_t high) {
  return number(name, low, high, high);
}

int64_t Call::number(const char* name, int64_t low, int64_t high, int64_t usual) {
  if (!drawn(name)) {
    const Own own(*this, name);
    const bool atEdge = chance(15);
    const int64_t valid = atEdge ? pick({low, usual}) : between(low, usual);
    const int64_t hostile = chance(planned_ ? 80 : 30) ? pick({low - 1, high + 1}) : hostileInteger();
    setInteger(name, isSpoiled(name) ? hostile : valid);
  }
  return integer(name);
}

int64_t Call::anyOf(const char* name, std::initializer_list<int64_t> valid) {
  if (!drawn(name)) {
    const Own own(*this, name);
    setInteger(name, isSpoiled(name) ? hostileInteger() : pick(valid));
  }
  return integer(name);
}

double Call::real(const char* name, double low, double high) {
  const bool isFloat = type(name).bytes == sizeof(float);
  if (!drawn(name)) {
    const Own own(*this, name);
    const double unit = static_cast<double>(random.next() >> 11) * 0x1p-53;
    double value = chance(15) ? pick({low, high}) : low + (high - low) * unit;
    if (isSpoiled(name)) value = hostileReal();
    if (isFloat) {
      // The largest doubles of the list are beyond the floats.
      set(name, std::abs(value) > double{FLT_MAX} ? static_cast<float>(std::copysign(INFINITY, value))
                                                  : static_cast<float>(value));
    } else {
      set(name, value);
    }
  }
  return isFloat ? double{get<float>(name)} : get<double>(name);
}

DaxiSize Call::size(const char* name, int32_t min) {
  if (drawn(name)) return get<DaxiSize>(name);
  const Own own(*this, name);
  const auto side = [&](int32_t max) { return min + random.below(max); };
  DaxiSize valid;
  switch (random.below(20)) {
    case 0:
      valid = {side(300), side(160)};
      break;
    case 1:
    case 2:
      valid = {side(8), side(150)};
      break;
    case 3:
    case 4:
    case 5:
    case 6:
      valid = {side(150), side(8)};
      break;
    case 7:
      valid = {min, min};
      break;
    default:
      valid = {side(26), side(26)};
  }
  return sizeOr(name, valid);
}

DaxiSize Call::sizeOr(const char* name, DaxiSize valid) {
  if (drawn(name)) return get<DaxiSize>(name);
  if (isSpoiled(name)) {
    const Own own(*this, name, 1);
    const int32_t which = random.below(4);
    const bool none = planned_ && chance(80);
    if (which != 0) valid.width = none ? -random.below(2) : static_cast<int32_t>(hostileInteger());
    if (which < 2) valid.height = none ? -random.below(2) : static_cast<int32_t>(hostileInteger());
  }
  set(name, valid);
  return valid;
}

int32_t Call::step(const char* name, int64_t row) {
  if (!drawn(name)) {
    const Own own(*this, name);
    int64_t value = row + pick({0, 0, 1, 3, 16, 61});
    if (isSpoiled(name)) value = chance(planned_ ? 90 : 50) ? row - 1 - random.below(3) : hostileInteger();
    set(name, static_cast<int32_t>(std::min<int64_t>(value, std::numeric_limits<int32_t>::max())));
  }
  return get<int32_t>(name);
}

// --- For those who read ---

std::string Call::description() const {
  std::string text = std::string(function.name) + "(";
  for (size_t i = 0; i < values.size(); ++i) {
    const auto& [name, t, said] = function.arguments[i];
    char value[80] = "?";
    if (t.kind == Kind::integer) std::snprintf(value, sizeof value, "%lld", static_cast<long long>(integer(name)));
    if (t.kind == Kind::real) {
      std::snprintf(value, sizeof value, "%.9g", t.bytes == 4 ? double{get<float>(name)} : get<double>(name));
    }
    if (t.kind == Kind::size) {
      const auto s = get<DaxiSize>(name);
      std::snprintf(value, sizeof value, "%d x %d", s.width, s.height);
    }
    if (t.kind == Kind::pointer) {
      const auto* const data = get<uint8_t*>(name);
      std::snprintf(value, sizeof value, "%p", static_cast<const void*>(data));
      for (const Block& each : blocks) {
        if (data && each.data == data) std::snprintf(value, sizeof value, "%zu bytes", each.bytes);
      }
    }
    text += std::string(i ? ", " : "") + name + (spoiled_[i] ? "!" : "") + " = " + value;
  }
  return text + ")";
}

}  // namespace dax::hostile
