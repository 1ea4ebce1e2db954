// Records by the comments of their fields: "1..3", "0 or 1", ">= 0", "at least 1", "default 10".
#include <cmath>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void putInteger(uint8_t* data, size_t bytes, int64_t value) {
  std::memcpy(data, &value, bytes);  // little-endian
}

void putReal(uint8_t* data, size_t bytes, double value) {
  const float narrow = std::abs(value) > double{FLT_MAX}
                           ? std::copysign(INFINITY, static_cast<float>(std::clamp(value, -1.0, 1.0)))
                           : static_cast<float>(value);
  if (bytes == sizeof narrow) {
    std::memcpy(data, &narrow, sizeof narrow);
  } else {
    std::memcpy(data, &value, sizeof value);
  }
}

// The function that fills a record with what it should mostly hold.
const Function* defaultsOf(const Record& record) {
  for (const Function& each : allFunctions()) {
    const bool fits = each.arguments.size() == 1 && each.arguments[0].said.record == record.name;
    if (fits && std::string_view(each.name).find("DefaultCfg") != std::string_view::npos) return &each;
  }
  return nullptr;
}

// Clears what is between fields.
void clearGaps(const Record& record, uint8_t* data) {
  size_t end = 0;
  for (const Field& field : record.fields) {
    std::memset(data + end, 0, field.offset - end);
    end = field.offset + field.count * field.type.bytes;
  }
  std::memset(data + end, 0, record.bytes - end);
}

}  // namespace

void Call::fillField(const Field& field, uint8_t* data, Limits outer) {
  auto [low, high] = field.limits;
  if (std::isinf(low) && std::isinf(high)) low = outer.low, high = outer.high;
  const bool isFree = std::isinf(low) && std::isinf(high);
  if (field.type.kind == Kind::integer) {
    const int64_t from = std::isinf(low) ? 0 : static_cast<int64_t>(std::ceil(low));
    const int64_t to = std::isinf(high) ? from + random.below(pick({2, 20, 60})) : static_cast<int64_t>(high);
    int64_t value = chance(15) ? pick({from, to}) : between(from, std::max(from, to));
    if (std::isfinite(field.standard) && chance(60)) value = static_cast<int64_t>(field.standard);
    putInteger(data, field.type.bytes, value);
  } else {
    const double span = pick({1, 5, 50}), share = static_cast<double>(random.below(1001)) / 1000;
    const double from = isFree ? -span : std::isinf(low) ? high - span : low;
    double value = from + share * ((std::isinf(high) ? from + 2 * span : high) - from);
    if (std::isfinite(field.standard)) value = field.standard * pick({1.0, 1.0, 0.1, 10.0});
    putReal(data, field.type.bytes, value);
  }
}

// Pointers stay null: they are a matter of the row.
void Call::fill(const Record& known, uint8_t* data, Limits outer, std::vector<Leaf>& leaves) {
  const Function* const standard = defaultsOf(known);
  if (standard) {
    Value record;
    record.set(data);
    standard->invoke(standard->code, &record);
  }
  for (const Field& field : known.fields) {
    for (size_t k = 0; k < field.count; ++k) {
      uint8_t* const at = data + field.offset + k * field.type.bytes;
      if (const Record* const nested = findRecord(field.record); nested && field.type.kind == Kind::record) {
        fill(*nested, at, outer, leaves);
      } else if (field.type.kind == Kind::integer || field.type.kind == Kind::real) {
        leaves.push_back({at, field.type, field.limits});
        if (!standard || chance(50)) fillField(field, at, outer);
      }
    }
  }
}

void Call::spoil(const Leaf& leaf) {
  const auto [low, high] = leaf.limits;
  if (leaf.type.kind == Kind::integer) {
    int64_t value = hostileInteger();
    if (chance(30) && std::isfinite(low)) value = static_cast<int64_t>(low) - 1;
    if (chance(30) && std::isfinite(high)) value = static_cast<int64_t>(high) + 1;
    putInteger(leaf.data, leaf.type.bytes, value);
  } else {
    double value = hostileReal();
    if (chance(30) && std::isfinite(low)) value = low - 1e-3;
    if (chance(30) && std::isfinite(high)) value = high + 1e-3;
    putReal(leaf.data, leaf.type.bytes, value);
  }
}

void* Call::records(const char* name, int64_t count, const std::function<void(void*)>& adjust) {
  const auto i = static_cast<size_t>(index(name));
  if (isSet_[i]) return get<void*>(name);
  auto* const data = static_cast<uint8_t*>(array(name, count));
  const Record* const known = findRecord(said(i).record);
  Block* const made = block(data);
  if (!made || !known) return data;
  std::vector<Leaf> leaves;
  std::memset(data, 0, made->bytes);
  for (size_t at = 0; at + known->bytes <= made->bytes; at += known->bytes) {
    fill(*known, data + at, limits(i), leaves);
    adjust(data + at);
  }
  if (made->role == Role::output && count == 1) made->tidy = [=] { clearGaps(*known, data); };
  if (isSpoiled(name) && !leaves.empty())
    spoil(leaves[static_cast<size_t>(random.below(static_cast<int32_t>(leaves.size())))]);
  return data;
}

}  // namespace dax::hostile
