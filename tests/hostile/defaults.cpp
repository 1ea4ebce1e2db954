// What arguments mean that no row mentions: by their names, their types, and the limits that their contracts state.
#include <cmath>
#include <limits>
#include <stdexcept>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

bool isStep(const Argument& argument) {
  return argument.type.kind == Kind::integer && std::string_view(argument.name).find("tep") != std::string_view::npos;
}

// The number of channels or planes behind _C, _AC or _P: of the first layout in a name for sources, of the last for
// destinations. 1 where there is none.
int32_t layout(std::string_view name, std::string_view kinds, bool first) {
  int32_t found = 1;
  const size_t start = name.rfind('_', name.find_last_of("CP"));
  for (size_t i = start == name.npos ? name.size() : start + 1; i + 1 < name.size() && name[i] != '_'; ++i) {
    if (kinds.find(name[i]) == kinds.npos || name[i + 1] < '1' || name[i + 1] > '4') continue;
    found = name[i + 1] - '0';
    if (first) break;
  }
  return found;
}

int64_t whole(double value) {
  return static_cast<int64_t>(std::clamp(value, -0x1p62, 0x1p62));
}

}  // namespace

void Call::complete() {
  for (size_t i = 0; i < function.arguments.size(); ++i) completeArgument(i);
  for (const Argument& each : function.arguments) spoilFields(each.name);
}

void Call::completeArgument(size_t i) {
  const auto& [name, type, known] = function.arguments[i];
  if (isSet_[i]) return;
  const Own own(*this, name, 500);
  switch (type.kind) {
    case Kind::integer:
      return completeInteger(i);
    case Kind::real:
      return completeReal(i);
    case Kind::size:
      return completeSize(i);
    case Kind::pointer:
      return completePointer(i);
    case Kind::record:
      if (const Record* const record = findRecord(known.record)) {
        Value made;
        std::vector<Leaf> leaves;
        fill(*record, made.bytes, limits(i), leaves);
        if (spoiled_[i]) spoil(leaves[static_cast<size_t>(random.below(static_cast<int32_t>(leaves.size())))]);
        return set(name, made);
      }
      [[fallthrough]];
    default:
      throw std::logic_error(std::string("nothing says what ") + name + " means");
  }
}

double Call::value(std::string_view name) {
  const size_t dot = name.find('.');
  const auto i = static_cast<size_t>(find(name.substr(0, dot)));
  completeArgument(i);
  const char* const whole = function.arguments[i].name;
  if (dot != name.npos) {
    const auto size = get<DaxiSize>(whole);
    return name.substr(dot + 1) == "width" ? size.width : size.height;
  }
  if (function.arguments[i].type.kind == Kind::integer) return static_cast<double>(integer(whole));
  if (function.arguments[i].type.kind != Kind::real) throw std::logic_error(std::string(name) + " is no number");
  return function.arguments[i].type.bytes == sizeof(float) ? double{get<float>(whole)} : get<double>(whole);
}

// --- Scalars ---

void Call::completeInteger(size_t i) {
  const auto& [name, type, known] = function.arguments[i];
  const std::string_view view = name;
  if (view == "isa") {
    if (anyOf(name, {DAX_ISA_PORTABLE, DAX_ISA_NEON, DAX_ISA_NEON, 1, 99}) < 0) forbidden = name;
    return;
  }
  if (view == "threads" && has("pool")) return pool();
  if (known.choices[0] != known.choices[1])
    return static_cast<void>(anyOf(name, {known.choices[static_cast<size_t>(random.below(2))]}));
  const auto [low, high] = limits(i);
  const bool isFree = std::isinf(low) && std::isinf(high);
  if (atLimit_[i] && !isFree)
    return setInteger(name, whole(std::isinf(low) ? high : std::isinf(high) ? low : pick({low, high})));
  if (isFree && type.bytes <= 2) return setInteger(name, static_cast<int64_t>(random.next()));
  const bool isQuery = has("bytes") && function.arguments.size() <= 4;
  const int64_t from = std::isinf(low) ? (isFree && type.isSigned && chance(10) ? -2 : 0) : whole(std::ceil(low));
  int64_t usual = from + random.below(pick({3, 20, 60, isQuery ? 100000 : 60})) + 1;
  if (isQuery && chance(5)) usual = std::numeric_limits<int32_t>::max();
  const int64_t to = std::isinf(high) ? usual : std::max(whole(std::floor(high)), from);
  const auto given =
      static_cast<double>(number(name, from, to, std::min(usual, to) == to || to - from < 1000 ? to : usual));
  if (given < low || given > high) forbidden = name;
}

