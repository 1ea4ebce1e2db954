// The lists are made from the public headers at build time; the compiler supplies the types.
#include <algorithm>
#include <cstddef>

#include "dax.h"
#include "dax3dpcl.h"
#include "daxi.h"
#include "prmt.h"
#include "tests/hostile/call.h"
#include "zur.h"

namespace dax::hostile {
namespace {

const std::vector<Record>& allRecords() {
#define HOSTILE_RECORD(name, ...) {#name, sizeof(name), {__VA_ARGS__}},
#define HOSTILE_FIELD(record, name, fieldRecord, low, high, standard)                                                 \
  {                                                                                                                   \
#name, offsetof(record, name), sizeof(record::name) / sizeof(std::remove_all_extents_t <decltype(record::name)>), \
        typeOf < std::remove_all_extents_t < decltype(record::name)>>(), fieldRecord, {low, high }, standard          \
  }
  static const std::vector<Record> records = {
#include "records.inc"
  };
#undef HOSTILE_FIELD
#undef HOSTILE_RECORD
  return records;
}

const std::vector<Contract>& allContracts() {
#define HOSTILE_CHECK(code, clause) {static_cast<uint32_t>(code), clause},
#define HOSTILE_CODE(code) static_cast<uint32_t>(code),
#define HOSTILE_CONTRACT(name, checks, codes) {#name, {checks}, {codes}},
  static const std::vector<Contract> contracts = {
#include "contracts.inc"
  };
#undef HOSTILE_CONTRACT
#undef HOSTILE_CODE
#undef HOSTILE_CHECK
  return contracts;
}

template <class Named>
const Named* find(const std::vector<Named>& all, std::string_view name) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const Named& each) { return each.name == name; });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace

const Record* findRecord(std::string_view name) {
  return find(allRecords(), name);
}

const Contract* findContract(std::string_view function) {
  return find(allContracts(), function);
}

const Function* findFunction(std::string_view name) {
  return find(allFunctions(), name);
}

const std::vector<Function>& allFunctions() {
#define HOSTILE_FUNCTION(name, returns, ...) describe(#name, returns, &(name), {__VA_ARGS__}),
  static const std::vector<Function> functions = {
#include "functions.inc"
  };
#undef HOSTILE_FUNCTION
  return functions;
}

}  // namespace dax::hostile
