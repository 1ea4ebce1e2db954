// The memory of a call: images, arrays, work buffers and what they hold.
#include "tests/hostile/call.h"

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace dax::hostile {

// Null for what cannot be given, so that the call must refuse it.
void* Call::place(const char* name, int64_t bytes, size_t alignment, Role role) {
  vague |= bytes > static_cast<int64_t>(Arena::kMaxBytes);
  if (bytes > static_cast<int64_t>(Arena::kMaxBytes)) return nullptr;
  const auto same = std::count_if(blocks.begin(), blocks.end(), [&](const Block& each) { return each.name == name; });
  const Own own(*this, name, 2000 + static_cast<uint64_t>(same));
  const size_t real = bytes < 0 ? 0 : static_cast<size_t>(bytes);
  const Place where = pick({Place::atEnd, Place::atEnd, Place::atStart, Place::odd});
  uint8_t* const data = arena_.take(real, alignment, where);
  vague |= !data;
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
  if (has("threads")) number("threads", 0, 9);
  mock.threads = static_cast<uint32_t>(between(1, 16));  // not what was announced
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