void Call::completeReal(size_t i) {
  const auto& [name, type, known] = function.arguments[i];
  const auto [low, high] = limits(i);
  const bool isFree = std::isinf(low) && std::isinf(high);
  if (!isFree && !known.isRounded && (atLimit_[i] || (planned_ && isSpoiled(name, 60)))) {
    const bool below = std::isinf(high) || (std::isfinite(low) && chance(50));
    const double limit = below ? low : high;
    if (atLimit_[i]) return type.bytes == sizeof(float) ? set(name, static_cast<float>(limit)) : set(name, limit);
    forbidden = name;
    if (type.bytes == sizeof(float)) return set(name, static_cast<float>(next<float>(limit, below ? -1 : 1)));
    return set(name, next<double>(limit, below ? -1 : 1));
  }
  const double span = pick({1, 5, 50});
  const double from = isFree ? -span : std::isinf(low) ? high - span : low;
  real(name, from, std::isinf(high) ? from + 2 * span : std::max(high, from));
}

// The first size is that of images; further ones may depend on it.
void Call::completeSize(size_t i) {
  const char* const name = function.arguments[i].name;
  const Limits width = limits(i), height = said(i).heightLimits ? said(i).heightLimits(*this) : width;
  const double min = std::clamp(std::max(width.low, height.low), 1.0, 4096.0);
  bool isFirst = true;
  for (size_t j = 0; j < i; ++j) isFirst &= function.arguments[j].type.kind != Kind::size;
  // One side just below its least, or above its greatest.
  const bool isWidth = height.low < 1 || (width.low >= 1 && chance(50));
  const Limits& own = isWidth ? width : height;
  if (planned_ && isFirst && isSpoiled(name) && own.low >= 1 && chance(50)) {
    const auto side = static_cast<int32_t>(own.high < 1e6 && chance(50) ? own.high + 1 : own.low - 1);
    const auto other = static_cast<int32_t>(min);
    set(name, isWidth ? DaxiSize{side, other} : DaxiSize{other, side});
    forbidden = name;
    return;
  }
  const bool isWide = std::max(width.high, height.high) > 4096;
  if ((isFirst && isWide) || (!said(i).limits && !said(i).heightLimits)) {
    size(name, static_cast<int32_t>(min));
    return;
  }
  const auto side = [&](Limits given) {
    const int64_t low = whole(std::clamp(given.low, 1.0, 0x1p31 - 60));
    const int64_t high = std::isinf(given.high) ? low + 49 : std::max(whole(std::min(given.high, 0x1p31 - 1)), low);
    return static_cast<int32_t>(chance(15) ? pick({low, high}) : between(low, high));
  };
  sizeOr(name, {side(width), side(height)});
}

// --- Pointers ---

int64_t Call::countOf(const char* name) {
  const Said& known = said(static_cast<size_t>(index(name)));
  if (known.elements > 0) return known.elements;
  const int count = find("count");
  if (!known.isCounted || count < 0) return 1;
  if (function.arguments[static_cast<size_t>(count)].type.kind != Kind::integer) return 1;
  const double elements = value("count");
  return elements < 1 ? -1 : whole(elements);
}

void Call::completePointer(size_t i) {
  const auto& [name, type, known] = function.arguments[i];
  if (std::string_view(name) == "pool") return has("threads") && !drawn("threads") ? draw("threads") : pool();
  if (i + 1 < function.arguments.size() && isStep(function.arguments[i + 1])) return completeImage(i);
  if (*known.query) {
    work(
        name, [&](uint64_t* bytes) { return ask(known.query, bytes); }, known.alignment);
    return;
  }
  if (type.innerElement > 0 || type.element == 0)
    throw std::logic_error(std::string("nothing says what ") + name + " means");
  if (known.mayBeNull && chance(30)) return set<void*>(name, nullptr);
  const int64_t count = countOf(name);
  if (type.isConst && *known.record) {
    records(name, count, [](void*) {});
  } else if (type.isConst && type.isReal) {
    type.element == sizeof(float) ? static_cast<void>(reals<float>(name, count))
                                  : static_cast<void>(reals<double>(name, count));
  } else {
    array(name, count);
  }
}

