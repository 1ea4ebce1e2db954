// Records by the comments of their fields: "1..3", "0 or 1", ">= 0", "at least 1", "finite", "default 10".
#include <cctype>
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

void put(uint8_t* data, const Type& type, double value) {
  type.kind == Kind::integer ? putInteger(data, type.bytes, static_cast<int64_t>(value))
                             : putReal(data, type.bytes, value);
}

// The next number of the type beyond a limit, in the direction of a sign.
void putBeyond(uint8_t* data, const Type& type, double limit, int sign) {
  if (type.kind == Kind::integer) return putInteger(data, type.bytes, static_cast<int64_t>(limit) + sign);
  putReal(data, type.bytes, type.bytes == sizeof(float) ? next<float>(limit, sign) : next<double>(limit, sign));
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

struct Spot {
  std::vector<std::string> path;
  size_t offset;
  const Field* field;
};

void listSpots(const Record& record, size_t offset, const std::vector<std::string>& path, std::vector<Spot>& spots) {
  for (const Field& field : record.fields) {
    std::vector<std::string> own = path;
    own.emplace_back(field.name);
    const Record* const nested = field.type.kind == Kind::record ? findRecord(field.record) : nullptr;
    if (nested) {
      listSpots(*nested, offset + field.offset, own, spots);
    } else {
      spots.push_back({own, offset + field.offset, &field});
    }
  }
}

// The fields of an argument's record that the contract speaks of, and of no argument by that name, or whose comments give limits.
std::vector<Spot> spotsOf(const Function& function, size_t argument) {
  const Record* const record = findRecord(function.arguments[argument].said.record);
  const Contract* const contract = findContract(function.name);
  if (!record || !contract) return {};
  std::vector<Spot> spots;
  listSpots(*record, 0, {function.arguments[argument].name}, spots);
  std::erase_if(spots, [&](const Spot& spot) {
    const Limits limits = spot.field->limits;
    if (std::isfinite(limits.low) || std::isfinite(limits.high)) return false;
    const auto isNamed = [&](const Argument& each) { return each.name == spot.path.back(); };
    if (std::any_of(function.arguments.begin(), function.arguments.end(), isNamed)) return true;
    return std::none_of(contract->checks.begin(), contract->checks.end(),
                        [&](const Check& check) { return hasWord(check.clause, spot.path.back()); });
  });
  return spots;
}

// Whether a check names the field before it states any condition: "count < 1, and with a mask step < width".
bool isCheckedAlways(const Check& check, const char* field) {
  constexpr const char* kConditions[] = {"with", "when", "where", "if", "unless", "for", "each"};
  for (std::string_view rest = check.clause; !rest.empty();) {
    const std::string_view piece = rest.substr(0, std::min(rest.find(", "), rest.find("; ")));
    const auto isIn = [&](const char* word) { return hasWord(piece, word); };
    if (std::any_of(std::begin(kConditions), std::end(kConditions), isIn)) return false;
    if (isIn(field)) return true;
    rest.remove_prefix(std::min(piece.size() + 2, rest.size()));
  }
  return false;
}

bool isCheckedAlways(const Function& function, const Spot& spot) {
  const std::span<const Check> checks = findContract(function.name)->checks;
  return std::any_of(checks.begin(), checks.end(),
                     [&](const Check& check) { return isCheckedAlways(check, spot.field->name); });
}

bool isInput(const Type& type) {
  return type.kind != Kind::pointer || type.isConst;
}

}  // namespace

bool hasWord(std::string_view text, std::string_view word) {
  const auto isPart = [&](size_t at) { return at < text.size() && (std::isalnum(text[at]) || text[at] == '_'); };
  for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
    if ((at == 0 || !isPart(at - 1)) && !isPart(at + word.size())) return true;
  }
  return false;
}

std::vector<std::string> Call::path(const Spoil& spoil) {
  const std::vector<Spot> spots = spotsOf(function, spoil.argument);
  if (spoil.field == 0 || spots.empty()) return {function.arguments[spoil.argument].name};
  return spots[spoil.field - 1].path;
}

size_t Call::fieldsToSpoil(const Function& function, size_t argument) {
  return spotsOf(function, argument).size();
}

// Once made, before other arguments are made to match.
void Call::spoilFields(std::string_view name) {
  if (!planned_) return;
  for (Spoil& each : *planned_) {
    if (each.field == 0 || each.done || function.arguments[each.argument].name != name) continue;
    spoilField(each);
    each.done = true;
  }
}

// With values of which nobody asks for more memory.
void Call::spoilField(const Spoil& spoil) {
  const auto& [name, type, known] = function.arguments[spoil.argument];
  const std::vector<Spot> spots = spotsOf(function, spoil.argument);
  uint8_t* data = type.kind == Kind::record ? values[spoil.argument].bytes : get<uint8_t*>(name);
  if (!data || spots.empty() || (type.kind == Kind::pointer && !block(data))) return;
  const Own own(*this, name, 100 + spoil.field);
  const Spot& spot = spots[spoil.field - 1];
  if (type.kind == Kind::pointer && block(data)->bytes < findRecord(known.record)->bytes) return;
  const auto [low, high] = spot.field->limits;
  const size_t bytes = spot.field->type.bytes;
  const int64_t element = chance(70) ? 0 : between(0, static_cast<int64_t>(spot.field->count) - 1);
  uint8_t* const at = data + spot.offset + static_cast<size_t>(element) * bytes;
  const bool below = std::isfinite(low) && chance(60), above = std::isfinite(high) && chance(60);
  if ((below || above) && isInput(type) && isCheckedAlways(function, spot)) {
    const Type& real = spot.field->type;
    if (spoil.atLimit) return put(at, real, below ? low : high);
    if (below && (real.isSigned || low > 0)) forbidden = spot.path.back(), putBeyond(at, real, low, -1);
    if (!below) forbidden = spot.path.back(), putBeyond(at, real, high, 1);
    return;
  }
  if (spoil.atLimit) return;
  if (spot.field->type.kind == Kind::integer) {
    const int64_t none = spot.field->type.isSigned ? pick({0, -1, INT32_MIN}) : 0;
    putInteger(at, bytes, below ? static_cast<int64_t>(low) - 1 : above ? static_cast<int64_t>(high) + 1 : none);
  } else if (spot.field->type.kind == Kind::real) {
    putReal(at, bytes, below ? low - 1e-3 : above ? high + 1e-3 : pick({std::nan(""), 0.0, -1.0}));
  } else if (spot.field->type.kind == Kind::pointer) {
    std::memset(at, 0, bytes);
  }
}

void Call::fillField(const Field& field, uint8_t* data, Limits outer) {
  auto [low, high] = field.limits;
  if (std::isinf(low) && std::isinf(high)) low = outer.low, high = outer.high;
  if (low == -DBL_MAX) low = -INFINITY;  // finite
  if (high == DBL_MAX) high = INFINITY;
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
  const Own own(*this, name, 4);
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
  spoilFields(name);
  if (made->role == Role::output && count == 1) made->tidy = [=] { clearGaps(*known, data); };
  if (isSpoiled(name) && !leaves.empty())
    spoil(leaves[static_cast<size_t>(random.below(static_cast<int32_t>(leaves.size())))]);
  return data;
}

}  // namespace dax::hostile
