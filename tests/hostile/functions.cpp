// The lists are made from the public headers at build time; the compiler supplies the types. They are constant tables: as
// code that builds vectors they would take a minute to be compiled.
#include <cstddef>
#include <unordered_map>

#include "dax.h"
#include "dax3d.h"
#include "dax3dpcl.h"
#include "daxi.h"
#include "prgo.h"
#include "prmt.h"
#include "tests/hostile/call.h"
#include "zur.h"

namespace dax::hostile {
namespace {

// Arrays of one name and their table, from one list that is read twice. Each array ends with an empty element, since none may
// have no elements.
template <class T, size_t N>
constexpr std::span<const T> withoutLast(const T (&array)[N]) {
  return std::span(array).first(N - 1);
}

#define HOSTILE_FIELD(record, name, fieldRecord, low, high, standard)                \
  {#name,                                                                            \
   offsetof(record, name),                                                           \
   sizeof(record::name) / sizeof(std::remove_all_extents_t<decltype(record::name)>), \
   typeOf<std::remove_all_extents_t<decltype(record::name)>>(),                      \
   fieldRecord,                                                                      \
   {low, high},                                                                      \
   standard},
#define HOSTILE_RECORD(name, ...) const Field fieldsOf_##name[] = {__VA_ARGS__{}};
#include "records.inc"
#undef HOSTILE_RECORD
#define HOSTILE_RECORD(name, ...) {#name, sizeof(name), withoutLast(fieldsOf_##name)},
const Record kRecords[] = {
#include "records.inc"
};

#define HOSTILE_CHECK(code, clause) {static_cast<uint32_t>(code), clause},
#define HOSTILE_CODE(code) static_cast<uint32_t>(code),
#define HOSTILE_CONTRACT(name, checks, codes)     \
  constexpr Check checksOf_##name[] = {checks{}}; \
  constexpr uint32_t codesOf_##name[] = {codes 0};
#include "contracts.inc"
#undef HOSTILE_CONTRACT
#define HOSTILE_CONTRACT(name, checks, codes) {#name, withoutLast(checksOf_##name), withoutLast(codesOf_##name)},
constexpr Contract kContracts[] = {
#include "contracts.inc"
};

#define HOSTILE_FUNCTION(name, returns, ...) constexpr Said saidOf_##name[] = {__VA_ARGS__ __VA_OPT__(, ){}};
#include "functions.inc"
#undef HOSTILE_FUNCTION
#define HOSTILE_FUNCTION(name, returns, ...) {#name, returns, saidOf_##name, signatureOf(&(name))},
struct Listed {
  const char* name;
  const char* returns;
  const Said* said;
  Signature signature;
};

std::vector<Function> allListed() {
  const Listed listed[] = {
#include "functions.inc"
  };
  std::vector<Function> functions;
  for (const auto& [name, returns, said, signature] : listed) {
    functions.push_back({name, returns, signature.code, signature.invoke, {}});
    for (size_t i = 0; i < signature.types.size(); ++i)
      functions.back().arguments.push_back({said[i].name, signature.types[i], said[i]});
  }
  return functions;
}

// By name, the first of equal ones. Calls look up thousands of names.
template <class Named>
std::unordered_map<std::string_view, const Named*> indexOf(std::span<const Named> all) {
  std::unordered_map<std::string_view, const Named*> index;
  for (const Named& each : all) index.emplace(each.name, &each);
  return index;
}

template <class Named>
const Named* find(const std::unordered_map<std::string_view, const Named*>& index, std::string_view name) {
  const auto found = index.find(name);
  return found == index.end() ? nullptr : found->second;
}

}  // namespace

const Record* findRecord(std::string_view name) {
  static const auto index = indexOf<Record>(kRecords);
  return find(index, name);
}

const Contract* findContract(std::string_view function) {
  static const auto index = indexOf<Contract>(kContracts);
  return find(index, function);
}

const Function* findFunction(std::string_view name) {
  static const auto index = indexOf<Function>(allFunctions());
  return find(index, name);
}

const std::vector<Function>& allFunctions() {
  static const std::vector<Function> functions = allListed();
  return functions;
}

}  // namespace dax::hostile
