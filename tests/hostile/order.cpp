#include "tests/hostile/order.h"

#include <algorithm>

namespace dax::hostile {
namespace {

constexpr size_t kFields = 4;            // of a record, in each round
constexpr size_t kFieldsOfSingles = 40;  // of the record of a function with hardly any other argument

uint32_t codeOf(uint64_t status) {
  return static_cast<uint32_t>(status);
}

std::string text(const std::vector<std::string>& path) {
  std::string joined;
  for (const std::string& each : path) joined += (joined.empty() ? "" : ".") + each;
  return joined;
}

bool isStep(std::string_view name) {
  return name.ends_with("tep") || name.starts_with("step");
}

}  // namespace

std::string statusText(uint64_t status) {
  char digits[16];
  const uint32_t code = codeOf(status);
  std::snprintf(digits, sizeof digits, code >> 24 == 0x10 ? "0x%x" : "%d", static_cast<int>(code));
  return digits;
}

bool isDocumented(const Function& function, const Call& call, uint64_t status) {
  const Contract* const contract = findContract(function.name);
  if (!contract || (call.has("pool") && call.get<void*>("pool"))) return true;
  const auto isCode = [&](uint64_t each) { return codeOf(each) == codeOf(status); };
  return std::any_of(contract->codes.begin(), contract->codes.end(), isCode) ||
         std::any_of(call.partial.begin(), call.partial.end(), isCode);
}

std::string Order::round(uint64_t seed) {
  contract_ = findContract(function_.name);
  if (!contract_ || !function_.returnsStatus() || (row_.flags & Row::neverFails)) return {};
  if (statusOf(seed, {}) != 0u) return complaint_;
  collect(seed);
  for (size_t i = 0; i < faults_.size(); ++i) {
    for (size_t j = i + 1; j < faults_.size(); ++j) {
      const bool same = faults_[i].path == faults_[j].path;
      if (!same && faults_[i].status != faults_[j].status) compare(seed, faults_[i], faults_[j]);
    }
  }
  return complaint_;
}

void Order::collect(uint64_t seed) {
  for (size_t i = 0; i < function_.arguments.size(); ++i) {
    const size_t max = function_.arguments.size() <= 2 ? kFieldsOfSingles : kFields;
    const size_t all = Call::fieldsToSpoil(function_, i), fields = std::min(all, max);
    for (size_t k = 0; k <= fields; ++k) {
      // Where they are too many for one round, others in every round.
      const auto field = static_cast<uint32_t>(k == 0 ? 0 : 1 + (seed % all + k) % all);
      Fault fault = {{i, field, false}, {}, false, 0, {}};
      const std::optional<uint32_t> status = statusOf(seed, {fault.spoil}, &fault);
      acceptLimit(seed, fault.spoil);
      if (status.value_or(0) == 0) continue;
      witness_.codes.insert(*status);
      fault.status = *status;
      fault.checks = checksOf(fault);
      if (!fault.checks.empty()) faults_.push_back(std::move(fault));
    }
  }
}

// A number at the limit of its contract, or of its comment, fails no check that names it.
void Order::acceptLimit(uint64_t seed, Spoil spoil) {
  spoil.atLimit = true;
  Fault fault = {spoil, {}, false, 0, {}};
  fault.status = statusOf(seed, {spoil}, &fault).value_or(0);
  const auto naming = std::count_if(contract_->checks.begin(), contract_->checks.end(), [&](const Check& check) {
    return fault.status != 0 && check.code == fault.status && hasWord(check.clause, fault.path.back()) &&
           !hasWord(check.clause, "null");
  });
  // Where several checks name it, there is more to it than its limit.
  if (naming == 1 && complaint_.empty()) {
    complaint_ = "returned " + statusText(fault.status) + " with " + text(fault.path) + " at its limit in " + current_;
  }
}

void Order::describe(Call& call, Fault& fault) const {
  const Argument& argument = function_.arguments[fault.spoil.argument];
  fault.path = call.path(fault.spoil);
  if (argument.type.kind != Kind::size) return;
  const auto size = call.get<DaxiSize>(argument.name);
  fault.isEmptySize = size.width < 1 || size.height < 1;
}

std::optional<uint32_t> Order::statusOf(uint64_t seed, std::vector<Spoil> spoils, Fault* fault) {
  arena_.reset();
  Call call(function_, arena_, seed, std::move(spoils));
  row_.plan(call);
  call.complete();
  current_ = call.description();
  const bool isForbidden = !call.forbidden.empty() && call.plannedSpoils().size() == 1;
  for (const Spoil& each : call.plannedSpoils()) {
    if (each.field > 0) current_ += ", " + text(call.path(each)) + " spoiled";
  }
  if (fault) describe(call, *fault);
  Experiment experiment(call, row_, arena_, copies_);
  experiment.runOnce();
  const uint64_t status = experiment.status();
  if (status != 0 && !isDocumented(function_, call, status)) {
    call.complaint = "returned " + statusText(status) + ", which its contract does not name,";
  }
  if (status == 0 && isForbidden) call.complaint = "accepted " + call.forbidden + " beyond its limits";
  if (complaint_.empty() && !call.complaint.empty()) complaint_ = call.complaint + " in " + current_;
  const bool isKnown = status == 0 || std::count(contract_->codes.begin(), contract_->codes.end(), codeOf(status)) > 0;
  return call.vague || !isKnown ? std::nullopt : std::optional(codeOf(status));
}

// --- The words of the contract ---

// How clauses call what is wrong.
std::vector<std::string> Order::wordsFor(const Fault& fault) const {
  const Argument& argument = function_.arguments[fault.spoil.argument];
  std::vector<std::string> words = {fault.path.back()};
  if (fault.path.size() > 1) return words;
  if (argument.type.kind == Kind::size) {
    words.insert(words.end(), {"width", "height", "side", "sides", "size", "w", "h", "W", "H"});
  }
  if (isStep(argument.name)) words.insert(words.end(), {"step", "steps"});
  if (argument.type.kind == Kind::pointer) words.insert(words.end(), {"pointer", "pointers"});
  return words;
}

bool Order::names(size_t check, const Fault& fault) const {
  const std::vector<std::string> words = wordsFor(fault);
  const std::string_view clause = contract_->checks[check].clause;
  return std::any_of(words.begin(), words.end(), [&](const std::string& each) { return hasWord(clause, each); });
}

bool Order::concerns(const std::vector<size_t>& checks, const Fault& fault) const {
  return std::any_of(checks.begin(), checks.end(), [&](size_t each) { return names(each, fault); });
}

// Those with its code; of several, those that name it best. Of a size without pixels the first: the others are about how
// sizes fit.
std::vector<size_t> Order::checksOf(const Fault& fault) const {
  const bool isNull = fault.spoil.field == 0 && function_.arguments[fault.spoil.argument].type.kind == Kind::pointer;
  std::vector<size_t> best;
  size_t max = 0;
  for (size_t i = 0; i < contract_->checks.size(); ++i) {
    const auto& [code, clause] = contract_->checks[i];
    if (code != fault.status) continue;
    size_t found = 2 * names(i, fault) + (isNull && hasWord(clause, "null"));
    for (size_t k = 0; fault.spoil.field > 0 && k < fault.path.size(); ++k) found += hasWord(clause, fault.path[k]);
    if (found > max) best.clear(), max = found;
    if (found == max) best.push_back(i);
  }
  if (fault.isEmptySize && !best.empty()) best = {best.front()};
  return best;
}

// --- Two faults in one call ---

// A check that names what the other fault is about may come to pass through it; any other fails in the call with both.
void Order::compare(uint64_t seed, const Fault& a, const Fault& b) {
  const bool aFirst = a.checks.back() < b.checks.front(), bFirst = b.checks.back() < a.checks.front();
  const bool aStays = !concerns(a.checks, b), bStays = !concerns(b.checks, a);
  if (!aStays && !bStays) return;
  const std::optional<uint32_t> status = statusOf(seed, {a.spoil, b.spoil});
  if (!status) return;
  const bool strict = (aFirst && aStays) || (bFirst && bStays);
  ++(strict ? witness_.ordered
            : witness_.loose)[aFirst ? std::pair(a.status, b.status) : std::pair(b.status, a.status)];
  const Fault& first = aFirst ? a : b;
  bool right = *status == first.status || (!strict && (*status == a.status || *status == b.status));
  // What is wrong with both together may come before what is wrong with either.
  for (size_t i = 0; i < contract_->checks.size() && !right; ++i) {
    right = contract_->checks[i].code == *status && names(i, a) && names(i, b) && (!strict || i < first.checks.front());
  }
  if (right || !complaint_.empty()) return;
  complaint_ = "returned " + statusText(*status) + " with both " + text(a.path) + " (alone " + statusText(a.status) +
               ") and " + text(b.path) + " (alone " + statusText(b.status) + ") spoiled";
}

}  // namespace dax::hostile