// src has srcSize, or the first size that comes after it, or else the first of all.
const char* Call::sizeOf(size_t image) const {
  const std::vector<Argument>& all = function.arguments;
  const int own = find(std::string(all[image].name) + "Size");
  if (own >= 0) return all[static_cast<size_t>(own)].name;
  for (size_t k = 0; k < 2 * all.size(); ++k) {
    const size_t j = k < all.size() ? k : k - all.size();
    if (all[j].type.kind == Kind::size && (j > image || k >= all.size())) return all[j].name;
  }
  throw std::logic_error(std::string(all[image].name) + " has no size");
}

void Call::completeImage(size_t i) {
  const auto& [name, type, known] = function.arguments[i];
  const char* const step = function.arguments[i + 1].name;
  draw(sizeOf(i));
  const auto own = get<DaxiSize>(sizeOf(i));
  if (type.innerElement > 0) return completePlanes(i, step, own);
  if (*known.inPlaceOf) {
    const auto source = static_cast<size_t>(index(known.inPlaceOf));
    completeArgument(source);
    inPlace(name, step, known.inPlaceOf, function.arguments[source + 1].name);
    if (isSet_[i]) return;
  }
  image(name, step, own, std::string_view(name) == "mask" ? 1 : layout(function.name, "C", type.isConst));
  Block* const made = blockOf(name);
  if (!made || !type.isConst) return;
  if (type.isReal && chance(60)) {
    type.element == sizeof(float) ? fillReals(reinterpret_cast<float*>(made->data), made->bytes / sizeof(float))
                                  : fillReals(reinterpret_cast<double*>(made->data), made->bytes / sizeof(double));
  } else if (type.element == 1 && chance(30)) {
    fillMask(made->data, made->bytes);
  }
}

// An array of pointers to planes of one step.
void Call::completePlanes(size_t i, const char* stepName, DaxiSize planeSize) {
  const auto& [name, type, known] = function.arguments[i];
  const int64_t count = known.elements > 0 ? known.elements : layout(function.name, "P", type.innerIsConst);
  const auto element = static_cast<int64_t>(type.innerElement);
  const int64_t rowStep = step(stepName, planeSize.width);
  const bool valid = planeSize.width >= 1 && planeSize.height >= 1 && planeSize.width <= rowStep && notRead_ != name;
  int64_t pixels = valid ? int64_t{planeSize.height - 1} * rowStep + planeSize.width : -1;
  if (pixels > static_cast<int64_t>(Arena::kMaxBytes) / element) {  // more than there is: the call must refuse the step
    vague = true;
    set(stepName, static_cast<int32_t>(between(-1, int64_t{planeSize.width} - 1)));
    pixels = -1;
  }
  // The array itself is the caller's.
  auto** const planes = static_cast<void**>(array(name, count));
  if (!planes) return;
  blockOf(name)->role = Role::input;
  for (int64_t k = 0; k < count; ++k) {
    const bool missing = isSpoiled(name) && chance(40);
    planes[k] = missing
                    ? nullptr
                    : memory("plane", pixels < 0 ? -1 : pixels * element,
                             type.innerIsConst ? Role::input : Role::output, std::min<size_t>(type.innerElement, 8));
    if (Block* const made = block(planes[k]); made && pixels > 0) {
      made->rowBytes = static_cast<size_t>(planeSize.width * element);
      made->stepBytes = static_cast<size_t>(rowStep * element);
    }
  }
}

// Calls a query with the arguments of the same names.
DaxStatus Call::ask(const char* query, uint64_t* bytes) {
  const Function* const asked = findFunction(query);
  std::vector<Value> given(asked->arguments.size());
  for (size_t k = 0; k < given.size(); ++k) {
    const char* const name = asked->arguments[k].name;
    if (std::string_view(name) == "bytes") {
      given[k].set(bytes);
      continue;
    }
    draw(name);
    given[k] = values[static_cast<size_t>(index(name))];
  }
  return static_cast<DaxStatus>(asked->invoke(asked->code, given.data()));
}

}  // namespace dax::hostile
