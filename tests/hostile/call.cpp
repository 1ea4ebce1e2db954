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
    if (each.field == 0) spoiled_[each.argument] = true;
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

DaxiSize Call::size(const char* name, int32_t least) {
  if (drawn(name)) return get<DaxiSize>(name);
  const Own own(*this, name);
  const auto side = [&](int32_t most) { return least + random.below(most); };
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
      valid = {least, least};
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

// --- Memory ---

// Null for what cannot be given, so that the call must refuse it.
void* Call::place(const char* name, int64_t bytes, size_t alignment, Role role) {
  vague |= bytes > static_cast<int64_t>(Arena::kMaxBytes);
  if (bytes > static_cast<int64_t>(Arena::kMaxBytes)) return nullptr;
  const auto same = std::count_if(blocks.begin(), blocks.end(), [&](const Block& each) { return each.name == name; });
  const Own own(*this, name, 2000 + static_cast<uint64_t>(same));
  const size_t real = bytes < 0 ? 0 : static_cast<size_t>(bytes);
  const Place where = pick({Place::atEnd, Place::atEnd, Place::atStart, Place::odd});
  uint8_t* const data = arena_.take(real, alignment, where);
  if (!data) return nullptr;
  fillBytes(data, real);
  blocks.push_back({name, data, real, role});
  return data;
}

void* Call::memory(const char* name, int64_t bytes, Role role, size_t alignment) {
  return place(name, bytes, alignment, role);
}

void* Call::array(const char* name, int64_t count) {
  const Type& t = type(name);
  if (drawn(name)) return get<void*>(name);
  void* data = nullptr;
  const size_t element = std::max<size_t>(t.element, 1);
  if (!isSpoiled(name) || (!planned_ && chance(40))) {
    const bool tooMany = count > static_cast<int64_t>(Arena::kMaxBytes);
    vague |= tooMany;
    // No element lies at an address that its type does not allow.
    const size_t alignment = element & (~element + 1);
    data = tooMany ? nullptr
                   : place(name, count * static_cast<int64_t>(element), std::min<size_t>(alignment, 8),
                           t.isConst ? Role::input : Role::output);
  }
  set(name, data);
  if (Block* const made = block(data); made && t.isReal) made->realBytes = element;
  return data;
}

void* Call::around(const char* name, const std::vector<double>& numbers, double noise) {
  const Own own(*this, name, 3);
  const auto fillAround = [&](auto* data) {
    const Block* const made = block(data);
    if (!made || made->bytes == 0 || chance(20)) return;
    using Real = std::remove_pointer_t<decltype(data)>;
    const double scale = chance(50) ? noise : 0;
    for (size_t i = 0; i < numbers.size(); ++i) {
      data[i] = static_cast<Real>(numbers[i] + scale * static_cast<double>(between(-100, 100)) / 100);
    }
    if (isSpoiled(name)) data[between(0, std::ssize(numbers) - 1)] = static_cast<Real>(chance(50) ? NAN : -8.0);
  };
  const int64_t count = std::ssize(numbers);
  type(name).element == sizeof(float) ? fillAround(reals<float>(name, count)) : fillAround(reals<double>(name, count));
  return get<void*>(name);
}

int64_t Call::product(std::initializer_list<int64_t> sides) {
  int64_t result = 1;
  for (const int64_t side : sides) {
    if (side < 1) return -1;
    result = std::min(result * side, int64_t{1} << 31);
  }
  return result;
}

void* Call::image(const char* name, const char* stepName, DaxiSize imageSize, int32_t channels) {
  if (drawn(name)) return get<void*>(name);
  const int64_t row = int64_t{imageSize.width} * channels;
  int32_t rowStep = step(stepName, row);
  const bool valid = imageSize.width >= 1 && imageSize.height >= 1 && row <= rowStep;
  int64_t count = -1;
  if (valid && notRead_ != name) {
    count = int64_t{imageSize.height - 1} * rowStep + row;
    // More than there is: the call must refuse the step, or the pointer.
    if (count > static_cast<int64_t>(Arena::kMaxBytes / type(name).element) && chance(60)) {
      vague = true;
      rowStep = static_cast<int32_t>(between(-1, std::min<int64_t>(row, INT32_MAX) - 1));
      set(stepName, rowStep);
      count = -1;
    }
  }
  void* const data = array(name, count);
  if (Block* const made = block(data); made && count > 0 && imageSize.height > 0) {
    made->rowBytes = static_cast<size_t>(row) * type(name).element;
    made->stepBytes = static_cast<size_t>(rowStep) * type(name).element;
  }
  return data;
}

void Call::inPlace(const char* name, const char* stepName, const char* of, const char* stepOf) {
  if (drawn(name) || isSpoiled(stepName)) return;
  inPlace(name, of);
  if (drawn(name)) set(stepName, get<int32_t>(stepOf));
}

void Call::inPlace(const char* name, const char* of) {
  Block* const source = drawn(of) ? blockOf(of) : nullptr;
  const Own own(*this, name);
  if (!source || drawn(name) || isSpoiled(name) || !chance(20)) return;
  set(name, get<void*>(of));
  source->role = Role::output;
}

void* Call::work(const char* name, const std::function<DaxStatus(uint64_t*)>& query, size_t alignment) {
  if (drawn(name)) return get<void*>(name);
  uint64_t bytes = 0;
  const bool known = query(&bytes) == DAX_STS_OK;
  void* data = nullptr;
  if (!isSpoiled(name)) {
    const bool tooLarge = bytes > Arena::kMaxBytes;
    vague |= tooLarge;
    data = tooLarge ? nullptr : place(name, known ? static_cast<int64_t>(bytes) : -1, alignment, Role::work);
  }
  set(name, data);
  return data;
}

void Call::spoilWord(const char* name, void* target, size_t from, size_t to) {
  if (!target || !isSpoiled(name) || to < from + 4) return;
  const Own own(*this, name, 1);
  uint8_t* const word = static_cast<uint8_t*>(target) + from +
                        4 * static_cast<size_t>(between(0, static_cast<int64_t>((to - from) / 4) - 1));
  if (chance(50)) {
    const auto value = static_cast<uint32_t>(hostileInteger());
    std::memcpy(word, &value, sizeof value);
  } else {
    const double value = hostileReal();
    const float narrow = std::abs(value) > double{FLT_MAX} ? INFINITY : static_cast<float>(value);
    std::memcpy(word, &narrow, sizeof narrow);
  }
}

void Call::pool() {
  const Own own(*this, "pool");
  const int64_t threads = has("threads") ? number("threads", 0, 9) : between(1, 9);
  mock.threads = threads >= 1 && threads <= 64 ? static_cast<uint32_t>(threads) : 4;
  mock.order = pick({MockPool::Order::shuffled, MockPool::Order::shuffled, MockPool::Order::backward});
  mock.passesLength = chance(50);
  mock.oneWorker = chance(10);
#ifdef __SANITIZE_THREAD__
  mock.concurrent = chance(50);
#endif
  set<void*>("pool", chance(15) || isSpoiled("pool") ? nullptr : &mock);
}

Block* Call::block(const void* data) {
  if (!data) return nullptr;
  for (Block& each : blocks) {
    if (each.data == data) return &each;
  }
  return nullptr;
}

// --- Contents ---

// Random bytes, which repeat in long blocks.
void Call::fillBytes(void* data, size_t bytes) {
  constexpr size_t kPeriod = 4099;
  auto* const out = static_cast<uint8_t*>(data);
  const size_t drawn = std::min(bytes, kPeriod);
  for (size_t i = 0; i < drawn; i += 8) {
    const uint64_t bits = random.next();
    std::memcpy(out + i, &bits, std::min<size_t>(8, drawn - i));
  }
  for (size_t done = drawn; done < bytes; done += std::min(done, bytes - done)) {
    std::memcpy(out + done, out, std::min(done, bytes - done));
  }
}

void Call::fillMask(uint8_t* data, size_t bytes) {
  const int32_t percent = pick({0, 2, 20, 50, 80, 98, 100});
  // Runs of some length, so that domains are more than pixels.
  const int32_t length = pick({1, 1, 4, 20});
  uint8_t value = 0;
  for (size_t i = 0; i < bytes; ++i) {
    if (random.below(length) == 0) value = random.below(100) < percent ? static_cast<uint8_t>(pick({255, 255, 1})) : 0;
    data[i] = value;
  }
}

}  // namespace dax::hostile
